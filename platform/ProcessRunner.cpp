// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ProcessRunner.h"

#include "platform/ChildProcess.h"

#include <QDeadlineTimer>

#include <algorithm>

namespace {

/// How long a cancelled run may go unnoticed.
constexpr int cCancelPollMs = 50;

bool isCancelled(const platform::ProcessRequest& request)
{
    return request.cancelled != nullptr && request.cancelled->load();
}

/// Waits for the end of \a process in slices; false when it still runs at the deadline or was cancelled.
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
    ChildProcess process;
    process.start(request.program, request.arguments);
    if (!process.waitForStarted(request.startTimeoutMs)) {
        process.kill();
        process.waitForFinished(request.killGraceMs);
        return outcome;
    }
    // Nobody types an answer: a program that asks for one reads the end of its input.
    process.closeWriteChannel();
    if (!waitForEnd(process, request)) {
        outcome.end = isCancelled(request) ? End::Cancelled : End::TimedOut;
        process.kill();
        process.waitForFinished(request.killGraceMs);
        return outcome;
    }
    outcome.end = process.exitStatus() == QProcess::NormalExit ? End::Exited : End::Crashed;
    outcome.exitCode = process.exitCode();
    outcome.standardOutput = process.readAllStandardOutput();
    outcome.standardError = process.readAllStandardError();
    return outcome;
}
