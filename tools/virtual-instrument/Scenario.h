// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

#include <vector>

/// Actions of scenario steps and control-channel lines.
enum class Action {
    Unplug,
    Replug,
    Silence,
    Rate,
    Garbage,
    Truncated,
    ZeroFilled,
    NotANumber,
    Burst,
    WriteErrors,
    Screen,
    Function,
    Log,
    DeviceInfo,
    Set,
    Auto,
    Reading,
    Interfaces,
    Permission,
    BootController,
    Exit,
    Status,
    Drain,
};

/// An action with its arguments, valid by the grammar.
struct Command
{
    Action action = Action::Status;
    /// A text for each argument; omitted optional arguments have their defaults.
    QStringList arguments;

    QString text(int index) const { return arguments.value(index); }
    double number(int index) const { return arguments.value(index).toDouble(); }
    int count(int index) const { return arguments.value(index).toInt(); }
};

/// A parsed command or the reason of its failure: \a error is empty exactly when \a command is valid.
struct ParsedCommand
{
    Command command;
    QString error;
};

/// Parses a command, for example "burst 2000 1000" or "log Fan started".
ParsedCommand parseCommand(const QString& line);

/// Returns the grammar as help text, one line per command.
QString commandHelp();

/// A list of commands with their times.
class Scenario
{
public:
    struct Step
    {
        /// Seconds since the scenario started.
        double atSec = 0;
        Command command;
    };

    /**
     * Parses the text of a scenario file: one step per line, "<seconds> <command>" or "+<seconds> <command>",
     * the latter relative to the step before. "#" starts a comment. A last line "<seconds> repeat" restarts
     * the scenario at that time.
     *
     * On an error the result is empty and \a error names the line and the reason.
     */
    static Scenario parse(const QString& text, QString* error);

    /// Steps ordered by time; steps of equal time keep the order of the file.
    const std::vector<Step>& steps() const { return m_steps; }

    /// Period of the scenario in seconds; 0 when it does not repeat.
    double periodSec() const { return m_periodSec; }

private:
    std::vector<Step> m_steps;
    double m_periodSec = 0;
};
