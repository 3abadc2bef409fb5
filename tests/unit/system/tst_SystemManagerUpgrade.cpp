// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/DeviceChangeMessage.h"
#include "tests/unit/system/ManagerFixture.h"

#include <QApplication>
#include <QtTest>

using Reply = HttpFaultServer::Reply;

namespace {

/// Several processes start in a run, on machines that have other things to do.
constexpr int cPatienceMs = 30000;
const QStringList cNames{"boot.bin", "logo.bin", "f1c100s.bin"};

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

class SystemManagerUpgradeTest : public ManagerTestCase
{
    Q_OBJECT

private:
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
        m_fixture->scripts.addRecorder("sunxi-fel", flashTool(folder(), atWrite));
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
        return test::contentOf(
            m_fixture->scripts.path(QStringLiteral("written-") + QString::fromLatin1(address)));
    }

    /// How often the tool was asked to write.
    int writes() const
    {
        const QList<QStringList> calls = m_fixture->scripts.calls("sunxi-fel");
        return int(std::count_if(calls.cbegin(), calls.cend(),
                                 [](const QStringList& call) { return call.value(1) == "spiflash-write"; }));
    }

    /// Waits for the end of the run, which is  ok.
    void waitForEnd(bool ok)
    {
        QTRY_COMPARE_WITH_TIMEOUT(m_finished->count(), 1, cPatienceMs);
        QCOMPARE(m_finished->at(0).at(0).toBool(), ok);
    }

    void upgrade(bool ok)
    {
        m_fixture->manager->startUpgrade("F1");
        waitForEnd(ok);
    }

    /// The run has ended once, and nothing follows.
    void verifyEnded()
    {
        // The next run is accepted: the last one has left nothing behind that says it still runs.
        m_fixture->messages.clear();
        m_fixture->services.flashToolPath = nullptr;
        m_fixture->manager->startUpgrade("no such type");
        QVERIFY(!m_fixture->messages.contains(QStringLiteral("An upgrade is already running.")));
        QCOMPARE(m_finished->count(), 1);
    }

private Q_SLOTS:
    void init()
    {
        ManagerTestCase::init();
        addTool();
        for (const QString& name : cNames)
            m_fixture->server.setReply("/f1/" + name.toLatin1(), Reply::of(imageOf(name)));
    }

    void cleanup()
    {
        m_finished.reset();
        ManagerTestCase::cleanup();
    }

    void wholeUpgrade()
    {
        begin();
        QFile old(ManagerFixture::cacheDir() + QStringLiteral("/old.bin"));
        QVERIFY(QDir().mkpath(ManagerFixture::cacheDir()) && old.open(QIODevice::WriteOnly));
        m_fixture->manager->startUpgrade("F1");
        QVERIFY(!old.exists());
        waitForEnd(true);

        QCOMPARE(written("0x0"), imageOf("boot.bin"));
        QCOMPARE(written("0x6000"), imageOf("logo.bin"));
        QCOMPARE(written("0x50000"), imageOf("f1c100s.bin"));
        QCOMPARE(ManagerFixture::cached(), QStringList());

        const QString cache = ManagerFixture::cacheDir();
        const QString tool = m_fixture->scripts.path("sunxi-fel");
        const QString command = "Executing: %1 -p spiflash-write %2 %3/%4";
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
        const QString file("/f1/logo.bin");
        const test::Table<Reply, QString, bool> table("reply", "url", "folderInTheWay");
        const auto row = [&](const char* name, const auto& change) {
            table.row(name, Reply::of(imageOf(cNames.at(1)), change), file, false);
        };
        row("500 with a body", [](Reply& reply) { reply.status = 500; });
        row("302", [](Reply& reply) {
            reply.status = 302;
            reply.headers = "Location: /f1/boot.bin\r\n";
        });
        row("truncated", [](Reply& reply) { reply.sendBytes = 5000; });
        row("stalled", [](Reply& reply) {
            reply.sendBytes = 5000;
            reply.after = Reply::After::Stall;
        });
        row("mute", [](Reply& reply) { reply.mute = true; });
        row("drip", [](Reply& reply) {
            reply.pieceBytes = 1;
            reply.pauseMs = 50;
        });
        row("empty", [](Reply& reply) { reply.body.clear(); });
        row("garbage", [](Reply& reply) { reply.raw = "\x16\x03\x01 is no HTTP\r\n\r\n" + reply.body; });
        row("huge", [](Reply& reply) {
            reply.length = 300LL * 1024 * 1024 * 1024;
            reply.after = Reply::After::Stall;
        });
        for (const char* url : {"/missing/logo.bin", "http://127.0.0.1:1/logo.bin", "logo.bin",
                                "file:///etc/passwd", "/f1/..", "/f1/..%5Clogo.bin"})
            table.row(url, {}, url, false);
        table.row("cannot be saved", Reply::of(imageOf(cNames.at(1))), file, true);
    }

