// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/DeviceChangeMessage.h"
#include "tests/support/TestCase.h"
#include "tests/unit/system/ManagerFixture.h"

#include <QApplication>
#include <QtTest>

#include <optional>

using Reply = HttpFaultServer::Reply;

namespace {

/// Several processes start in a run, on machines that have other things to do.
constexpr int cPatienceMs = 30000;
const QStringList cNames{QStringLiteral("boot.bin"), QStringLiteral("logo.bin"),
                         QStringLiteral("f1c100s.bin")};

QByteArray imageOf(const QString& name)
{
    return QByteArray(70000, name.at(0).toLatin1()) + name.toLatin1();
}

/// The flash tool: answers "version", keeps what it is told to write, prints the bar of a real run. \a
/// atWrite runs at the beginning of a write with the address in $3 and the image in $4.
QByteArray flashTool(const QByteArray& folder, const QByteArray& atWrite = ":")
{
    return "case $1 in\n"
           "version) echo 'AWUSBFEX soc=00001663(F1C100s) 00000001 ver=0001 44 08 scratchpad=00007e00';;\n"
           "-p) echo $$ > " +
           folder + "/tool.id\n" + atWrite +
           "\n"
           "printf '\\r 50%% [========        ]  99.0 kB/s, ETA 00:01 '\n"
           "cp \"$4\" " +
           folder +
           "/written-$3\n"
           "printf '\\r100%% [================]    68 kB,   99.0 kB/s\\n';;\n"
           "esac";
}

} // namespace

class SystemManagerUpgradeTest : public TestCase
{
    Q_OBJECT

private:
    std::optional<ManagerFixture> m_fixture;
    std::unique_ptr<QSignalSpy> m_finished;

    QByteArray folder() const { return QFile::encodeName(m_fixture->scripts.path(QString())); }

    QStringList urls() const
    {
        QStringList urls;
        for (const QString& name : cNames)
            urls.append(m_fixture->server.url(QStringLiteral("/f1/") + name));
        return urls;
    }

    void addTool(const QByteArray& atWrite = ":")
    {
        m_fixture->scripts.addRecorder(QStringLiteral("sunxi-fel"), flashTool(folder(), atWrite));
    }

    SystemManager& begin(const QStringList& files, const QStringList& names = cNames)
    {
        SystemManager& manager = m_fixture->startWithCatalogue(files, names);
        m_finished = std::make_unique<QSignalSpy>(&manager, &SystemManager::upgradeFinished);
        return manager;
    }

    SystemManager& begin() { return begin(urls()); }

