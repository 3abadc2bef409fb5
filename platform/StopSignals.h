// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

#include <memory>

namespace platform {

/**
 * Emits a signal on its own thread when the user or the system asks a program without a window to end:
 * Ctrl+C, SIGTERM, SIGHUP, a console that is closed. A second request ends the process at once. At most one
 * object may exist in a process.
 */
class StopSignals : public QObject
{
    Q_OBJECT

public:
    explicit StopSignals(QObject* parent = nullptr);
    ~StopSignals() override;

Q_SIGNALS:
    void stopRequested();

private:
    struct Source;
    std::unique_ptr<Source> m_source;
};

} // namespace platform