    void brokenDownloadNeverReachesTheTool()
    {
        QFETCH(Reply, reply);
        QFETCH(QString, url);
        QFETCH(bool, folderInTheWay);
        m_fixture->timings.downloadStallMs = 1000;
        m_fixture->timings.downloadTimeoutMs = 3000;
        if (url == QLatin1String("/f1/logo.bin"))
            m_fixture->server.setReply("/f1/logo.bin", reply);
        if (folderInTheWay)
            QVERIFY(QDir().mkpath(ManagerFixture::cacheDir() + "/logo.bin/in the way"));
        QStringList files = urls();
        files[1] = url.startsWith(QLatin1Char('/')) ? m_fixture->server.url(url) : url;

        begin(files);
        upgrade(false);
        QCOMPARE(writes(), 0);
        QVERIFY(m_fixture->messages.last().startsWith("Failed to save firmware file: " +
                                                      ManagerFixture::cacheDir()));
        // Nothing is left of the broken file, under no name.
        QStringList left = ManagerFixture::cached();
        if (folderInTheWay)
            left.removeOne("logo.bin");
        QCOMPARE(left, QStringList{"boot.bin"});
        QVERIFY(m_fixture->server.requestCount("/f1/f1c100s.bin") == 0);
    }

    void lengthMayBeMissing()
    {
        m_fixture->server.setReply("/f1/boot.bin", Reply::of(imageOf(cNames.at(0)), [](Reply& reply) {
                                       reply.length = Reply::NoLength;
                                   }));
        begin();
        upgrade(true);
        QCOMPARE(written("0x0"), imageOf(cNames.at(0)));
        // How far the file is shows only when it is there.
        QCOMPARE(m_fixture->messages.filter("Download: boot.bin"), QStringList{"Download: boot.bin 100%"});
    }

    /// Devices come and go while the tool writes: the controller is asked only afterwards, and until then
    /// what it said before counts.
    void nobodyTalksToTheControllerMeanwhile()
    {
        addTool("[ $3 = 0x6000 ] && while [ ! -e " + folder() + "/go ]; do sleep 0.01; done");
        SystemManager& manager = begin();
        manager.startUpgrade("F1");
        QTRY_VERIFY_WITH_TIMEOUT(m_fixture->messages.contains(QStringLiteral("BOOT completed.")),
                                 cPatienceMs);
        platform::WindowsMessage message{nullptr, platform::cWmDeviceChange, platform::cDevNodesChanged, 0};
        manager.nativeEventFilter("windows_generic_MSG", &message, nullptr);
        QTRY_VERIFY(m_fixture->logHas("requestConnectionStateRefresh completed: usbConnected=1 felReady=1"));
        QVERIFY(manager.felReady());
        const auto questions = [this] {
            return m_fixture->scripts.calls("sunxi-fel").count(QStringList{"version"});
        };
        QCOMPARE(questions(), 1);
        m_fixture->scripts.add("go", ":");
        QTRY_COMPARE_WITH_TIMEOUT(m_finished->count(), 1, cPatienceMs);
        QTRY_COMPARE_WITH_TIMEOUT(questions(), 2, cPatienceMs);
    }

    void flashingFails_data()
    {
        const test::Table<QByteArray, int> table("atWrite", "attempts");
        const QByteArray at = "[ $3 = %1 ] && { %2; }";
        const auto when = [&at](const char* address, const char* what) {
            return QByteArray(at).replace("%1", address).replace("%2", what);
        };
        table.row("boot, exit 1",
                  when("0x0", "echo 'ERROR: Allwinner USB FEL device not found!' >&2; exit 1"), 1);
        table.row("logo, exit 2",
                  when("0x6000", "echo 'usb_bulk_send() ERROR -7: Operation timed out'; exit 2"), 2);
        table.row("exec, exit 1", when("0x50000", "exit 1"), 3);
        table.row("logo, killed", when("0x6000", "kill -9 $$"), 2);
        table.row("boot, hangs", when("0x0", "exec sleep 60"), 1);
        table.row("exec, hangs after a while", when("0x50000", "printf '\\r  6%% [=  ]'; exec sleep 60"), 3);
        table.row("boot, flash not found, exit 0", when("0x0", "echo 'No SPI flash detected.'; exit 0"), 1);
        table.row("logo, tool vanishes", when("0x0", "rm \"$0\""), 1);
    }

    void flashingFails()
    {
        QFETCH(QByteArray, atWrite);
        addTool(atWrite);
        if (atWrite.contains("sleep"))
            m_fixture->timings.flashSilenceMs = 1500;
        begin();
        upgrade(false);
        QCOMPARE(m_fixture->messages.last(), QStringLiteral("Upgrade failed."));
        QTEST(writes(), "attempts");
        QVERIFY(!test::processRuns(test::processIdIn(m_fixture->scripts.path("tool.id"))));
        verifyEnded();
    }

    void imageOfAStageIsMissing()
    {
        begin(urls().mid(0, 2), cNames.mid(0, 2));
        upgrade(false);
        QCOMPARE(m_fixture->messages.last(),
                 QStringLiteral("Firmware file missing: ") + ManagerFixture::cacheDir() + "/f1c100s.bin");
        QCOMPARE(writes(), 2);
        verifyEnded();
    }

