// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/virtual-instrument/InstrumentPlayer.h"

#include "tools/virtual-instrument/HostPacketText.h"
#include "tools/virtual-instrument/MockDevice.h"
#include "tools/virtual-instrument/TraceFile.h"

#include <QRandomGenerator>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <limits>
#include <utility>

namespace {

constexpr int cBenchTickMs = 10;
constexpr int cBurstTickMs = 1;
/// Small enough for a float with a resolution of microseconds.
constexpr double cSendingTimePeriodSec = 60;
constexpr double cMeasurementsPerSec = 20;
constexpr double cReadingsPerSec = 5;
constexpr double cIdentitiesPerSec = 0.2;
/// Type byte of garbage packets; the protocol does not use it.
constexpr char cUnknownType = 0x6e;
constexpr double cMsPerSec = 1000.0;
/// What is sent just after an open is lost.
constexpr qint64 cSettlingAfterOpenMs = 100;

/// Returns the whole part of \a due, the packets to send, and leaves the fraction.
int takeDue(double* due)
{
    const int whole = static_cast<int>(*due);
    *due -= whole;
    return whole;
}

/// The monotonic clock of this machine, modulo cSendingTimePeriodSec.
float sendingTimeSec()
{
    const std::chrono::duration<double> now = std::chrono::steady_clock::now().time_since_epoch();
    return static_cast<float>(std::fmod(now.count(), cSendingTimePeriodSec));
}

} // namespace

InstrumentPlayer::InstrumentPlayer(MockDevice* device, TraceFile* trace, QObject* parent)
    : QObject(parent), m_device(device), m_trace(trace), m_measurementsPerSec(cMeasurementsPerSec)
{
    m_tickTimer.setTimerType(Qt::PreciseTimer);
    m_tickTimer.setInterval(cBenchTickMs);
    connect(&m_tickTimer, &QTimer::timeout, this, &InstrumentPlayer::tick);
    connect(m_device, &MockDevice::opened, this, &InstrumentPlayer::onOpened);
    connect(m_device, &MockDevice::closed, this, [this] { m_trace->write(QStringLiteral("close")); });
    connect(m_device, &MockDevice::plugged, this,
            [this](const QString& node) { m_trace->write(QStringLiteral("plug %1").arg(node)); });
    connect(m_device, &MockDevice::unplugged, this, [this] { m_trace->write(QStringLiteral("unplug")); });
    connect(m_device, &MockDevice::reportReceived, this, &InstrumentPlayer::onReport);
    connect(m_device, &MockDevice::drained, this, &InstrumentPlayer::onDrained);
}

void InstrumentPlayer::setPlayback(std::unique_ptr<RecordingPlayback> playback, double speed)
{
    m_playback = std::move(playback);
    m_playbackSpeed = speed;
    if (!m_playback->deviceInfo().deviceId.isEmpty())
        m_deviceInfo = m_playback->deviceInfo();
}

void InstrumentPlayer::start(const Scenario& scenario)
{
    m_scenario = scenario;
    m_clock.start();
    m_device->plug();
    runDueSteps();
    m_tickTimer.start();
}

void InstrumentPlayer::tick()
{
    const qint64 now = m_clock.elapsed();
    const double passedSec = static_cast<double>(now - m_lastTickMs) / cMsPerSec;
    m_lastTickMs = now;
    m_bench.advance(passedSec);
    runDueSteps();
    const QStringList logLines = m_bench.takeLogLines();
    if (now < m_silentUntilMs)
        return;
    for (const QString& line : logLines)
        m_device->send(protocol::encodeDeviceLog(line));
    m_readingsDue += passedSec * cReadingsPerSec;
    m_identitiesDue += passedSec * cIdentitiesPerSec;
    m_measurementsDue += passedSec * m_measurementsPerSec;
    if (m_burstSent < m_burstCount)
        playBurst();
    else if (m_playback)
        playRecording(passedSec);
    else
        playBench();
}

void InstrumentPlayer::playBench()
{
    MultimeterModel& multimeter = m_bench.multimeter();
    if (takeDue(&m_readingsDue) > 0)
        m_device->send(protocol::encode(multimeter.reading()));
    if (takeDue(&m_identitiesDue) > 0)
        m_device->send(protocol::encode(m_deviceInfo));
    for (int i = takeDue(&m_measurementsDue); i > 0; --i)
        m_device->send(protocol::encode(m_bench.measurement()));
}

