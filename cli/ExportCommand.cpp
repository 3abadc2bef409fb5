// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/Command.h"
#include "cli/Console.h"
#include "recording/MeasurementText.h"
#include "recording/RecordingReader.h"

#include <QFileInfo>
#include <QSaveFile>

#include <functional>
#include <memory>

namespace cli {

namespace {

using namespace recording;

/// Text is handed on in pieces of this size.
constexpr int cPieceBytes = 256 * 1024;

using Sink = std::function<bool(const QByteArray& text)>;

/// Writes the measurements in \a range to \a sink, one in each \a interval. Returns false when either side
/// fails; the reader's error() says which.
bool exportTo(const Sink& sink, RecordingReader& reader, const MeasurementText& text, const Range& range,
              Time interval)
{
    QByteArray piece = text.header();
    piece.reserve(2 * cPieceBytes);
    bool written = true;
    Time next{0};
    const bool read = reader.measurements(range, [&](const recording::Measurement& measurement) {
        if (measurement.at < next)
            return true;
        if (interval > Time(0))
            next = measurement.at - measurement.at % interval + interval;
        text.append(piece, measurement);
        if (piece.size() >= cPieceBytes) {
            written = sink(piece);
            piece.resize(0);
        }
        return written;
    });
    return read && written && sink(piece);
}

int exportToFile(const QString& path, const std::function<bool(const Sink& sink)>& write,
                 const RecordingReader& reader)
{
    if (QFileInfo::exists(path))
        return console::fail({Failure::Exists, path, {}});
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return console::fail(
            {QFileInfo(QFileInfo(path).absolutePath()).isDir() ? Failure::NoPermission : Failure::NotFound,
             path, file.errorString()});
    const bool written =
        write([&file](const QByteArray& text) { return file.write(text) == text.size(); }) && file.flush();
    if (reader.error())
        return console::fail(reader.error());
    if (!written || !file.commit())
        return console::fail({Failure::InputOutput, path, file.errorString()});
    return Success;
}

int runExport(const QCommandLineParser& options, const QStringList& arguments)
{
    const auto from = timeOf(options, QStringLiteral("from"), Time(0));
    const auto to = timeOf(options, QStringLiteral("to"), Time::max());
    const auto interval = timeOf(options, QStringLiteral("every"), Time(0));
    if (!from || !to || !interval)
        return WrongUsage;
    const bool jsonLines = options.isSet(QStringLiteral("jsonl"));
    if (jsonLines && options.isSet(QStringLiteral("csv")))
        return console::fail(WrongUsage, QStringLiteral("--csv and --jsonl exclude each other"));
    RecordingReader reader;
    if (!reader.open(arguments.first()))
        return console::fail(reader.error());
    const MeasurementText text(jsonLines ? MeasurementText::Format::Json : MeasurementText::Format::Csv, {});
    const auto write = [&](const Sink& sink) {
        return exportTo(sink, reader, text, {*from, *to}, *interval);
    };
    if (options.isSet(QStringLiteral("output")))
        return exportToFile(options.value(QStringLiteral("output")), write, reader);
    const bool written = write(&console::write) && console::flush();
    if (reader.error())
        return console::fail(reader.error());
    return written ? Success : console::fail(InputOutput, QStringLiteral("the output could not be written"));
}

} // namespace

Command exportCommand()
{
    Command command;
    command.name = QStringLiteral("export");
    command.summary = QStringLiteral("Writes the measurements of a recording as text.");
    command.operands = {{QStringLiteral("FILE"), QStringLiteral("A recording.")}};
    command.options = {
        {QStringLiteral("csv"), QStringLiteral("Writes CSV, the default.")},
        {QStringLiteral("jsonl"), QStringLiteral("Writes one JSON object per line.")},
        timeOption(QStringLiteral("from"), QStringLiteral("Starts at this time of the recording.")),
        timeOption(QStringLiteral("to"), QStringLiteral("Ends before this time of the recording.")),
        timeOption(QStringLiteral("every"), QStringLiteral("Writes one measurement in this time.")),
        outputOption(QStringLiteral("Writes into this new file instead of the standard output.")),
    };
    command.leastOperands = command.mostOperands = 1;
    command.run = &runExport;
    return command;
}

} // namespace cli
