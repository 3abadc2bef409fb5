// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/Command.h"
#include "cli/Console.h"
#include "cli/InstrumentSession.h"
#include "platform/StopSignals.h"
#include "platform/Terminal.h"
#include "recording/MeasurementText.h"

#include <QCoreApplication>
#include <QTimer>

namespace cli {

namespace {

using recording::MeasurementText;
using recording::Time;

/// Prints measurements until it is stopped. On a terminal, one line is replaced again and again.
class WatchRun : public QObject
{
public:
    WatchRun(MeasurementText text, Time interval, bool inPlace)
        : m_text(std::move(text)), m_interval(interval), m_inPlace(inPlace)
    {
        connect(&m_signals, &platform::StopSignals::stopRequested, this,
                [] { QCoreApplication::exit(Success); });
        connect(&m_session.port(), &InstrumentPort::packetReceived, this, &WatchRun::onPacket);
        connect(&m_session.port(), &InstrumentPort::stateChanged, this, &WatchRun::onPortChanged);
    }

    int run(bool wait, std::chrono::microseconds duration)
    {
        const int code = m_session.open(wait);
        if (code != Success)
            return code;
        m_wait = wait;
        if (duration.count() > 0)
            QTimer::singleShot(std::chrono::duration_cast<std::chrono::milliseconds>(duration), this,
                               [] { QCoreApplication::exit(Success); });
        console::write(m_text.header());
        console::flush();
        const int result = runEventLoop();
        if (m_inPlace)
            console::write("\n");
        return result;
    }

private:
    void onPacket(const InstrumentPacket& packet)
    {
        if (protocol::packetType(packet.bytes) != static_cast<int>(protocol::Type::Measurement))
            return;
        const auto values = protocol::decodeMeasurement(packet.bytes);
        if (!values)
            return;
        const Time at = std::chrono::duration_cast<Time>(packet.readAt - m_startedAt);
        if (at < m_next)
            return;
        if (m_interval > Time(0))
            m_next = at - at % m_interval + m_interval;
        QByteArray line;
        m_text.append(line, {std::max(at, Time(0)), *values});
        if (m_inPlace) {
            line.chop(1);
            line = "\r" + line + "\x1b[K";
        }
        // Whoever read the pipe has gone.
        if (!console::write(line) || !console::flush())
            QCoreApplication::exit(Success);
    }

    void onPortChanged(InstrumentPort::State state)
    {
        using State = InstrumentPort::State;
        if (state == State::Failed && !m_wait)
            QCoreApplication::exit(console::fail(NoInstrument, m_session.port().failure()));
    }

    const MeasurementText m_text;
    const Time m_interval;
    const bool m_inPlace;
    bool m_wait = false;
    const std::chrono::steady_clock::time_point m_startedAt = std::chrono::steady_clock::now();
    Time m_next{0};
    platform::StopSignals m_signals;
    InstrumentSession m_session;
};

int runWatch(const QCommandLineParser& options, const QStringList& /*arguments*/)
{
    const QStringList columns =
        options.value(QStringLiteral("fields")).split(QLatin1Char(','), Qt::SkipEmptyParts);
    const QStringList unknown = MeasurementText::unknownColumns(columns);
    if (!unknown.isEmpty())
        return console::fail(WrongUsage, QStringLiteral("no such field: %1").arg(unknown.first()));
    const auto interval = timeOf(options, QStringLiteral("every"), Time(0));
    const auto duration = timeOf(options, QStringLiteral("for"), Time(0));
    if (!interval || !duration)
        return WrongUsage;
    const bool json = options.isSet(QStringLiteral("json"));
    const MeasurementText text(json ? MeasurementText::Format::Json : MeasurementText::Format::Tsv, columns);
    WatchRun run(text, *interval, !json && platform::isTerminal(stdout));
    return run.run(options.isSet(QStringLiteral("wait")), *duration);
}

} // namespace

Command watchCommand()
{
    Command command;
    command.name = QStringLiteral("watch");
    command.summary = QStringLiteral("Prints the measurements as they arrive.");
    command.options = {
        {QStringLiteral("fields"), QStringLiteral("Only these, for example main_voltage,main_current."),
         QStringLiteral("NAMES")},
        timeOption(QStringLiteral("every"), QStringLiteral("Prints one measurement in this time.")),
        timeOption(QStringLiteral("for"), QStringLiteral("Ends after this time.")),
        {QStringLiteral("wait"), QStringLiteral("Waits for an instrument, also when it is unplugged.")},
        jsonOption(),
    };
    command.run = &runWatch;
    return command;
}

} // namespace cli