void InstrumentPlayer::playRecording(double passedSec)
{
    if (takeDue(&m_identitiesDue) > 0)
        m_device->send(protocol::encode(m_deviceInfo));
    if (m_device->isPlugged() &&
        (!m_device->isOpen() || m_clock.elapsed() - m_openedMs < cSettlingAfterOpenMs))
        return;
    if (m_playbackSteps.empty()) {
        const auto passed = std::chrono::duration<double>(passedSec * m_playbackSpeed);
        const auto steps = m_playback->advance(std::chrono::duration_cast<recording::Time>(passed));
        m_playbackSteps.assign(steps.begin(), steps.end());
    }
    while (!m_playbackSteps.empty()) {
        const RecordingPlayback::Step step = m_playbackSteps.front();
        m_playbackSteps.pop_front();
        switch (step.kind) {
        case RecordingPlayback::Kind::Packet:
            m_device->send(step.packet);
            break;
        case RecordingPlayback::Kind::Unplug:
            m_device->unplug();
            break;
        case RecordingPlayback::Kind::Plug:
            // The rest waits until the program has opened it.
            m_device->plug();
            return;
        }
    }
    if (m_playback->isAtEnd() && !m_playbackEnded) {
        m_playbackEnded = true;
        m_trace->write(QStringLiteral("replay-end"));
    }
}

void InstrumentPlayer::playBurst()
{
    const double passedSec = static_cast<double>(m_clock.elapsed() - m_burstStartMs) / cMsPerSec;
    const int due = static_cast<int>(std::min<double>(m_burstCount, passedSec * m_burstPerSec));
    protocol::Measurement values = m_bench.measurement();
    while (m_burstSent < due) {
        values.typeCMah = static_cast<float>(++m_burstSent);
        values.typeCTimeSec = sendingTimeSec();
        m_device->send(protocol::encode(values));
    }
    if (m_burstSent < m_burstCount)
        return;
    m_tickTimer.setInterval(cBenchTickMs);
    m_trace->write(QStringLiteral("burst-end %1").arg(m_burstCount));
    // Packets that were due during the pause are dropped.
    m_readingsDue = m_measurementsDue = m_identitiesDue = 0;
    onDrained();
}

void InstrumentPlayer::runDueSteps()
{
    const auto ignoreReply = [this](const QString& answer) {
        if (!answer.startsWith(QStringLiteral("ok")))
            m_trace->write(answer);
    };
    double atSec = static_cast<double>(m_clock.elapsed() - m_roundStartMs) / cMsPerSec;
    const std::vector<Scenario::Step>& steps = m_scenario.steps();
    while (m_nextStep < steps.size() && steps[m_nextStep].atSec <= atSec)
        execute(steps[m_nextStep++].command, ignoreReply);
    if (m_scenario.periodSec() > 0 && atSec >= m_scenario.periodSec()) {
        m_roundStartMs += static_cast<qint64>(m_scenario.periodSec() * cMsPerSec);
        m_nextStep = 0;
    }
}

void InstrumentPlayer::onOpened()
{
    m_trace->write(QStringLiteral("open %1").arg(m_device->nodeName()));
    m_identitiesDue = 1;
    m_openedMs = m_clock.elapsed();
}

void InstrumentPlayer::onReport(const QByteArray& report)
{
    ++m_hostPackets;
    m_trace->write(QStringLiteral("host %1").arg(hostPacketText(report)));
    if (protocol::packetType(report) != static_cast<int>(protocol::Type::UiControl))
        return;
    if (const auto request = protocol::decodeUiControl(report))
        m_bench.followHost(*request);
}

void InstrumentPlayer::onDrained()
{
    if (m_burstSent < m_burstCount || !m_device->isDrained())
        return;
    for (const Reply& reply : std::exchange(m_waitingForDrain, {}))
        reply(QStringLiteral("ok"));
}

void InstrumentPlayer::sendScreen(int layer0, int layer1)
{
    protocol::UiControl control;
    control.direction = protocol::InstrumentReport;
    control.layer0 = layer0;
    control.layer1 = layer1;
    m_device->send(protocol::encode(control));
}

void InstrumentPlayer::sendGarbage(int count)
{
    for (int i = 0; i < count; ++i) {
        QByteArray packet(protocol::cPacketSize, '\0');
        auto* words = reinterpret_cast<quint32*>(packet.data());
        QRandomGenerator::global()->fillRange(words, protocol::cPacketSize / static_cast<int>(sizeof *words));
        packet[protocol::cTypeOffset] = cUnknownType;
        m_device->send(packet);
    }
}

