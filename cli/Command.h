// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "cli/ExitCode.h"

#include <QCommandLineOption>
#include <QCommandLineParser>
#include <QStringList>

#include <chrono>
#include <optional>
#include <vector>

namespace cli {

struct Operand
{
    QString name; ///< for example "FILE"
    QString description;
};

/// One command of the program: what it takes and what it does.
struct Command
{
    QString name;
    QString summary;
    std::vector<Operand> operands;
    std::vector<QCommandLineOption> options;
    int leastOperands = 0;
    int mostOperands = 0;
    /// Returns an exit code. \a arguments are the operands.
    int (*run)(const QCommandLineParser& options, const QStringList& arguments) = nullptr;
};

Command listCommand();
Command watchCommand();
Command recordCommand();
Command infoCommand();
Command exportCommand();
Command reportCommand();
Command markCommand();
Command recoverCommand();
Command mergeCommand();
Command curveCommand();
Command screenCommand();
Command functionCommand();
Command flashCommand();

// Options that several commands have.

QCommandLineOption jsonOption();
QCommandLineOption outputOption(const QString& description);
QCommandLineOption timeOption(const QString& name, const QString& description);

/// Reads the time option \a name. Returns \a fallback when it is not given; nothing when it is wrong, which
/// was reported then.
std::optional<std::chrono::microseconds> timeOf(const QCommandLineParser& options, const QString& name,
                                                std::chrono::microseconds fallback);

/// Runs the only event loop of the program until QCoreApplication::exit(). Returns the exit code given there.
int runEventLoop();

/// Runs the program with its \a arguments, the first of which is its own name. Returns the exit code.
int run(const QStringList& arguments);

} // namespace cli