    void bootNameCannotLeaveTheCache()
    {
        begin(urls(), {"../../../../boot.bin", cNames.at(1), cNames.at(2)});
        upgrade(false);
        QCOMPARE(writes(), 0);
        verifyEnded();
    }

    void refusals()
    {
        SystemManager& manager = begin();
        manager.startUpgrade("F2");
        QVERIFY(m_fixture->logHas("startUpgrade aborted: firmware type not found. knownTypes=F1"));
        m_fixture->scripts.add("sunxi-fel", "echo awusbfex; exit 0");
        manager.startUpgrade("F1");
        QCOMPARE(m_fixture->messages,
                 QStringList{"FEL device not detected. Connect USB and hold the FEL key."});
        QCOMPARE(m_fixture->progress, (QList<int>{0, 0}));
        QCOMPARE(m_finished->count(), 0);
        // Neither keeps the next one out.
        addTool();
        upgrade(true);
    }

    void secondUpgradeIsRefused()
    {
        addTool("[ $3 = 0x6000 ] && while [ ! -e " + folder() + "/go ]; do sleep 0.01; done");
        SystemManager& manager = begin();
        // From the first progress value to the middle of the flashing: in the check, the pause, a download.
        int refused = 0;
        connect(&manager, &SystemManager::progressChanged, &manager, [&manager, &refused] {
            if (refused++ < 20)
                manager.startUpgrade("F1");
        });
        manager.startUpgrade("F1");
        QTRY_VERIFY_WITH_TIMEOUT(m_fixture->messages.contains(QStringLiteral("BOOT completed.")),
                                 cPatienceMs);
        manager.startUpgrade("F1");
        QCOMPARE(m_fixture->messages.count("An upgrade is already running."), refused + 1);
        m_fixture->scripts.add("go", ":");
        waitForEnd(true);
        QCOMPARE(writes(), 3);
    }

    /// The application quits while the tool writes: the log says so while there still is one.
    void quittingWhileWriting()
    {
        const QString id = m_fixture->scripts.path("hanging.id");
        addTool("echo $$ > " + QFile::encodeName(id) + "; exec sleep 60");
        SystemManager& manager = begin();
        QTimer watch;
        connect(&watch, &QTimer::timeout, this, [&id] {
            if (test::processIdIn(id) > 0)
                QCoreApplication::quit();
        });
        watch.start(5);
        QTimer::singleShot(0, &manager, [&manager] { manager.startUpgrade("F1"); });
        QCoreApplication::exec();
        QCOMPARE(m_finished->count(), 1);
        QCOMPARE(m_finished->at(0).at(0).toBool(), false);
        QVERIFY(!test::processRuns(test::processIdIn(id)));
        QCOMPARE(m_fixture->log().filter("logMessage: Upgrade cut off while writing: ").size(), 1);
        // Nothing is begun after that.
        manager.startUpgrade("F1");
        manager.requestMcuTypes(QString());
        manager.installFelDriver();
        QCOMPARE(manager.exportLogsArchive(), QString());
        QCOMPARE(m_finished->count(), 1);
    }

    /// The object goes away in the middle: one end, nothing left running, nothing half-written.
    void closing_data()
    {
        const test::Table<QString, bool> table("moment", "ok");
        table.row("pause before the downloads", "pause", false);
        table.row("download", "download", false);
        table.row("boot", "0x0", false);
        table.row("exec", "0x50000", false);
        table.row("pause after the last image", "written", true);
    }

    void closing()
    {
        QFETCH(QString, moment);
        QFETCH(bool, ok);
        const QString id = m_fixture->scripts.path("hanging.id");
        if (moment.startsWith(QLatin1String("0x")))
            addTool("[ $3 = " + moment.toLatin1() + " ] && { echo $$ > " + QFile::encodeName(id) +
                    "; exec sleep 60; }");
        if (moment == QLatin1String("download"))
            m_fixture->server.setReply("/f1/logo.bin", Reply::of(imageOf(cNames.at(1)), [](Reply& reply) {
                                           reply.sendBytes = 1000;
                                           reply.after = Reply::After::Stall;
                                       }));
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
        m_fixture->manager->startUpgrade("F1");
        QTRY_VERIFY_WITH_TIMEOUT(m_fixture->manager == nullptr, cPatienceMs);

        QCOMPARE(order.last(), ok ? QStringLiteral("true") : QStringLiteral("false"));
        QCOMPARE(order.count("true") + order.count("false"), 1);
        if (!ok)
            QVERIFY(order.at(order.size() - 2).startsWith("Upgrade cut off "));
        if (QFile::exists(id))
            QVERIFY(!test::processRuns(test::processIdIn(id)));
        QVERIFY(!ManagerFixture::cached().contains(QStringLiteral("logo.bin")) ||
                moment == QLatin1String("0x50000") || moment == QLatin1String("0x0"));
        QVERIFY(ManagerFixture::cached().filter(".bin.").isEmpty());
    }
};

QUORVEL_TEST_MAIN(SystemManagerUpgradeTest, QApplication)
#include "tst_SystemManagerUpgrade.moc"
