// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/Command.h"
#include "cli/Console.h"
#include "recording/RecordingRepair.h"
#include "recording/RunningRecordings.h"
#include "storage/ApplicationInfo.h"

#include <QFileInfo>

#include <limits>

namespace cli {

namespace {

int finish(const recording::Error& error)
{
    return error ? console::fail(error) : Success;
}

int runMark(const QCommandLineParser& options, const QStringList& arguments)
{
    QString path = options.value(QStringLiteral("file"));
    if (path.isEmpty()) {
        const QStringList recordings = running::current();
        if (recordings.isEmpty())
            return console::fail(NotRecording, QStringLiteral("no recording is running"));
        if (recordings.size() > 1)
            return console::fail(WrongUsage,
                                 QStringLiteral("several recordings are running; name one with --file:\n%1")
                                     .arg(recordings.join(QLatin1Char('\n'))));
        path = recordings.first();
    } else if (QFileInfo::exists(path) && !running::isLocked(path)) {
        return console::fail(NotRecording, QStringLiteral("%1 is not being recorded").arg(path));
    }
    return finish(repair::addMark(path, arguments.join(QLatin1Char(' '))));
}

int runRecover(const QCommandLineParser& /*options*/, const QStringList& arguments)
{
    return finish(repair::recover(arguments.first()));
}

int runMerge(const QCommandLineParser& options, const QStringList& arguments)
{
    const QString target = options.value(QStringLiteral("output"));
    if (target.isEmpty())
        return console::fail(WrongUsage, QStringLiteral("merge needs --output FILE"));
    return finish(repair::merge(arguments, target, QStringLiteral("quorvel-cli ") + applicationVersion()));
}

} // namespace

Command markCommand()
{
    Command command;
    command.name = QStringLiteral("mark");
    command.summary = QStringLiteral("Sets a mark in the running recording.");
    command.operands = {{QStringLiteral("TEXT..."), QStringLiteral("Text of the mark.")}};
    command.options = {{QStringLiteral("file"), QStringLiteral("The recording, when several are running."),
                        QStringLiteral("FILE")}};
    command.leastOperands = 1;
    command.mostOperands = std::numeric_limits<int>::max();
    command.run = &runMark;
    return command;
}

Command recoverCommand()
{
    Command command;
    command.name = QStringLiteral("recover");
    command.summary = QStringLiteral("Finishes a recording whose program ended without doing so.");
    command.operands = {{QStringLiteral("FILE"), QStringLiteral("A recording.")}};
    command.leastOperands = command.mostOperands = 1;
    command.run = &runRecover;
    return command;
}

Command mergeCommand()
{
    Command command;
    command.name = QStringLiteral("merge");
    command.summary = QStringLiteral("Joins recordings into a new one, in the order of their starts.");
    command.operands = {{QStringLiteral("FILE..."), QStringLiteral("Two or more recordings.")}};
    command.options = {outputOption(QStringLiteral("The new recording."))};
    command.leastOperands = 2;
    command.mostOperands = std::numeric_limits<int>::max();
    command.run = &runMerge;
    return command;
}

} // namespace cli
