// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/Command.h"
#include "cli/Console.h"
#include "recording/RecordingReport.h"

#include <QFileInfo>

namespace cli {

namespace {

int runReport(const QCommandLineParser& options, const QStringList& arguments)
{
    QString target = options.value(QStringLiteral("output"));
    if (target.isEmpty())
        target = report::defaultTarget(arguments.first());
    if (QFileInfo::exists(target))
        return console::fail(recording::Error{recording::Failure::Exists, target, {}});
    const recording::Error error = report::write(arguments.first(), target);
    return error ? console::fail(error) : Success;
}

} // namespace

Command reportCommand()
{
    Command command;
    command.name = QStringLiteral("report");
    command.summary = QStringLiteral("Writes a report of a recording, with charts, as one HTML file.");
    command.operands = {{QStringLiteral("FILE"), QStringLiteral("A recording.")}};
    command.options = {
        outputOption(QStringLiteral("Writes into this new file instead of one beside the recording."))};
    command.leastOperands = command.mostOperands = 1;
    command.run = &runReport;
    return command;
}

} // namespace cli
