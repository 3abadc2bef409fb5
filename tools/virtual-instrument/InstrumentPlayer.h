// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "tools/virtual-instrument/BenchModel.h"
#include "tools/virtual-instrument/Scenario.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <functional>
#include <vector>

class MockDevice;
class TraceFile;

/// Plays the instrument on a mock device: the bench at its pace, the steps of a scenario when they are due,
/// and commands from outside at once. Lives on the main thread.
class InstrumentPlayer : public QObject
{
    Q_OBJECT

public:
    using Reply = std::function<void(const QString&)>;

    /// The device and the trace must outlive the player.
    InstrumentPlayer(MockDevice* device, TraceFile* trace, QObject* parent = nullptr);

    /// Plugs the instrument in, does the steps that are due at once, and goes on from there.
    void start(const Scenario& scenario);

    /// Does one command; \a reply gets "ok", "ok …" or "error …" exactly once, perhaps later.
    void execute(const Command& command, const Reply& reply);

Q_SIGNALS:
    /// The scenario or a command wants the program to end.
    void exitRequested(int exitCode);

private:
    void tick();
    void playBench();
    void playBurst();
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
    Scenario m_scenario;
    std::size_t m_nextStep = 0;
    /// Milliseconds on m_clock at which the scenario's present round started.
    qint64 m_roundStartMs = 0;

    QTimer m_tickTimer;
    QElapsedTimer m_clock;
    qint64 m_lastTickMs = 0;
    qint64 m_silentUntilMs = 0;
    double m_measurementsPerSec;
    double m_measurementsDue = 0;
    double m_readingsDue = 0;
    double m_identitiesDue = 0;
    PacketCodec::DeviceInfo m_deviceInfo{QStringLiteral("VIRTUAL-QI1"), QStringLiteral("1.0.0")};

    int m_burstCount = 0;
    int m_burstSent = 0;
    double m_burstPerSec = 0;
    qint64 m_burstStartMs = 0;

    quint64 m_hostPackets = 0;
    std::vector<Reply> m_waitingForDrain;
};
