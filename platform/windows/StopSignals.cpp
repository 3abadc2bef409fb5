// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/StopSignals.h"

#include <windows.h>

#include <atomic>

namespace platform {

namespace {

/// Read by the handler, which the system calls on a thread of its own.
std::atomic<StopSignals*> receiver{nullptr};

BOOL WINAPI onControl(DWORD /*event*/)
{
    StopSignals* const object = receiver.exchange(nullptr);
    // The next request has its default effect.
    if (object == nullptr)
        return FALSE;
    QMetaObject::invokeMethod(
        object, [object] { Q_EMIT object->stopRequested(); }, Qt::QueuedConnection);
    return TRUE;
}

} // namespace

struct StopSignals::Source
{};

StopSignals::StopSignals(QObject* parent) : QObject(parent)
{
    receiver = this;
    ::SetConsoleCtrlHandler(&onControl, TRUE);
}

StopSignals::~StopSignals()
{
    ::SetConsoleCtrlHandler(&onControl, FALSE);
    receiver = nullptr;
}

} // namespace platform
