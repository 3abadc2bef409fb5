// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/Command.h"
#include "cli/Console.h"
#include "cli/Duration.h"
#include "cli/InstrumentSession.h"
#include "platform/StopSignals.h"
#include "recording/CurrentBelow.h"
#include "recording/PortRecorder.h"
#include "recording/Recorder.h"
#include "storage/DataFolders.h"
#include "storage/TimeText.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QTimer>

#include <optional>

namespace cli {

namespace {

using recording::Supply;

struct RecordOptions
{
    Recorder::Options recorder;
    std::chrono::microseconds duration{0}; ///< 0 for no end
    std::optional<CurrentBelow> condition;
    bool wait = false;
    bool json = false;
};

/// A name in the folder of the recordings that is not taken.
QString defaultPath()
{
    const QString base = folders::recordings() + QStringLiteral("/recording_") +
                         timeText(QDateTime::currentDateTime(), QStringLiteral("yyyyMMdd_HHmmss"));
    QString path = base + QStringLiteral(".qrec");
    for (int number = 2; QFileInfo::exists(path); ++number)
        path = QStringLiteral("%1_%2.qrec").arg(base).arg(number);
    return path;
}

QString progressText(const RecorderStatus& status)
{
    const RecordingWriter::Totals& totals = status.totals;
    const recording::Delivered& main = totals.delivered[static_cast<size_t>(Supply::Main)];
    return QStringLiteral("%1  %2 rows  %3 V  %4 A  %5 W  %6 mAh  %7 Wh%8")
        .arg(durationText(status.duration))
        .arg(totals.rows)
        .arg(static_cast<double>(totals.last.mainInputVoltage), 0, 'f', 3)
        .arg(static_cast<double>(totals.last.mainOutputCurrent), 0, 'f', 3)
        .arg(static_cast<double>(totals.last.mainPower), 0, 'f', 3)
        .arg(main.chargeMah, 0, 'f', 1)
        .arg(main.energyWh, 0, 'f', 3)
        .arg(totals.inGap ? QStringLiteral("  (no data)") : QString());
}

QJsonObject progressJson(const RecorderStatus& status)
{
    constexpr double cMicrosPerSecond = 1e6;
    const RecordingWriter::Totals& totals = status.totals;
    const recording::Delivered& main = totals.delivered[static_cast<size_t>(Supply::Main)];
    const recording::Delivered& typeC = totals.delivered[static_cast<size_t>(Supply::TypeC)];
    return {{QStringLiteral("file"), status.path},
            {QStringLiteral("duration_s"), static_cast<double>(status.duration.count()) / cMicrosPerSecond},
            {QStringLiteral("rows"), totals.rows},
            {QStringLiteral("gaps"), totals.gaps},
            {QStringLiteral("in_gap"), totals.inGap},
            {QStringLiteral("main_voltage"), static_cast<double>(totals.last.mainInputVoltage)},
            {QStringLiteral("main_current"), static_cast<double>(totals.last.mainOutputCurrent)},
            {QStringLiteral("main_power"), static_cast<double>(totals.last.mainPower)},
            {QStringLiteral("main_charge_mah"), main.chargeMah},
            {QStringLiteral("main_energy_wh"), main.energyWh},
            {QStringLiteral("type_c_charge_mah"), typeC.chargeMah},
            {QStringLiteral("type_c_energy_wh"), typeC.energyWh}};
}

/// One recording from its start to its end. The event loop ends with it.
class RecordRun : public QObject
{
public:
    explicit RecordRun(RecordOptions options)
        : m_options(std::move(options)), m_portRecorder(m_session.port(), m_recorder)
    {
        connect(&m_signals, &platform::StopSignals::stopRequested, this, &RecordRun::onStopRequested);
        connect(&m_recorder, &Recorder::statusChanged, this, &RecordRun::onStatusChanged);
        connect(&m_recorder, &Recorder::ended, this, &RecordRun::onEnded);
        connect(&m_session.port(), &InstrumentPort::stateChanged, this, &RecordRun::onPortChanged);
        connect(&m_session.port(), &InstrumentPort::packetReceived, this, &RecordRun::onPacket);
    }

    /// Returns the exit code.
    int run()
    {
        const int code = m_session.open(m_options.wait);
        if (code != Success)
            return code;
        if (m_session.port().isOpen() && !start())
            return m_code;
        m_waiting = !m_recorder.isRecording();
        if (m_waiting)
            console::showProgress(QStringLiteral("Waiting for an instrument…"));
        return runEventLoop();
    }

private:
    bool start()
    {
        const recording::Error error = m_recorder.start(m_options.recorder);
        if (error) {
            m_code = console::fail(error);
            return false;
        }
        m_startedAt = std::chrono::steady_clock::now();
        if (m_options.duration.count() > 0)
            QTimer::singleShot(std::chrono::duration_cast<std::chrono::milliseconds>(m_options.duration),
                               this, [this] { m_recorder.stop(); });
        return true;
    }

    void onPortChanged(InstrumentPort::State state)
    {
        if (state != InstrumentPort::State::Open || !m_waiting)
            return;
        m_waiting = false;
        if (!start())
            QCoreApplication::exit(m_code);
    }

