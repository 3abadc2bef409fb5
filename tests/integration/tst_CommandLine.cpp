// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/Duration.h"
#include "cli/ExitCode.h"
#include "recording/RecordingReader.h"
#include "recording/RecordingRepair.h"
#include "storage/SettingsFile.h"
#include "tests/integration/InstrumentControl.h"
#include "tests/support/TestCase.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>

#include <csignal>

using namespace std::chrono_literals;

namespace {

constexpr int cTimeoutMs = 60'000;

struct Outcome
{
    int code = -1;
    QByteArray output;
    QByteArray errors;
};

Outcome finish(QProcess& process)
{
    if (!QTest::qWaitFor([&process] { return process.state() == QProcess::NotRunning; }, cTimeoutMs))
        return {};
    return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
            process.readAllStandardOutput(), process.readAllStandardError()};
}

Outcome run(const QStringList& arguments)
{
    QProcess process;
    process.start(QStringLiteral(QUORVEL_CLI), arguments);
    return finish(process);
}

QJsonObject lastObject(const QByteArray& lines)
{
    return QJsonDocument::fromJson(lines.trimmed().split('\n').last()).object();
}

} // namespace

/// The program without a window, on the real hidapi and a device node.
class CommandLineTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void durations_data();
    void durations();
    void wrongUsage_data();
    void wrongUsage();
    void everyCommandHasHelp();
    void listsInstruments();
    void watchPrintsWhatWasAskedFor();
    void recordsEveryMeasurementOverAnUnplug();
    void exitCodesOfFiles();
    void screensFunctionsAndCurvesReachTheInstrument();
    void flashesFiles();

private:
    bool ok(const QString& command) { return m_instrument.ask(command).startsWith(QLatin1String("ok")); }
    QString path(const char* name) const { return m_folder->filePath(QLatin1String(name)); }

    InstrumentControl m_instrument;
    std::unique_ptr<QTemporaryDir> m_folder;
};

void CommandLineTest::initTestCase()
{
    QVERIFY2(m_instrument.connectToInstrument(), "run this program under the virtual instrument");
}

void CommandLineTest::init()
{
    TestCase::init();
    m_folder = std::make_unique<QTemporaryDir>();
}