    QByteArray written(const QByteArray& address) const
    {
        QFile file(m_fixture->scripts.path(QStringLiteral("written-") + QString::fromLatin1(address)));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    /// How often the tool was asked to write.
    int writes() const
    {
        const QList<QStringList> calls = m_fixture->scripts.calls(QStringLiteral("sunxi-fel"));
        return int(std::count_if(calls.cbegin(), calls.cend(),
                                 [](const QStringList& call) { return call.value(1) == "spiflash-write"; }));
    }

    /// The run ends once, with \a ok, and nothing follows.
    void verifyEnds(bool ok)
    {
        QTRY_COMPARE_WITH_TIMEOUT(m_finished->count(), 1, cPatienceMs);
        QCOMPARE(m_finished->at(0).at(0).toBool(), ok);
        // The next run is accepted: the last one has left nothing behind that says it still runs.
        m_fixture->messages.clear();
        m_fixture->services.flashToolPath = nullptr;
        m_fixture->manager->startUpgrade(QStringLiteral("no such type"));
        QVERIFY(!m_fixture->messages.contains(QStringLiteral("An upgrade is already running.")));
        QCOMPARE(m_finished->count(), 1);
    }

private Q_SLOTS:
    void init()
    {
        TestCase::init();
        m_fixture.emplace();
        addTool();
        for (const QString& name : cNames) {
            Reply reply;
            reply.body = imageOf(name);
            m_fixture->server.setReply("/f1/" + name.toLatin1(), reply);
        }
    }

    void cleanup()
    {
        m_finished.reset();
        m_fixture.reset();
        TestCase::cleanup();
    }

    void wholeUpgrade()
    {
        begin();
        QFile old(ManagerFixture::cacheDir() + QStringLiteral("/old.bin"));
        QVERIFY(QDir().mkpath(ManagerFixture::cacheDir()) && old.open(QIODevice::WriteOnly));
        m_fixture->manager->startUpgrade(QStringLiteral("F1"));
        QVERIFY(!old.exists());
        QTRY_COMPARE_WITH_TIMEOUT(m_finished->count(), 1, cPatienceMs);
        QVERIFY(m_finished->at(0).at(0).toBool());

        QCOMPARE(written("0x0"), imageOf(QStringLiteral("boot.bin")));
        QCOMPARE(written("0x6000"), imageOf(QStringLiteral("logo.bin")));
        QCOMPARE(written("0x50000"), imageOf(QStringLiteral("f1c100s.bin")));
        QCOMPARE(ManagerFixture::cached(), QStringList());

        const QString cache = ManagerFixture::cacheDir();
        const QString tool = m_fixture->scripts.path(QStringLiteral("sunxi-fel"));
        const QString command = QStringLiteral("Executing: %1 -p spiflash-write %2 %3/%4");
        QStringList narrated;
        for (const QString& message : qAsConst(m_fixture->messages)) {
            if (!message.startsWith(QLatin1String("Download: ")) && !message.contains(QLatin1Char('[')))
                narrated.append(message);
        }
        QCOMPARE(narrated,
                 (QStringList{"Downloaded: boot.bin", "Downloaded: logo.bin", "Downloaded: f1c100s.bin",
                              "Firmware download completed.", "Starting MCU firmware flashing.",
                              command.arg(tool, "0x0", cache, "boot.bin"), "BOOT completed.",
                              command.arg(tool, "0x6000", cache, "logo.bin"), "LOGO completed.",
                              command.arg(tool, "0x50000", cache, "f1c100s.bin"), "EXEC completed.",
                              "Upgrade completed."}));
        QVERIFY(m_fixture->messages.contains(QStringLiteral("Download: logo.bin 100%")));
        QVERIFY(m_fixture->logHas(QStringLiteral("download finished: url=%1 error=0(Unknown error) bytes=%2")
                                      .arg(urls().at(1), QString::number(imageOf(cNames.at(1)).size()))));
    }

    void progressRises()
    {
        begin();
        m_fixture->manager->startUpgrade(QStringLiteral("F1"));
        QTRY_COMPARE_WITH_TIMEOUT(m_finished->count(), 1, cPatienceMs);
        QCOMPARE(m_fixture->progress.first(), 0);
        QCOMPARE(m_fixture->progress.last(), 100);
        // A download report is also a message with a percentage, which counts 0 before the flashing begins.
        QList<int> values = m_fixture->progress;
        values.removeAll(0);
        QVERIFY(std::is_sorted(values.cbegin(), values.cend()));
        for (const int value : {10, 20, 30, 40, 60, 85, 100})
            QVERIFY2(values.contains(value), qPrintable(QString::number(value)));
    }

    void brokenDownloadNeverReachesTheTool_data()
    {
        QTest::addColumn<QString>("fault");
        for (const char* fault : {"404", "500 with a body", "302", "truncated", "stalled", "mute", "drip",
                                  "empty", "garbage", "refused", "huge", "no HTTP address", "local file",
                                  "name of a folder", "name with a backslash", "cannot be saved"})
            QTest::newRow(fault) << QString::fromLatin1(fault);
    }

    void brokenDownloadNeverReachesTheTool()
    {
        QFETCH(QString, fault);
        QStringList files = urls();
        Reply reply;
        reply.body = imageOf(cNames.at(1));
        m_fixture->timings.downloadStallMs = 1000;
        m_fixture->timings.downloadTimeoutMs = 3000;
        bool folderInTheWay = false;
        if (fault == QLatin1String("404")) {
            files[1] = m_fixture->server.url(QStringLiteral("/missing/logo.bin"));
        } else if (fault == QLatin1String("500 with a body")) {
            reply.status = 500;
        } else if (fault == QLatin1String("302")) {
            reply.status = 302;
            reply.headers = "Location: " + files.first().toLatin1() + "\r\n";
        } else if (fault == QLatin1String("truncated")) {
            reply.sendBytes = 5000;
        } else if (fault == QLatin1String("stalled")) {
            reply.sendBytes = 5000;
            reply.after = Reply::After::Stall;
        } else if (fault == QLatin1String("mute")) {
            reply.mute = true;
        } else if (fault == QLatin1String("drip")) {
            reply.pieceBytes = 1;
            reply.pauseMs = 50;
        } else if (fault == QLatin1String("empty")) {
            reply.body.clear();
        } else if (fault == QLatin1String("garbage")) {
            reply.raw = "\x16\x03\x01 this is no HTTP\r\n\r\n" + imageOf(cNames.at(1));
        } else if (fault == QLatin1String("refused")) {
            files[1] = QStringLiteral("http://127.0.0.1:1/logo.bin");
        } else if (fault == QLatin1String("huge")) {
            reply.length = 300LL * 1024 * 1024 * 1024;
            reply.after = Reply::After::Stall;
        } else if (fault == QLatin1String("no HTTP address")) {
            files[1] = QStringLiteral("logo.bin");
        } else if (fault == QLatin1String("local file")) {
            files[1] = QStringLiteral("file:///etc/passwd");
        } else if (fault == QLatin1String("name of a folder")) {
            files[1] = m_fixture->server.url(QStringLiteral("/f1/.."));
        } else if (fault == QLatin1String("name with a backslash")) {
            files[1] = m_fixture->server.url(QStringLiteral("/f1/..%5Clogo.bin"));
        } else {
            folderInTheWay = true;
        }
        m_fixture->server.setReply("/f1/logo.bin", reply);
        if (folderInTheWay)
            QVERIFY(QDir().mkpath(ManagerFixture::cacheDir() + QStringLiteral("/logo.bin/in the way")));

        begin(files);
        m_fixture->manager->startUpgrade(QStringLiteral("F1"));
        QTRY_COMPARE_WITH_TIMEOUT(m_finished->count(), 1, cPatienceMs);
        QCOMPARE(m_finished->at(0).at(0).toBool(), false);
        QCOMPARE(writes(), 0);
        QVERIFY(m_fixture->messages.last().startsWith(QStringLiteral("Failed to save firmware file: ") +
                                                      ManagerFixture::cacheDir()));
        // Nothing is left of the broken file, under no name.
        QStringList left = ManagerFixture::cached();
        if (folderInTheWay)
            left.removeOne(QStringLiteral("logo.bin"));
        QCOMPARE(left, QStringList{"boot.bin"});
        QVERIFY(m_fixture->server.requestCount("/f1/f1c100s.bin") == 0);
    }

    void lengthMayBeMissing()
    {
        Reply reply;
        reply.body = imageOf(cNames.at(0));
        reply.length = Reply::NoLength;
        m_fixture->server.setReply("/f1/boot.bin", reply);
        begin();
        m_fixture->manager->startUpgrade(QStringLiteral("F1"));
        QTRY_COMPARE_WITH_TIMEOUT(m_finished->count(), 1, cPatienceMs);
        QVERIFY(m_finished->at(0).at(0).toBool());
        QCOMPARE(written("0x0"), imageOf(cNames.at(0)));
        // How far the file is shows only when it is there.
        QCOMPARE(m_fixture->messages.filter(QStringLiteral("Download: boot.bin")),
                 QStringList{"Download: boot.bin 100%"});
    }

    /// Devices come and go while the tool writes: the controller is asked only afterwards, and until then what
    /// it said before counts.
    void nobodyTalksToTheControllerMeanwhile()
    {
        addTool("[ $3 = 0x6000 ] && while [ ! -e " + folder() + "/go ]; do sleep 0.01; done");
        SystemManager& manager = begin();
        manager.startUpgrade(QStringLiteral("F1"));
        QTRY_VERIFY_WITH_TIMEOUT(m_fixture->messages.contains(QStringLiteral("BOOT completed.")),
                                 cPatienceMs);
        platform::WindowsMessage message{nullptr, platform::cWmDeviceChange, platform::cDevNodesChanged, 0};
        manager.nativeEventFilter("windows_generic_MSG", &message, nullptr);
        QTRY_VERIFY(m_fixture->logHas(
            QStringLiteral("requestConnectionStateRefresh completed: usbConnected=1 felReady=1")));
        QVERIFY(manager.felReady());
        const auto questions = [this] {
            return m_fixture->scripts.calls(QStringLiteral("sunxi-fel")).count(QStringList{"version"});
        };
        QCOMPARE(questions(), 1);
        m_fixture->scripts.add(QStringLiteral("go"), ":");
        QTRY_COMPARE_WITH_TIMEOUT(m_finished->count(), 1, cPatienceMs);
        QTRY_COMPARE_WITH_TIMEOUT(questions(), 2, cPatienceMs);
    }

    void flashingFails_data()
    {
        QTest::addColumn<QByteArray>("atWrite");
        QTest::addColumn<int>("attempts");
        const QByteArray at = "[ $3 = %1 ] && { %2; }";
        const auto when = [&at](const char* address, const char* what) {
            return QByteArray(at).replace("%1", address).replace("%2", what);
        };
        QTest::newRow("boot, exit 1")
            << when("0x0", "echo 'ERROR: Allwinner USB FEL device not found!' >&2; exit 1") << 1;
        QTest::newRow("logo, exit 2")
            << when("0x6000", "echo 'usb_bulk_send() ERROR -7: Operation timed out'; exit 2") << 2;
        QTest::newRow("exec, exit 1") << when("0x50000", "exit 1") << 3;
        QTest::newRow("logo, killed") << when("0x6000", "kill -9 $$") << 2;
        QTest::newRow("boot, hangs") << when("0x0", "exec sleep 60") << 1;
        QTest::newRow("exec, hangs after a while")
            << when("0x50000", "printf '\\r  6%% [=  ]'; exec sleep 60") << 3;
        QTest::newRow("boot, flash not found, exit 0")
            << when("0x0", "echo 'No SPI flash detected.'; exit 0") << 1;
        QTest::newRow("logo, tool vanishes") << when("0x0", "rm \"$0\"") << 1;
    }

    void flashingFails()
    {
        QFETCH(QByteArray, atWrite);
        addTool(atWrite);
        if (atWrite.contains("sleep"))
            m_fixture->timings.flashSilenceMs = 1500;
        begin();
        m_fixture->manager->startUpgrade(QStringLiteral("F1"));
        QTRY_COMPARE_WITH_TIMEOUT(m_finished->count(), 1, cPatienceMs);
        QCOMPARE(m_finished->at(0).at(0).toBool(), false);
        QCOMPARE(m_fixture->messages.last(), QStringLiteral("Upgrade failed."));
        QTEST(writes(), "attempts");
        QVERIFY(!test::processRuns(test::processIdIn(m_fixture->scripts.path(QStringLiteral("tool.id")))));
        verifyEnds(false);
    }

    void imageOfAStageIsMissing()
    {
        begin(urls().mid(0, 2), cNames.mid(0, 2));
        m_fixture->manager->startUpgrade(QStringLiteral("F1"));
        QTRY_COMPARE_WITH_TIMEOUT(m_finished->count(), 1, cPatienceMs);
        QCOMPARE(m_fixture->messages.last(),
                 QStringLiteral("Firmware file missing: ") + ManagerFixture::cacheDir() + "/f1c100s.bin");
        QCOMPARE(writes(), 2);
        verifyEnds(false);
    }

    void bootNameCannotLeaveTheCache()
    {
        begin(urls(), {QStringLiteral("../../../../boot.bin"), cNames.at(1), cNames.at(2)});
        m_fixture->manager->startUpgrade(QStringLiteral("F1"));
        QTRY_COMPARE_WITH_TIMEOUT(m_finished->count(), 1, cPatienceMs);
        QCOMPARE(writes(), 0);
        verifyEnds(false);
    }

    void refusals()
    {
        SystemManager& manager = begin();
        manager.startUpgrade(QStringLiteral("F2"));
        QVERIFY(m_fixture->logHas(
            QStringLiteral("startUpgrade aborted: firmware type not found. knownTypes=F1")));
        m_fixture->scripts.add(QStringLiteral("sunxi-fel"), "echo awusbfex; exit 0");
        manager.startUpgrade(QStringLiteral("F1"));
        QCOMPARE(m_fixture->messages,
                 QStringList{"FEL device not detected. Connect USB and hold the FEL key."});
        QCOMPARE(m_fixture->progress, (QList<int>{0, 0}));
        QCOMPARE(m_finished->count(), 0);
        // Neither keeps the next one out.
        addTool();
        manager.startUpgrade(QStringLiteral("F1"));
        QTRY_COMPARE_WITH_TIMEOUT(m_finished->count(), 1, cPatienceMs);
        QVERIFY(m_finished->at(0).at(0).toBool());
    }

    void secondUpgradeIsRefused()
    {
        addTool("[ $3 = 0x6000 ] && while [ ! -e " + folder() + "/go ]; do sleep 0.01; done");
        SystemManager& manager = begin();
        // From the first progress value to the middle of the flashing: in the check, the pause, a download.
        int refused = 0;
        connect(&manager, &SystemManager::progressChanged, &manager, [&manager, &refused] {
            if (refused++ < 20)
                manager.startUpgrade(QStringLiteral("F1"));
        });
        manager.startUpgrade(QStringLiteral("F1"));
        QTRY_VERIFY_WITH_TIMEOUT(m_fixture->messages.contains(QStringLiteral("BOOT completed.")),
                                 cPatienceMs);
        manager.startUpgrade(QStringLiteral("F1"));
        QCOMPARE(m_fixture->messages.count(QStringLiteral("An upgrade is already running.")), refused + 1);
        m_fixture->scripts.add(QStringLiteral("go"), ":");
        QTRY_COMPARE_WITH_TIMEOUT(m_finished->count(), 1, cPatienceMs);
        QVERIFY(m_finished->at(0).at(0).toBool());
        QCOMPARE(writes(), 3);
    }

    /// The application quits while the tool writes: the log says so while there still is one.
    void quittingWhileWriting()
    {
        const QString id = m_fixture->scripts.path(QStringLiteral("hanging.id"));
        addTool("echo $$ > " + QFile::encodeName(id) + "; exec sleep 60");
        SystemManager& manager = begin();
        QTimer watch;
        connect(&watch, &QTimer::timeout, this, [&id] {
            if (test::processIdIn(id) > 0)
                QCoreApplication::quit();
        });
        watch.start(5);
        QTimer::singleShot(0, &manager, [&manager] { manager.startUpgrade(QStringLiteral("F1")); });
        QCoreApplication::exec();
        QCOMPARE(m_finished->count(), 1);
        QCOMPARE(m_finished->at(0).at(0).toBool(), false);
        QVERIFY(!test::processRuns(test::processIdIn(id)));
        QCOMPARE(
            m_fixture->log().filter(QStringLiteral("logMessage: Upgrade cut off while writing: ")).size(), 1);
        // Nothing is begun after that.
        manager.startUpgrade(QStringLiteral("F1"));
        manager.requestMcuTypes(QString());
        manager.installFelDriver();
        QCOMPARE(manager.exportLogsArchive(), QString());
        QCOMPARE(m_finished->count(), 1);
    }

    /// The object goes away in the middle: one end, nothing left running, nothing half-written.
    void closing_data()
    {
        QTest::addColumn<QString>("moment");
        QTest::addColumn<bool>("ok");
        QTest::newRow("pause before the downloads") << "pause" << false;
        QTest::newRow("download") << "download" << false;
        QTest::newRow("boot") << "0x0" << false;
        QTest::newRow("exec") << "0x50000" << false;
        QTest::newRow("pause after the last image") << "written" << true;
    }

    void closing()
    {
        QFETCH(QString, moment);
        QFETCH(bool, ok);
        const QString id = m_fixture->scripts.path(QStringLiteral("hanging.id"));
        if (moment.startsWith(QLatin1String("0x")))
            addTool("[ $3 = " + moment.toLatin1() + " ] && { echo $$ > " + QFile::encodeName(id) +
                    "; exec sleep 60; }");
        Reply stalled;
        stalled.body = imageOf(cNames.at(1));
        stalled.sendBytes = 1000;
        stalled.after = Reply::After::Stall;
        if (moment == QLatin1String("download"))
            m_fixture->server.setReply("/f1/logo.bin", stalled);
        m_fixture->timings.pauseBeforeDownloadsMs = moment == QLatin1String("pause") ? 60000 : 1;
        m_fixture->timings.pauseAfterFlashingMs = 60000;
        begin();
        QStringList order;
        connect(m_fixture->manager.get(), &SystemManager::logMessage, this,
                [&order](const QString& message) { order.append(message); });
        connect(m_fixture->manager.get(), &SystemManager::upgradeFinished, this, [&order](bool success) {
            order.append(success ? QStringLiteral("true") : QStringLiteral("false"));
        });

        // The pauses run an event loop inside the call: the object dies in there.
        const auto reached = [this, &moment, &id] {
            if (moment == QLatin1String("pause"))
                return true;
            if (moment == QLatin1String("download"))
                return m_fixture->server.requestCount("/f1/logo.bin") > 0;
            if (moment == QLatin1String("written"))
                return m_fixture->messages.contains(QStringLiteral("Upgrade completed."));
            return test::processIdIn(id) > 0;
        };
        QTimer watch;
        connect(&watch, &QTimer::timeout, this, [this, &watch, &reached] {
            if (!reached())
                return;
            watch.stop();
            m_fixture->manager.reset();
        });
        watch.start(5);
        m_fixture->manager->startUpgrade(QStringLiteral("F1"));
        QTRY_VERIFY_WITH_TIMEOUT(m_fixture->manager == nullptr, cPatienceMs);

        QCOMPARE(order.last(), ok ? QStringLiteral("true") : QStringLiteral("false"));
        QCOMPARE(order.count(QStringLiteral("true")) + order.count(QStringLiteral("false")), 1);
        if (!ok)
            QVERIFY(order.at(order.size() - 2).startsWith(QStringLiteral("Upgrade cut off ")));
        if (QFile::exists(id))
            QVERIFY(!test::processRuns(test::processIdIn(id)));
        QVERIFY(!ManagerFixture::cached().contains(QStringLiteral("logo.bin")) ||
                moment == QLatin1String("0x50000") || moment == QLatin1String("0x0"));
        QVERIFY(ManagerFixture::cached().filter(QStringLiteral(".bin.")).isEmpty());
    }
};

QUORVEL_TEST_MAIN(SystemManagerUpgradeTest, QApplication)
#include "tst_SystemManagerUpgrade.moc"