    void onPacket(const InstrumentPacket& packet)
    {
        if (!m_options.condition || !m_recorder.isRecording() ||
            protocol::packetType(packet.bytes) != static_cast<int>(protocol::Type::Measurement))
            return;
        const auto values = protocol::decodeMeasurement(packet.bytes);
        const auto at = std::chrono::duration_cast<recording::Time>(packet.readAt - m_startedAt);
        if (values && m_options.condition->add({at, *values}))
            m_recorder.stop(recording::EndReason::Condition);
    }

    void onStopRequested()
    {
        if (m_recorder.isRecording())
            m_recorder.stop();
        else
            QCoreApplication::exit(
                console::fail(NoInstrument, QStringLiteral("no instrument was connected")));
    }

    void onStatusChanged()
    {
        const RecorderStatus status = m_recorder.status();
        if (m_options.json)
            console::writeJson(progressJson(status));
        else
            console::showProgress(progressText(status));
        if (status.problem && status.problem.failure != m_reported)
            console::note(recording::errorText(status.problem));
        m_reported = status.problem.failure;
    }

    void onEnded(recording::EndReason reason, const recording::Error& error)
    {
        const RecorderStatus status = m_recorder.status();
        console::endProgress();
        if (m_options.json)
            console::writeJson(progressJson(status));
        else
            console::writeLine(
                QStringLiteral("%1\n%2").arg(QDir::toNativeSeparators(status.path), progressText(status)));
        int code = Success;
        if (error)
            code = console::fail(error);
        else if (reason == recording::EndReason::DiskSpace)
            code = console::fail(DiskFull, recording::endReasonText(reason));
        QCoreApplication::exit(code);
    }

    RecordOptions m_options;
    platform::StopSignals m_signals;
    InstrumentSession m_session;
    Recorder m_recorder;
    PortRecorder m_portRecorder;
    std::chrono::steady_clock::time_point m_startedAt;
    int m_code = Failed;
    /// No instrument has been there yet; the first one starts the recording.
    bool m_waiting = false;
    recording::Failure m_reported = recording::Failure::None;
};

std::optional<CurrentBelow> conditionOf(const QCommandLineParser& options, bool& valid)
{
    const QString name = QStringLiteral("until-current-below");
    const auto during = timeOf(options, QStringLiteral("during"), std::chrono::minutes(1));
    const QString supply = options.value(QStringLiteral("supply"));
    valid = during.has_value();
    if (supply != QLatin1String("main") && supply != QLatin1String("type-c")) {
        console::fail(WrongUsage, QStringLiteral("--supply %1: main or type-c is needed").arg(supply));
        valid = false;
    }
    if (!valid || !options.isSet(name))
        return std::nullopt;
    QString text = options.value(name);
    if (text.endsWith(QLatin1Char('A')))
        text.chop(1);
    const double limit = text.toDouble(&valid);
    valid = valid && limit > 0;
    if (!valid) {
        console::fail(WrongUsage, QStringLiteral("--%1 %2: not a current such as 0.05A").arg(name, text));
        return std::nullopt;
    }
    return CurrentBelow(supply == QLatin1String("main") ? Supply::Main : Supply::TypeC, limit, *during);
}

int runRecord(const QCommandLineParser& options, const QStringList& arguments)
{
    RecordOptions record;
    const auto duration = timeOf(options, QStringLiteral("for"), std::chrono::microseconds(0));
    if (!duration)
        return WrongUsage;
    record.duration = *duration;
    if (options.value(QStringLiteral("every")) != QLatin1String("all")) {
        const auto interval = timeOf(options, QStringLiteral("every"), std::chrono::microseconds(0));
        if (!interval)
            return WrongUsage;
        record.recorder.interval = *interval;
    }
    bool valid = false;
    record.condition = conditionOf(options, valid);
    if (!valid)
        return WrongUsage;
    record.wait = options.isSet(QStringLiteral("wait"));
    record.json = options.isSet(QStringLiteral("json"));
    record.recorder.path = arguments.isEmpty() ? defaultPath() : arguments.first();
    RecordRun run(std::move(record));
    return run.run();
}

} // namespace

Command recordCommand()
{
    Command command;
    command.name = QStringLiteral("record");
    command.summary = QStringLiteral("Records the instrument into a file until Ctrl+C.");
    command.operands = {
        {QStringLiteral("[FILE]"), QStringLiteral("New file; a name with date and time in the folder "
                                                  "of the recordings by default.")}};
    command.options = {
        timeOption(QStringLiteral("for"),
                   QStringLiteral("Ends the recording after this time, for example 8h.")),
        {QStringLiteral("until-current-below"),
         QStringLiteral("Ends the recording when the current stays below this."), QStringLiteral("CURRENT")},
        timeOption(QStringLiteral("during"), QStringLiteral("How long it must stay below; 1m by default.")),
        {QStringLiteral("supply"), QStringLiteral("Supply of that current: main (default) or type-c."),
         QStringLiteral("SUPPLY"), QStringLiteral("main")},
        {QStringLiteral("every"), QStringLiteral("Stores one measurement in this time; \"all\" by default."),
         QStringLiteral("TIME"), QStringLiteral("all")},
        {QStringLiteral("wait"), QStringLiteral("Waits for an instrument when none is connected.")},
        jsonOption(),
    };
    command.mostOperands = 1;
    command.run = &runRecord;
    return command;
}

} // namespace cli
