// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

#include <vector>

/// What a step of a scenario, or a line on the control channel, can ask of the virtual instrument.
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

/// One action with its arguments, already checked against the grammar.
struct Command
{
    Action action = Action::Status;
    /// One text per argument; omitted optional arguments hold their defaults.
    QStringList arguments;

    QString text(int index) const { return arguments.value(index); }
    double number(int index) const { return arguments.value(index).toDouble(); }
    int count(int index) const { return arguments.value(index).toInt(); }
};

/// A command, or why the line is none: \a error is empty exactly when \a command is valid.
struct ParsedCommand
{
    Command command;
    QString error;
};

/// Reads one command such as "burst 2000 1000" or "log Fan started".
ParsedCommand parseCommand(const QString& line);

/// The grammar as text for people, one line per command.
QString commandHelp();

/// A list of commands with the times at which they are due.
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
     * Reads a scenario file's text: one step per line, "<seconds> <command>" or "+<seconds> <command>", the
     * latter counted from the step before. "#" starts a comment. A last line "<seconds> repeat" starts the
     * scenario again at that time.
     *
     * On a fault the result is empty and \a error says the line and what is wrong with it.
     */
    static Scenario parse(const QString& text, QString* error);

    /// In the order of their times; steps of the same time keep their order in the file.
    const std::vector<Step>& steps() const { return m_steps; }

    /// Seconds after which the scenario starts again; 0 when it does not.
    double periodSec() const { return m_periodSec; }

private:
    std::vector<Step> m_steps;
    double m_periodSec = 0;
};
