// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/Command.h"
#include "cli/Console.h"
#include "cli/Duration.h"
#include "recording/RecordingReader.h"
#include "recording/RunningRecordings.h"

#include <QJsonArray>

namespace cli {

namespace {

using namespace recording;

constexpr double cMicrosPerSecond = 1e6;
constexpr int cPercent = 100;

double seconds(Time time)
{
    return static_cast<double>(time.count()) / cMicrosPerSecond;
}

QString stateOf(const Info& info)
{
    if (info.endReason != EndReason::None)
        return endReasonCode(info.endReason);
    return running::isLocked(info.path) ? endReasonCode(EndReason::None) : QStringLiteral("not finished");
}

QJsonObject supplyJson(const Delivered& delivered)
{
    QJsonObject object{{QStringLiteral("charge_mah"), delivered.chargeMah},
                       {QStringLiteral("energy_wh"), delivered.energyWh},
                       {QStringLiteral("counter_mah"), delivered.counterMah},
                       {QStringLiteral("counter_differs"), counterDiffers(delivered)}};
    return object;
}

int printJson(RecordingReader& reader, const Info& info)
{
    QJsonArray gaps;
    for (const Gap& gap : reader.gaps()) {
        gaps.append(
            QJsonObject{{QStringLiteral("from_s"), seconds(gap.from)},
                        {QStringLiteral("to_s"), gap.to ? QJsonValue(seconds(*gap.to)) : QJsonValue()},
                        {QStringLiteral("reason"), gapReasonCode(gap.reason)},
                        {QStringLiteral("detail"), gap.detail}});
    }
    QJsonArray marks;
    for (const Mark& mark : reader.marks())
        marks.append(
            QJsonObject{{QStringLiteral("at_s"), seconds(mark.at)}, {QStringLiteral("text"), mark.text}});
    console::writeJson({{QStringLiteral("file"), info.path},
                        {QStringLiteral("state"), stateOf(info)},
                        {QStringLiteral("program"), info.program},
                        {QStringLiteral("device_id"), info.deviceId},
                        {QStringLiteral("device_version"), info.deviceVersion},
                        {QStringLiteral("start"), reader.wallTime(Time(0)).toString(Qt::ISODateWithMs)},
                        {QStringLiteral("end"), reader.wallTime(info.duration).toString(Qt::ISODateWithMs)},
                        {QStringLiteral("duration_s"), seconds(info.duration)},
                        {QStringLiteral("interval_s"), seconds(info.interval)},
                        {QStringLiteral("rows"), info.rows},
                        {QStringLiteral("main"), supplyJson(info.of(Supply::Main))},
                        {QStringLiteral("type_c"), supplyJson(info.of(Supply::TypeC))},
                        {QStringLiteral("gaps"), gaps},
                        {QStringLiteral("marks"), marks}});
    return Success;
}

void printSupply(const QString& name, const Delivered& delivered)
{
    QString line = QStringLiteral("%1 %2 mAh, %3 Wh; the instrument counted %4 mAh")
                       .arg(name, -12)
                       .arg(delivered.chargeMah, 0, 'f', 1)
                       .arg(delivered.energyWh, 0, 'f', 3)
                       .arg(delivered.counterMah, 0, 'f', 1);
    if (counterDiffers(delivered))
        line += QStringLiteral(", a difference of %1 %")
                    .arg(counterDifference(delivered).value_or(0) * cPercent, 0, 'f', 1);
    console::writeLine(line);
}

int printText(RecordingReader& reader, const Info& info)
{
    const auto line = [](const char* name, const QString& value) {
        console::writeLine(QStringLiteral("%1 %2").arg(QLatin1String(name), -12).arg(value));
    };
    line("File", info.path);
    line("State", stateOf(info));
    line("Instrument", QStringLiteral("%1 %2").arg(info.deviceId, info.deviceVersion).trimmed());
    line("Start", reader.wallTime(Time(0)).toString(Qt::ISODate));
    line("End", reader.wallTime(info.duration).toString(Qt::ISODate));
    line("Duration", durationText(info.duration));
    line("Rows", QString::number(info.rows));
    printSupply(QStringLiteral("Main"), info.of(Supply::Main));
    printSupply(QStringLiteral("Type-C"), info.of(Supply::TypeC));
    for (const Gap& gap : reader.gaps())
        line("Gap",
             QStringLiteral("%1 to %2  %3 %4")
                 .arg(durationText(gap.from), gap.to ? durationText(*gap.to) : QStringLiteral("the end"),
                      gapReasonText(gap.reason), gap.detail)
                 .trimmed());
    for (const Mark& mark : reader.marks())
        line("Mark", QStringLiteral("%1  %2").arg(durationText(mark.at), mark.text));
    return Success;
}

int runInfo(const QCommandLineParser& options, const QStringList& arguments)
{
    RecordingReader reader;
    if (!reader.open(arguments.first()))
        return console::fail(reader.error());
    const Info info = reader.info();
    const int code =
        options.isSet(QStringLiteral("json")) ? printJson(reader, info) : printText(reader, info);
    return reader.error() ? console::fail(reader.error()) : code;
}

} // namespace

Command infoCommand()
{
    Command command;
    command.name = QStringLiteral("info");
    command.summary = QStringLiteral("Prints what a recording holds.");
    command.operands = {{QStringLiteral("FILE"), QStringLiteral("A recording.")}};
    command.options = {jsonOption()};
    command.leastOperands = command.mostOperands = 1;
    command.run = &runInfo;
    return command;
}

} // namespace cli
