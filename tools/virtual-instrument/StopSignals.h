// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QSocketNotifier>

#include <memory>

/// Turns SIGINT, SIGTERM and SIGHUP into a Qt signal on the main thread. One object per process.
class StopSignals : public QObject
{
    Q_OBJECT

public:
    explicit StopSignals(QObject* parent = nullptr);
    ~StopSignals() override;

Q_SIGNALS:
    void stopRequested(int signalNumber);

private:
    void onActivated();

    std::unique_ptr<QSocketNotifier> m_notifier;
};
