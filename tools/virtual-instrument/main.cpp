// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/virtual-instrument/ChildProcess.h"
#include "tools/virtual-instrument/ControlChannel.h"
#include "tools/virtual-instrument/InstrumentPlayer.h"
#include "tools/virtual-instrument/MockDevice.h"
#include "tools/virtual-instrument/RecordingPlayback.h"
#include "tools/virtual-instrument/Scenario.h"
#include "tools/virtual-instrument/StopSignals.h"
#include "tools/virtual-instrument/TraceFile.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <cstdio>
#include <cstring>
#include <memory>
#include <unistd.h>
#include <vector>

namespace {

constexpr char cWrapper[] = "umockdev-wrapper";
constexpr char cPreloadName[] = "libumockdev-preload";
constexpr char cControlVariable[] = "VIRTUAL_INSTRUMENT_CONTROL";
constexpr int cUsageError = 2;
constexpr int cCannotRun = 127;
constexpr int cSignalExitBase = 128;

const QString& scenarioFolder()
{
    static const QString folder = QStringLiteral(":/scenarios");
    return folder;
}

void printError(const QString& text)
{
    std::fprintf(stderr, "virtual-instrument: %s\n", qPrintable(text));
}

/// Replaces this process by itself under umockdev's wrapper; returns only when that fails.
void restartUnderWrapper(char** argv)
{
    // A sanitizer's runtime must be loaded first, but the wrapper's library is.
    const QByteArray sanitizer = qgetenv("ASAN_OPTIONS");
    qputenv("ASAN_OPTIONS", "verify_asan_link_order=0" + (sanitizer.isEmpty() ? sanitizer : ':' + sanitizer));
    std::vector<char*> arguments{const_cast<char*>(cWrapper)};
    for (char** argument = argv; *argument != nullptr; ++argument)
        arguments.push_back(*argument);
    arguments.push_back(nullptr);
    execvp(cWrapper, arguments.data());
}

QString helpText()
{
    return QStringLiteral(
               "Runs a program with a virtual instrument (USB HID 0483:5750) on its USB bus and ends with "
               "the\n"
               "program's exit status.\n\n"
               "Example: virtual-instrument -- ./quorvel\n\n"
               "A scenario is a text file with one step per line, a time in seconds and a command:\n"
               "  2.5 unplug      # 2.5 seconds after the start\n"
               "  +3 replug       # 3 seconds after the step before\n"
               "  60 repeat       # start again\n"
               "The control socket takes the same commands, one per line, without a time.\n\n"
               "Commands:\n%1\nScenarios that come with the program: %2.")
        .arg(commandHelp(), QDir(scenarioFolder()).entryList().join(QStringLiteral(", ")));
}

/// Reads the scenario \a name, a file or a built-in one. Returns the error, or an empty text.
QString readScenario(const QString& name, Scenario* scenario)
{
    const QString shipped = scenarioFolder() + QLatin1Char('/') + name;
    QFile file(QFile::exists(name) ? name : shipped);
    if (!file.open(QIODevice::ReadOnly))
        return QStringLiteral("there is no scenario \"%1\"").arg(name);
    QString error;
    *scenario = Scenario::parse(QString::fromUtf8(file.readAll()), &error);
    return error.isEmpty() ? error : QStringLiteral("%1, %2").arg(name, error);
}

struct Options
{
    Scenario scenario;
    QString controlPath;
    QString tracePath;
    /// Null when the bench is played.
    std::unique_ptr<RecordingPlayback> playback;
    double speed = 1;
    QStringList program;
};

/// Opens the recording \a path to be played at \a speed. Returns the error, or an empty text.
QString readPlayback(const QString& path, const QString& speed, Options* options)
{
    constexpr double cLowestSpeed = 0.01;
    constexpr double cHighestSpeed = 1000;
    bool isNumber = false;
    options->speed = speed.toDouble(&isNumber);
    if (!isNumber || !(options->speed >= cLowestSpeed && options->speed <= cHighestSpeed))
        return QStringLiteral("the speed is a number from %1 to %2").arg(cLowestSpeed).arg(cHighestSpeed);
    if (path.isEmpty())
        return {};
    options->playback = std::make_unique<RecordingPlayback>();
    return recording::errorText(options->playback->open(path));
}

/// Reads the command line. Ends the process for --help and for an invalid option.
Options readOptions(const QCoreApplication& app)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(helpText());
    parser.addHelpOption();
    const QCommandLineOption scenario(QStringLiteral("scenario"),
                                      QStringLiteral("Play this scenario, a file or one of the names below."),
                                      QStringLiteral("name"), QStringLiteral("bench"));
    const QCommandLineOption control(
        QStringLiteral("control"),
        QStringLiteral("Take commands on this UNIX socket; \"auto\" for one that only the "
                       "program is told of, in VIRTUAL_INSTRUMENT_CONTROL."),
        QStringLiteral("path"));
    const QCommandLineOption trace(QStringLiteral("trace"),
                                   QStringLiteral("Write what the host sends and does to this file."),
                                   QStringLiteral("path"));
    const QCommandLineOption replay(QStringLiteral("replay"),
                                    QStringLiteral("Send what this recording holds instead of a bench."),
                                    QStringLiteral("file"));
    const QCommandLineOption speed(QStringLiteral("speed"),
                                   QStringLiteral("Replay this many times as fast, 0.01 to 1000."),
                                   QStringLiteral("factor"), QStringLiteral("1"));
    parser.addOptions({scenario, control, trace, replay, speed});
    parser.addPositionalArgument(QStringLiteral("program"), QStringLiteral("The program to run."),
                                 QStringLiteral("-- program [arguments…]"));
    parser.process(app);

