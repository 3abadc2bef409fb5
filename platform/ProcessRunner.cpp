// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ProcessRunner.h"

#include "platform/ChildProcess.h"

#include <QDeadlineTimer>

#include <algorithm>

namespace {

/// Interval between two looks at the cancel flag.
constexpr int cCancelPollMs = 50;

bool isCancelled(const platform::ProcessRequest& request)
{
    return request.cancelled != nullptr && request.cancelled->load();
}

/// Waits for the end of \a process in slices. Returns false when it still runs at the deadline, or was
/// cancelled.
bool waitForEnd(QProcess& process, const platform::ProcessRequest& request)
{
    const QDeadlineTimer deadline(request.finishTimeoutMs);
    while (process.state() != QProcess::NotRunning) {
        if (deadline.hasExpired() || isCancelled(request))
            return false;
        process.waitForFinished(int(std::min<qint64>(deadline.remainingTime(), cCancelPollMs)));
    }
    return true;
}

} // namespace

platform::ProcessOutcome platform::runProcess(const ProcessRequest& request)
{
    using End = ProcessOutcome::End;
    ProcessOutcome outcome;
    if (isCancelled(request)) {
        outcome.end = End::Cancelled;
        return outcome;
    }
    const ChildProcessPointer process(new ChildProcess);
    process->start(request.program, request.arguments);
    if (!process->waitForStarted(request.startTimeoutMs)) {
        process->kill();
        process->waitForFinished(request.killGraceMs);
        return outcome;
    }
    // A program that asks for input reads the end of the input and does not wait.
    process->closeWriteChannel();
    if (!waitForEnd(*process, request)) {
        outcome.end = isCancelled(request) ? End::Cancelled : End::TimedOut;
        process->kill();
        process->waitForFinished(request.killGraceMs);
        return outcome;
    }
    outcome.end = process->exitStatus() == QProcess::NormalExit ? End::Exited : End::Crashed;
    outcome.exitCode = process->exitCode();
    outcome.standardOutput = process->readAllStandardOutput();
    outcome.standardError = process->readAllStandardError();
    return outcome;
}

bool platform::runProcessAndWait(const QString& program, const QStringList& arguments,
                                 QString* standardOutput, QString* standardError, int* exitCode,
                                 int timeoutMs, const std::atomic_bool* cancelled)
{
    using End = ProcessOutcome::End;
    ProcessRequest request;
    request.program = program;
    request.arguments = arguments;
    request.finishTimeoutMs = timeoutMs;
    request.cancelled = cancelled;
    const ProcessOutcome outcome = runProcess(request);
    if (exitCode != nullptr)
        *exitCode = outcome.exitCode;
    QString failure;
    if (outcome.end == End::NotStarted)
        failure = QStringLiteral("Failed to start process: %1").arg(program);
    else if (outcome.end == End::TimedOut)
        failure = QStringLiteral("Process timed out: %1").arg(program);
    else if (outcome.end == End::Cancelled)
        failure = QStringLiteral("Process cancelled: %1").arg(program);
    else if (standardOutput != nullptr)
        *standardOutput = QString::fromLocal8Bit(outcome.standardOutput);
    if (standardError != nullptr)
        *standardError = failure.isEmpty() ? QString::fromLocal8Bit(outcome.standardError) : failure;
    return outcome.end == End::Exited;
}

platform::ProcessRun platform::processRunner(const std::atomic_bool* cancelled)
{
    return [cancelled](const QString& program, const QStringList& arguments, QString* standardOutput,
                       QString* standardError, int* exitCode, int timeoutMs) {
        return runProcessAndWait(program, arguments, standardOutput, standardError, exitCode, timeoutMs,
                                 cancelled);
    };
}
