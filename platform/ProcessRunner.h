// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <atomic>
#include <functional>

namespace platform {

/// A program to run to its end. Every wait has a limit. Times are in milliseconds.
struct ProcessRequest
{
    QString program;
    QStringList arguments;
    int startTimeoutMs = 1000;
    int finishTimeoutMs = 2000;
    /// Time limit for the end of a killed program.
    int killGraceMs = 500;
    /// Ends the run like a time-out as soon as it is true. May be null. Must outlive the run.
    const std::atomic_bool* cancelled = nullptr;
};

/// Result of a run, with everything that the program printed.
struct ProcessOutcome
{
    enum class End {
        NotStarted,
        TimedOut,
        Cancelled,
        Crashed,
        Exited,
    };

    End end = End::NotStarted;
    /// Exit code of the program; -1 when it did not end by itself.
    int exitCode = -1;
    QByteArray standardOutput;
    QByteArray standardError;
};

/// Runs a program and waits for its end. Any thread may call it; no event loop runs. Blocks for at most the
/// sum of the three times. A program that survives the kill is left to the application's thread.
ProcessOutcome runProcess(const ProcessRequest& request);

/// A synchronous process runner. The outputs are optional; standardError gets the reason when the program
/// could not be started. The time limit is in milliseconds. Returns true when the program ended by itself,
/// with any exit code.
using ProcessRun =
    std::function<bool(const QString& program, const QStringList& arguments, QString* standardOutput,
                       QString* standardError, int* exitCode, int timeoutMs)>;

/// Calls runProcess() with the arguments of a ProcessRun. The other times and \a cancelled are as in
/// ProcessRequest. The outputs are decoded from the system's encoding.
bool runProcessAndWait(const QString& program, const QStringList& arguments, QString* standardOutput,
                       QString* standardError, int* exitCode, int timeoutMs,
                       const std::atomic_bool* cancelled = nullptr);

/// Returns runProcessAndWait() with \a cancelled bound. \a cancelled may be null and must outlive the result.
ProcessRun processRunner(const std::atomic_bool* cancelled);

} // namespace platform