    Options options;
    options.controlPath = parser.value(control);
    options.tracePath = parser.value(trace);
    options.program = parser.positionalArguments();
    QString error = readScenario(parser.value(scenario), &options.scenario);
    if (error.isEmpty())
        error = readPlayback(parser.value(replay), parser.value(speed), &options);
    if (error.isEmpty() && options.program.isEmpty())
        error = QStringLiteral("name the program to run after --");
    if (!error.isEmpty()) {
        printError(error);
        std::exit(cUsageError);
    }
    return options;
}

} // namespace

int main(int argc, char** argv)
{
    const char* preloaded = std::getenv("LD_PRELOAD");
    if (preloaded == nullptr || std::strstr(preloaded, cPreloadName) == nullptr) {
        restartUnderWrapper(argv);
        printError(QStringLiteral("umockdev-wrapper cannot be started: %1 (Debian package umockdev)")
                       .arg(QString::fromLocal8Bit(strerror(errno))));
        return cCannotRun;
    }

    const QCoreApplication app(argc, argv);
    Options options = readOptions(app);

    TraceFile trace;
    if (!options.tracePath.isEmpty() && !trace.open(options.tracePath)) {
        printError(QStringLiteral("the trace %1 cannot be written").arg(options.tracePath));
        return cUsageError;
    }
    MockDevice device;
    if (!device.isValid()) {
        printError(QStringLiteral("the mock USB bus cannot be made, umockdev's library is not loaded"));
        return cCannotRun;
    }
    InstrumentPlayer player(&device, &trace);
    ControlChannel control(&player);
    const QTemporaryDir ownFolder;
    if (!options.controlPath.isEmpty()) {
        const QString path = options.controlPath == QStringLiteral("auto")
                                 ? ownFolder.filePath(QStringLiteral("control"))
                                 : QFileInfo(options.controlPath).absoluteFilePath();
        const QString fault = control.listen(path);
        if (!fault.isEmpty()) {
            printError(QStringLiteral("the control socket %1 cannot be made: %2").arg(path, fault));
            return cUsageError;
        }
        qputenv(cControlVariable, QFile::encodeName(path));
    }

    ChildProcess child;
    const StopSignals stopSignals;
    const auto leave = [&child](int exitCode) {
        child.disconnect();
        child.end();
        QCoreApplication::exit(exitCode);
    };
    QObject::connect(&stopSignals, &StopSignals::stopRequested, &child,
                     [leave](int number) { leave(cSignalExitBase + number); });
    QObject::connect(&player, &InstrumentPlayer::exitRequested, &child, leave);
    QObject::connect(&child, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), &child,
                     [&child, leave] {
                         if (child.leftProcessesBehind())
                             printError(QStringLiteral("the program left processes behind"));
                         leave(child.shellExitCode());
                     });
    if (options.playback)
        player.setPlayback(std::move(options.playback), options.speed);
    player.start(options.scenario);
    if (!child.run(options.program)) {
        printError(
            QStringLiteral("%1 cannot be started: %2").arg(options.program.first(), child.errorString()));
        return cCannotRun;
    }
    return QCoreApplication::exec();
}
