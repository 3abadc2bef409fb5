// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/StopSignals.h"

#include <QSocketNotifier>

#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace platform {

namespace {

/// The handler writes to this pipe; it may call only async-signal-safe functions.
int stopPipe[2] = {-1, -1};

constexpr int cStopSignals[] = {SIGINT, SIGTERM, SIGHUP};

void onSignal(int number)
{
    const char byte = 0;
    [[maybe_unused]] const ssize_t written = ::write(stopPipe[1], &byte, 1);
    // The next one has its default effect.
    std::signal(number, SIG_DFL);
}

} // namespace

struct StopSignals::Source
{
    std::unique_ptr<QSocketNotifier> notifier;
};

StopSignals::StopSignals(QObject* parent) : QObject(parent), m_source(std::make_unique<Source>())
{
    if (::pipe2(stopPipe, O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    m_source->notifier = std::make_unique<QSocketNotifier>(stopPipe[0], QSocketNotifier::Read);
    connect(m_source->notifier.get(), &QSocketNotifier::activated, this, [this] {
        char byte = 0;
        if (::read(stopPipe[0], &byte, 1) == 1)
            Q_EMIT stopRequested();
    });
    for (const int number : cStopSignals)
        std::signal(number, onSignal);
}

StopSignals::~StopSignals()
{
    for (const int number : cStopSignals)
        std::signal(number, SIG_DFL);
    m_source.reset();
    ::close(stopPipe[0]);
    ::close(stopPipe[1]);
}

} // namespace platform