void CommandLineTest::durations_data()
{
    const test::Table<QString, qint64> table("text", "milliseconds");
    table.row("seconds", "90", 90'000);
    table.row("fraction", "1.5h", 5'400'000);
    table.row("sum", "8h30m", 30'600'000);
    table.row("milliseconds", "200ms", 200);
    table.row("days", "7d", 604'800'000);
    for (const char* const text : {"", "h", "5 m", "-5m", "5x", "1e9", "99999d", "5m3", "1,5h"})
        table.row(text[0] == 0 ? "nothing" : text, QString::fromLatin1(text), -1);
}

void CommandLineTest::durations()
{
    QFETCH(const QString, text);
    const auto time = cli::parseDuration(text);
    QTEST(time ? static_cast<qint64>(time->count() / 1000) : qint64(-1), "milliseconds");
}

void CommandLineTest::wrongUsage_data()
{
    const test::Table<QStringList> table("arguments");
    table.row("no command", {});
    table.row("unknown command", {"fly"});
    table.row("unknown option", {"list", "--fast"});
    table.row("missing operand", {"info"});
    table.row("too many operands", {"recover", "a", "b"});
    table.row("no time", {"record", "--for", "long"});
    table.row("no current", {"record", "--until-current-below", "0.05V"});
    table.row("no supply", {"record", "--supply", "both"});
    table.row("no field", {"watch", "--fields", "main_voltage,colour"});
    table.row("no screen", {"screen", "5"});
    table.row("no function", {"function", "ohm"});
    table.row("two formats", {"export", "--csv", "--jsonl", "a"});
    table.row("merge into nothing", {"merge", "a", "b"});
    table.row("unknown operation", {"curve", "fetch", "a"});
    table.row("two of three images", {"flash", "--boot", "a", "--logo", "b"});
    table.row("a type and an image", {"flash", "F1", "--boot", "a"});
}

void CommandLineTest::wrongUsage()
{
    QFETCH(const QStringList, arguments);
    const Outcome outcome = run(arguments);
    QCOMPARE(outcome.code, int(cli::WrongUsage));
    QVERIFY(outcome.output.isEmpty());
    // One message without colours: this is no terminal.
    QVERIFY(outcome.errors.startsWith("quorvel-cli: ") && outcome.errors.count('\n') == 1 &&
            !outcome.errors.contains('\x1b'));
}

void CommandLineTest::everyCommandHasHelp()
{
    const Outcome overview = run({"--help"});
    QCOMPARE(overview.code, 0);
    int commands = 0;
    const QList<QByteArray> lines = overview.output.split('\n');
    for (const QByteArray& line : lines) {
        if (!line.startsWith("  "))
            continue;
        ++commands;
        const QString command = QString::fromLatin1(line.trimmed().split(' ').first());
        const Outcome help = run({command, "--help"});
        QCOMPARE(help.code, 0);
        QVERIFY(help.output.startsWith("Usage: quorvel-cli " + command.toLatin1() + ' '));
    }
    QVERIFY(commands >= 11);
}

void CommandLineTest::listsInstruments()
{
    const Outcome outcome = run({"list", "--json"});
    QCOMPARE(outcome.code, 0);
    QCOMPARE(lastObject(outcome.output)["state"].toString(), QStringLiteral("free"));
    QVERIFY(ok("unplug"));
    for (const QStringList& arguments :
         {QStringList{"list"}, {"watch"}, {"record", path("a.qrec")}, {"screen", "1"}})
        QCOMPARE(run(arguments).code, int(cli::NoInstrument));
    QVERIFY(QDir(m_folder->path()).isEmpty());
    QVERIFY(ok("replug"));
}

void CommandLineTest::watchPrintsWhatWasAskedFor()
{
    QProcess process;
    process.start(QStringLiteral(QUORVEL_CLI), {"watch", "--fields", "main_current,main_voltage", "--json"});
    QVERIFY(QTest::qWaitFor([&process] { return process.canReadLine(); }, cTimeoutMs));
    const QJsonObject object = QJsonDocument::fromJson(process.readLine()).object();
    QCOMPARE(object.keys(), (QStringList{"main_current", "main_voltage", "time_s"}));
    QVERIFY(object["main_voltage"].toDouble() > 4);
    // Ctrl+C is its proper end.
    ::kill(static_cast<pid_t>(process.processId()), SIGINT);
    QCOMPARE(finish(process).code, 0);
}

void CommandLineTest::recordsEveryMeasurementOverAnUnplug()
{
    QVERIFY(ok("unplug"));
    QVERIFY(ok("set typeCMah 0"));
    QProcess process;
    process.start(QStringLiteral(QUORVEL_CLI), {"record", path("a.qrec"), "--wait", "--json"});
    QVERIFY(ok("replug"));
    const auto rowsSoFar = [this] {
        RecordingReader reader;
        return reader.open(path("a.qrec")) ? reader.info().rows : 0;
    };
    QVERIFY(QTest::qWaitFor([&] { return rowsSoFar() > 0; }, cTimeoutMs));
    QVERIFY(ok("burst 3000 1000"));
    QVERIFY(ok("drain"));
    QCOMPARE(run({"mark", "after", "the", "burst"}).code, 0);
    // The name is taken, and the running recording is protected.
    QCOMPARE(run({"record", path("a.qrec")}).code, int(cli::Exists));
    QCOMPARE(run({"recover", path("a.qrec")}).code, int(cli::Busy));
    QCOMPARE(lastObject(run({"info", path("a.qrec"), "--json"}).output)["state"].toString(),
             QStringLiteral("running"));
    QVERIFY(ok("unplug"));
    QVERIFY(ok("replug"));
    const qint64 before = rowsSoFar();
    QVERIFY(QTest::qWaitFor([&] { return rowsSoFar() > before + 100; }, cTimeoutMs));
    ::kill(static_cast<pid_t>(process.processId()), SIGTERM);
    const Outcome outcome = finish(process);
    QCOMPARE(outcome.code, 0);
    QVERIFY2(outcome.errors.isEmpty(), outcome.errors.constData());

    RecordingReader reader;
    QVERIFY(reader.open(path("a.qrec")));
    QCOMPARE(reader.info().endReason, recording::EndReason::Stopped);
    QCOMPARE(lastObject(outcome.output)["rows"].toDouble(), double(reader.info().rows));
    int number = 0;
    QVERIFY(reader.measurements({}, [&number](const recording::Measurement& measurement) {
        if (number < 3000 && measurement.values.typeCMah == static_cast<float>(number + 1))
            ++number;
        return true;
    }));
    QCOMPARE(number, 3000);
    QCOMPARE(reader.marks().at(0).text, QStringLiteral("after the burst"));
    const std::vector<recording::Gap> gaps = reader.gaps();
    QVERIFY(std::any_of(gaps.cbegin(), gaps.cend(), [](const recording::Gap& gap) {
        return gap.reason == recording::GapReason::Unplugged && gap.to;
    }));
    QCOMPARE(run({"mark", "nothing runs"}).code, int(cli::NotRecording));
    QVERIFY(ok("auto"));

    // What is exported is what was recorded.
    QCOMPARE(run({"export", path("a.qrec"), "-o", path("a.csv")}).code, 0);
    QCOMPARE(run({"export", path("a.qrec"), "-o", path("a.csv")}).code, int(cli::Exists));
    const QList<QByteArray> lines = test::contentOf(path("a.csv")).split('\n');
    QCOMPARE(lines.size() - 2, int(reader.info().rows));
    QCOMPARE(lines.first().count(','), 14);
    const QByteArray jsonLines =
        run({"export", path("a.qrec"), "--jsonl", "--from", "1", "--to", "2", "--every", "100ms"}).output;
    QVERIFY(jsonLines.count('\n') <= 10 && lastObject(jsonLines)["time_s"].toDouble() < 2);
}

void CommandLineTest::exitCodesOfFiles()
{
    QVERIFY(test::writeFile(path("text.qrec"), "no recording"));
    const QList<QPair<QString, int>> files{{path("missing.qrec"), cli::NotFound},
                                           {path("text.qrec"), cli::NotARecording}};
    for (const auto& [file, code] : files) {
        for (const QString& command :
             {QStringLiteral("info"), QStringLiteral("export"), QStringLiteral("recover"),
              QStringLiteral("curve"), QStringLiteral("report")}) {
            const Outcome outcome = run({command, file});
            QCOMPARE(outcome.code, code);
            QCOMPARE(outcome.errors.count('\n'), 1);
            QVERIFY(outcome.output.isEmpty());
        }
    }
    QCOMPARE(run({"record", path("none/a.qrec")}).code, int(cli::NotFound));
    QCOMPARE(run({"record", path("text.qrec")}).code, int(cli::Exists));
    QCOMPARE(test::contentOf(path("text.qrec")), QByteArray("no recording"));
}

void CommandLineTest::screensFunctionsAndCurvesReachTheInstrument()
{
    QCOMPARE(run({"screen", "type-c"}).code, 0);
    QTRY_COMPARE_WITH_TIMEOUT(m_instrument.status("screen"), QStringLiteral("2"), cTimeoutMs);
    QCOMPARE(run({"function", "3"}).code, 0);
    QTRY_COMPARE_WITH_TIMEOUT(m_instrument.status("screen"), QStringLiteral("4"), cTimeoutMs);
    QCOMPARE(run({"record", path("c.qrec"), "--for", "1500ms", "--wait"}).code, 0);
    QCOMPARE(run({"curve", path("c.qrec"), "-o", path("c.json")}).code, 0);
    const QJsonArray samples =
        QJsonDocument::fromJson(test::contentOf(path("c.json"))).object()["voltage_samples"].toArray();
    QVERIFY(samples.size() > 5 && samples.size() < 25);
    const int before = m_instrument.status("host").toInt();
    QCOMPARE(run({"curve", "send", path("c.json")}).code, 0);
    QTRY_COMPARE_WITH_TIMEOUT(m_instrument.status("host").toInt() - before, (samples.size() + 13) / 14,
                              cTimeoutMs);
}

void CommandLineTest::flashesFiles()
{
    qputenv("PATH", QUORVEL_FLASH_STAND_IN_FOLDER ":" + qgetenv("PATH"));
    qputenv("QUORVEL_FLASH_IMAGE", path("flash.img").toLocal8Bit());
    qputenv("QUORVEL_FLASH_SPEED", "0");
    QStringList command{"flash", "--verify"};
    for (const QString& name : {QStringLiteral("boot"), QStringLiteral("logo"), QStringLiteral("exec")}) {
        QVERIFY(test::writeFile(path(qPrintable(name)), name.toLatin1().repeated(2000)));
        command << "--" + name << path(qPrintable(name));
    }
    QCOMPARE(run(command).code, int(cli::NoController));
    QVERIFY(ok("boot-controller plug"));
    const Outcome outcome = run(command);
    QCOMPARE(outcome.errors, QByteArray());
    QCOMPARE(outcome.output, QByteArray("The firmware is written and verified.\n"));
    const QByteArray flash = test::contentOf(path("flash.img"));
    QCOMPARE(flash.mid(0x50000, 8000), QByteArray("exec").repeated(2000));

    qputenv("QUORVEL_FLASH_FAIL_AT", "50");
    const Outcome failed = run(command);
    QCOMPARE(failed.code, int(cli::NotFlashed));
    QVERIFY2(failed.errors.contains("usb_bulk_send() ERROR"), failed.errors.constData());
    qunsetenv("QUORVEL_FLASH_FAIL_AT");
    SettingsFile settings;
    settings.setValue(setting::serverHost, "http://127.0.0.1");
    settings.setValue(setting::apiPort, 1);
    QCOMPARE(run({"flash", "F1"}).code, int(cli::NoServer));
    QVERIFY(ok("boot-controller unplug"));
}

QUORVEL_TEST_MAIN(CommandLineTest, QCoreApplication)
#include "tst_CommandLine.moc"
