// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/virtual-instrument/StopSignals.h"

#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace {

/// Signal handlers write to this pipe; they may call only async-signal-safe functions.
int stopPipe[2] = {-1, -1};

void onSignal(int number)
{
    const char byte = static_cast<char>(number);
    [[maybe_unused]] const ssize_t written = ::write(stopPipe[1], &byte, 1);
}

constexpr int cStopSignals[] = {SIGINT, SIGTERM, SIGHUP};

} // namespace

StopSignals::StopSignals(QObject* parent) : QObject(parent)
{
    if (pipe2(stopPipe, O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    m_notifier = std::make_unique<QSocketNotifier>(stopPipe[0], QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &StopSignals::onActivated);
    for (const int number : cStopSignals)
        std::signal(number, onSignal);
}

StopSignals::~StopSignals()
{
    for (const int number : cStopSignals)
        std::signal(number, SIG_DFL);
    m_notifier.reset();
    ::close(stopPipe[0]);
    ::close(stopPipe[1]);
}

void StopSignals::onActivated()
{
    char number = 0;
    if (::read(stopPipe[0], &number, 1) == 1)
        Q_EMIT stopRequested(number);
}