void InstrumentPlayer::startBurst(int count, double perSecond)
{
    m_burstCount = count;
    m_burstSent = 0;
    m_burstPerSec = perSecond;
    m_burstStartMs = m_clock.elapsed();
    m_tickTimer.setInterval(cBurstTickMs);
}

QString InstrumentPlayer::status() const
{
    return QStringLiteral(
               "ok plugged=%1 node=%2 open=%3 screen=%4 function=%5 sent=%6 backlog=%7 worst=%8 host=%9")
        .arg(m_device->isPlugged() ? 1 : 0)
        .arg(m_device->nodeName())
        .arg(m_device->isOpen() ? 1 : 0)
        .arg(static_cast<int>(m_bench.screen()))
        .arg(static_cast<int>(m_bench.multimeter().function()))
        .arg(m_device->sentReports())
        .arg(m_device->backlog())
        .arg(m_device->worstBacklog())
        .arg(m_hostPackets);
}

void InstrumentPlayer::execute(const Command& command, const Reply& reply)
{
    const auto sendMany = [this](int count, const QByteArray& packet) {
        for (int i = 0; i < count; ++i)
            m_device->send(packet);
    };
    QString answer = QStringLiteral("ok");
    switch (command.action) {
    case Action::Unplug:
        m_device->unplug();
        break;
    case Action::Replug:
        m_device->unplug();
        m_device->plug();
        break;
    case Action::Silence:
        m_silentUntilMs = m_clock.elapsed() + static_cast<qint64>(command.number(0) * cMsPerSec);
        break;
    case Action::Rate:
        m_measurementsPerSec = command.number(0);
        break;
    case Action::Garbage:
        sendGarbage(command.count(0));
        break;
    case Action::Truncated:
        sendMany(command.count(0), protocol::encode(m_bench.measurement()).left(command.count(1)));
        break;
    case Action::ZeroFilled:
        sendMany(command.count(0), QByteArray(protocol::cPacketSize, '\0'));
        break;
    case Action::NotANumber: {
        const auto values = uniformMeasurement(std::numeric_limits<float>::quiet_NaN());
        sendMany(command.count(0), protocol::encode(values));
        break;
    }
    case Action::Burst:
        startBurst(command.count(0), command.number(1));
        break;
    case Action::WriteErrors:
        m_device->failWrites(command.count(0));
        break;
    case Action::Screen:
        m_bench.setScreen(static_cast<protocol::Screen>(command.count(0)));
        sendScreen(command.count(0), protocol::cLayerNotGiven);
        break;
    case Action::Function:
        m_bench.setScreen(protocol::MultimeterScreen);
        m_bench.multimeter().setFunction(static_cast<MultimeterModel::Function>(command.count(0)));
        sendScreen(protocol::MultimeterScreen, command.count(0));
        break;
    case Action::Log:
        m_device->send(protocol::encodeDeviceLog(command.text(0)));
        break;
    case Action::DeviceInfo:
        m_deviceInfo = {command.text(0), command.text(1)};
        m_device->send(protocol::encode(m_deviceInfo));
        break;
    case Action::Set:
        m_bench.hold(measurementField(command.text(0)), static_cast<float>(command.number(1)));
        break;
    case Action::Auto:
        m_bench.release(measurementField(command.text(0)));
        break;
    case Action::Reading:
        m_bench.multimeter().holdReading(command.text(0) == QStringLiteral("auto") ? QString()
                                                                                   : command.text(0));
        break;
    case Action::Interfaces:
        m_device->setInterfaceCount(command.count(0));
        if (m_device->isPlugged()) {
            m_device->unplug();
            m_device->plug();
        }
        break;
    case Action::Permission:
        m_device->setPermission(command.text(0) == QStringLiteral("granted"));
        break;
    case Action::BootController:
        m_device->setBootControllerPlugged(command.text(0) == QStringLiteral("plug"));
        break;
    case Action::Exit:
        Q_EMIT exitRequested(command.count(0));
        break;
    case Action::Status:
        answer = status();
        break;
    case Action::Drain:
        m_waitingForDrain.push_back(reply);
        onDrained();
        return;
    }
    reply(answer);
}
