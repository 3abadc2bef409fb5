// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/Command.h"
#include "cli/Console.h"
#include "cli/InstrumentSession.h"
#include "instrument/CurveArchive.h"
#include "instrument/PacketCodec.h"
#include "recording/RecordingReader.h"
#include "storage/DataFolders.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace cli {

namespace {

using namespace recording;

/// The interval of the chart page and the most samples that it keeps.
constexpr Time cChartInterval = std::chrono::milliseconds(80);
constexpr qint64 cMostSamples = 3000;
constexpr double cMicrosPerSecond = 1e6;

/// Samples a part of the recording at a fixed interval: each sample is the last measurement before it.
CurveArchive sample(RecordingReader& reader, const Range& range, Time interval)
{
    CurveArchive archive;
    archive.sampleIntervalSec = static_cast<double>(interval.count()) / cMicrosPerSecond;
    Time next = range.from;
    bool has = false;
    protocol::Measurement held;
    const auto sampleUntil = [&](Time end) {
        for (; next < end && next < range.to; next += interval) {
            archive.voltageSamples << static_cast<double>(held.mainInputVoltage);
            archive.currentSamples << static_cast<double>(held.mainOutputCurrent);
        }
    };
    reader.measurements(range, [&](const recording::Measurement& measurement) {
        if (!has)
            next = measurement.at;
        else
            sampleUntil(measurement.at);
        has = true;
        held = measurement.values;
        return true;
    });
    if (has)
        sampleUntil(next + Time(1));
    return archive;
}

int makeCurve(const QCommandLineParser& options, const QString& path)
{
    const auto from = timeOf(options, QStringLiteral("from"), Time(0));
    const auto to = timeOf(options, QStringLiteral("to"), Time::max());
    if (!from || !to)
        return WrongUsage;
    RecordingReader reader;
    if (!reader.open(path))
        return console::fail(reader.error());
    const Info info = reader.info();
    const Range range{*from, std::min(*to, info.duration + Time(1))};
    const Time fitting((range.to - range.from).count() / cMostSamples + 1);
    CurveArchive archive = sample(reader, range, std::max(cChartInterval, fitting));
    if (reader.error())
        return console::fail(reader.error());
    if (archive.voltageSamples.isEmpty())
        return console::fail(Failed, QStringLiteral("%1 has no measurements there").arg(path));
    const QDateTime now = QDateTime::currentDateTime();
    archive.createdAt = now.toString(Qt::ISODate);
    archive.deviceId = info.deviceId;
    archive.deviceVersion = info.deviceVersion;
    QString target = options.value(QStringLiteral("output"));
    if (target.isEmpty())
        target = folders::curves() + QLatin1Char('/') + CurveArchive::fileName(now);
    if (!target.endsWith(QLatin1String(".json")))
        return console::fail(WrongUsage,
                             QStringLiteral("%1: the name of a curve archive ends in .json").arg(target));
    if (QFileInfo::exists(target) || QFileInfo::exists(CurveArchive::csvPath(target)))
        return console::fail({Failure::Exists, target, {}});
    if (!archive.save(target))
        return console::fail({Failure::InputOutput, target, {}});
    console::writeLine(QDir::toNativeSeparators(target));
    return Success;
}

int sendCurve(const QString& path)
{
    CurveArchive archive;
    switch (CurveArchive::load(path, archive)) {
    case CurveArchive::LoadStatus::NotOpened:
        return console::fail({QFileInfo::exists(path) ? Failure::NoPermission : Failure::NotFound, path, {}});
    case CurveArchive::LoadStatus::Invalid:
        return console::fail(Failed, QStringLiteral("%1 is not a curve archive").arg(path));
    case CurveArchive::LoadStatus::Loaded:
        break;
    }
    std::vector<float> points;
    for (const QVariant& voltage : qAsConst(archive.voltageSamples))
        points.push_back(voltage.toFloat());
    const std::vector<QByteArray> packets = protocol::encodeCurve(points);
    if (packets.empty())
        return console::fail(Failed, QStringLiteral("%1 has no samples, or more than %2")
                                         .arg(path)
                                         .arg(protocol::cMaxCurvePackets * protocol::cCurvePointsPerPacket));
    InstrumentSession session;
    return session.send(packets);
}

int runCurve(const QCommandLineParser& options, const QStringList& arguments)
{
    const bool send = arguments.size() == 2 && arguments.first() == QLatin1String("send");
    if (arguments.size() == 2 && !send)
        return console::fail(WrongUsage, QStringLiteral("no such operation: %1").arg(arguments.first()));
    return send ? sendCurve(arguments.last()) : makeCurve(options, arguments.first());
}

} // namespace

Command curveCommand()
{
    Command command;
    command.name = QStringLiteral("curve");
    command.summary = QStringLiteral("Makes a curve archive of a recording, or sends one to the instrument.");
    command.operands = {
        {QStringLiteral("[send]"), QStringLiteral("Sends the curve archive FILE.")},
        {QStringLiteral("FILE"), QStringLiteral("A recording; with \"send\", a curve archive.")}};
    command.options = {
        timeOption(QStringLiteral("from"), QStringLiteral("Starts at this time of the recording.")),
        timeOption(QStringLiteral("to"), QStringLiteral("Ends before this time of the recording.")),
        outputOption(QStringLiteral(
            "The new archive; a name with date and time in the folder of the curves by default.")),
    };
    command.leastOperands = 1;
    command.mostOperands = 2;
    command.run = &runCurve;
    return command;
}

} // namespace cli
