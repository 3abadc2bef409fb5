// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <atomic>
#include <functional>

namespace platform {

/// A program to run to its end, with every wait bounded. Times in milliseconds.
struct ProcessRequest
{
    QString program;
    QStringList arguments;
    int startTimeoutMs = 1000;
    int finishTimeoutMs = 2000;
    /// How long a killed program is waited for.
    int killGraceMs = 500;
    /// Ends the run early, as a time-out does, once it is true; may be null, must outlive the run.
    const std::atomic_bool* cancelled = nullptr;
};

/// How a run ended, with everything that the program printed.
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
    /// The program's exit code; -1 unless it ended by itself.
    int exitCode = -1;
    QByteArray standardOutput;
    QByteArray standardError;
};

/// Runs a program and waits for its end; any thread, no event loop. Blocks for at most the sum of the three
/// times. When the call returns the program has ended, been killed, or ignored the kill for the whole grace;
/// such a program is given up to the application's thread.
ProcessOutcome runProcess(const ProcessRequest& request);

/// A synchronous process runner: program, arguments, the three optional outputs (standard output, standard
/// error or the reason of the failure, exit code) and the time-out in milliseconds. True when the program
/// ended by itself, whatever its exit code.
using ProcessRun =
    std::function<bool(const QString& program, const QStringList& arguments, QString* standardOutput,
                       QString* standardError, int* exitCode, int timeoutMs)>;

/// runProcess() in the form of a ProcessRun, with the other times as in ProcessRequest; the texts are in the
/// system's encoding. \a cancelled as in ProcessRequest.
bool runProcessAndWait(const QString& program, const QStringList& arguments, QString* standardOutput,
                       QString* standardError, int* exitCode, int timeoutMs,
                       const std::atomic_bool* cancelled = nullptr);

/// runProcessAndWait() bound to \a cancelled, which may be null and must outlive the result.
ProcessRun processRunner(const std::atomic_bool* cancelled);

} // namespace platform
