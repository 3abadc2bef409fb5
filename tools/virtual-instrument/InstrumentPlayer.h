// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "tools/virtual-instrument/BenchModel.h"
#include "tools/virtual-instrument/RecordingPlayback.h"
#include "tools/virtual-instrument/Scenario.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <deque>
#include <functional>
#include <memory>
#include <vector>

class MockDevice;
class TraceFile;

/// Plays the instrument on a mock device. It sends the readings of the bench, runs the steps of a scenario at
/// their times and runs commands from outside at once. Lives on the main thread.
class InstrumentPlayer : public QObject
{
    Q_OBJECT

public:
    using Reply = std::function<void(const QString&)>;

    /// The device and the trace must outlive the player.
    InstrumentPlayer(MockDevice* device, TraceFile* trace, QObject* parent = nullptr);

    /// Plays \a playback instead of the bench, \a speed times as fast. Its time stands still while no program
    /// has the instrument open, so that nothing of it is missed. Call it before start().
    void setPlayback(std::unique_ptr<RecordingPlayback> playback, double speed);

    /// Plugs the instrument in, runs the steps that are due, and starts the timers.
    void start(const Scenario& scenario);

    /// Runs a command. \a reply is called exactly once, now or later, with "ok", "ok …" or "error …".
    void execute(const Command& command, const Reply& reply);

Q_SIGNALS:
    /// Emitted when the scenario or a command ends the program.
    void exitRequested(int exitCode);

private:
    void tick();
    void playBench();
    void playBurst();
    void playRecording(double passedSec);
    void runDueSteps();
    void onOpened();
    void onReport(const QByteArray& report);
    void onDrained();
    void sendScreen(int layer0, int layer1);
    void sendGarbage(int count);
    void startBurst(int count, double perSecond);
    QString status() const;

    MockDevice* m_device;
    TraceFile* m_trace;
    BenchModel m_bench;
    std::unique_ptr<RecordingPlayback> m_playback;
    double m_playbackSpeed = 1;
    /// Due and not yet done.
    std::deque<RecordingPlayback::Step> m_playbackSteps;
    bool m_playbackEnded = false;
    /// When the program opened the instrument last, in milliseconds of m_clock.
    qint64 m_openedMs = 0;
    Scenario m_scenario;
    std::size_t m_nextStep = 0;
    /// Start of the current round of the scenario, in milliseconds of m_clock.
    qint64 m_roundStartMs = 0;

    QTimer m_tickTimer;
    QElapsedTimer m_clock;
    qint64 m_lastTickMs = 0;
    qint64 m_silentUntilMs = 0;
    double m_measurementsPerSec;
    double m_measurementsDue = 0;
    double m_readingsDue = 0;
    double m_identitiesDue = 0;
    protocol::DeviceInfo m_deviceInfo{QStringLiteral("VIRTUAL-QI1"), QStringLiteral("1.0.0")};

    int m_burstCount = 0;
    int m_burstSent = 0;
    double m_burstPerSec = 0;
    qint64 m_burstStartMs = 0;

    quint64 m_hostPackets = 0;
    std::vector<Reply> m_waitingForDrain;
};
