// SPDX-License-Identifier: GPL-3.0-or-later
#include "firmware/FirmwareUpgrade.h"
#include "firmware/FlashProgress.h"
#include "platform/DeviceChangeMessage.h"
#include "tests/unit/firmware/FirmwareFixture.h"

#include <QDir>
#include <QLockFile>
#include <QTemporaryDir>
#include <QtTest>

#include <atomic>

using Reply = HttpFaultServer::Reply;

namespace {

/// A run starts several processes, which takes long on a loaded machine.
constexpr int cPatienceMs = 30000;
const QStringList cNames{"boot.bin", "logo.bin", "f1c100s.bin"};

QByteArray imageOf(const QString& name)
{
    return QByteArray(70000, name.at(0).toLatin1()) + name.toLatin1();
}

} // namespace

class FirmwareUpgradeTest : public FirmwareTestCase
{
    Q_OBJECT

private:
    UpgradeTimings m_timings;
    std::unique_ptr<BootModeWatch> m_watch;
    std::unique_ptr<FirmwareUpgrade> m_upgrade;
    QStringList m_messages;
    QList<int> m_progress;
    QList<bool> m_ends;

    QStringList urls() const
    {
        QStringList urls;
        for (const QString& name : cNames)
            urls.append(m_fixture->server.url(QStringLiteral("/f1/") + name));
        return urls;
    }

    void create()
    {
        m_watch =
            std::make_unique<BootModeWatch>(m_fixture->bootMode, BootModeTimings{1, 50}, m_fixture->log);
        m_upgrade = std::make_unique<FirmwareUpgrade>(*m_watch, m_fixture->bootMode.flashToolPath, m_timings,
                                                      m_fixture->log);
        connect(m_upgrade.get(), &FirmwareUpgrade::message, this, [this](const QString& message) {
            m_messages.append(message);
            if (const std::optional<int> percent = flash::percentIn(message))
                m_progress.append(m_upgrade->progressAt(*percent));
        });
        connect(m_upgrade.get(), &FirmwareUpgrade::progress, this,
                [this](int value) { m_progress.append(value); });
        connect(m_upgrade.get(), &FirmwareUpgrade::finished, this, [this](bool ok) { m_ends.append(ok); });
    }

    /// Creates the objects and starts an upgrade to a type with these files.
    void start(const QStringList& files, const QStringList& names = cNames)
    {
        create();
        startAgain("F1", files, names);
    }

    void startAgain(const QString& type, const QStringList& files, const QStringList& names = cNames)
    {
        m_upgrade->start(type, FirmwareCatalogue::fromJson(catalogueOf("F1", files, names)));
    }

    /// Waits for the end of the upgrade. Another upgrade can start then.
    void waitForEnd(bool ok)
    {
        QTRY_COMPARE_WITH_TIMEOUT(m_ends, QList<bool>{ok}, cPatienceMs);
        QCOMPARE(m_upgrade->state(), FirmwareUpgrade::State::Idle);
        QVERIFY2(!QFile::exists(m_fixture->scripts.path("clash")), "two tools at the same controller");
    }

    QByteArray written(const QString& address) const
    {
        return test::contentOf(m_fixture->scripts.path("written-" + address));
    }

    int writes() const { return m_fixture->toolCalls("spiflash-write"); }

    bool toolRuns() const { return test::processRuns(test::processIdIn(m_fixture->scripts.path("tool.id"))); }

private Q_SLOTS:
    void init()
    {
        FirmwareTestCase::init();
        m_timings = UpgradeTimings();
        m_timings.pauseBeforeDownloadsMs = 1;
        m_timings.pauseAfterWritingMs = 1;
        m_fixture->addFlashTool();
        for (const QString& name : cNames)
            m_fixture->server.setReply("/f1/" + name.toLatin1(), Reply::of(imageOf(name)));
        m_messages.clear();
        m_progress.clear();
        m_ends.clear();
    }

    void cleanup()
    {
        m_upgrade.reset();
        m_watch.reset();
        FirmwareTestCase::cleanup();
    }

    void wholeUpgrade()
    {
        QVERIFY(QDir().mkpath(FirmwareFixture::cacheFolder()));
        // An older image, and the rest of a download whose process was killed.
        for (const char* old : {"/old.bin", "/boot.bin.Ab1xYz"})
            QVERIFY(test::writeFile(FirmwareFixture::cacheFolder() + old, "old"));
        start(urls());
        QCOMPARE(FirmwareFixture::cached(), QStringList());
        waitForEnd(true);

        QCOMPARE(written("0x0"), imageOf("boot.bin"));
        QCOMPARE(written("0x6000"), imageOf("logo.bin"));
        QCOMPARE(written("0x50000"), imageOf("f1c100s.bin"));
        QCOMPARE(FirmwareFixture::cached(), QStringList());

        const QString cache = FirmwareFixture::cacheFolder();
        const QString tool = m_fixture->scripts.program("sunxi-fel");
        const QString command = "Executing: %1 -p spiflash-write %2 %3/%4";
        QStringList narrated;
        for (const QString& message : qAsConst(m_messages)) {
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
        QVERIFY(m_messages.contains(QStringLiteral("Download: logo.bin 100%")));
        QCOMPARE(m_progress.first(), 0);
        // A download report is also a message with a percentage, which counts 0 before the first image.
        m_progress.removeAll(0);
        QVERIFY(std::is_sorted(m_progress.cbegin(), m_progress.cend()));
        for (const int value : {10, 20, 30, 40, 60, 85, 100})
            QVERIFY2(m_progress.contains(value), qPrintable(QString::number(value)));
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
        row("empty", [](Reply& reply) { reply.body.clear(); });
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
        m_timings.downloadStallMs = 1000;
        m_timings.downloadTimeoutMs = 3000;
        if (url == QLatin1String("/f1/logo.bin"))
            m_fixture->server.setReply("/f1/logo.bin", reply);
        if (folderInTheWay)
            QVERIFY(QDir().mkpath(FirmwareFixture::cacheFolder() + "/logo.bin/in the way"));
        QStringList files = urls();
        files[1] = url.startsWith(QLatin1Char('/')) ? m_fixture->server.url(url) : url;

        start(files);
        waitForEnd(false);
        QCOMPARE(writes(), 0);
        QVERIFY(
            m_messages.last().startsWith("Failed to save firmware file: " + FirmwareFixture::cacheFolder()));
        // The broken file is gone, and so is its temporary file.
        QStringList left = FirmwareFixture::cached();
        if (folderInTheWay)
            left.removeOne("logo.bin");
        QCOMPARE(left, QStringList{"boot.bin"});
        QVERIFY(m_fixture->server.requestCount("/f1/f1c100s.bin") == 0);
    }

    void writingFails_data()
    {
        const test::Table<QByteArray, int> table("atWrite", "attempts");
        // Takes the steps, one a line, when this address is written.
        const auto when = [](const char* address, const char* steps) {
            const QByteArray condition = QByteArray("if 3 ") + address + ' ';
            return condition + QByteArray(steps).replace("\n", '\n' + condition);
        };
        table.row("boot, exit 1", when("0x0", "err ERROR: Allwinner USB FEL device not found!\\n\nexit 1"),
                  1);
        table.row("logo, exit 2",
                  when("0x6000", "out usb_bulk_send() ERROR -7: Operation timed out\\n\nexit 2"), 2);
        table.row("exec, exit 1 at the very end", when("0x50000", "out \\r100% [==]\nexit 1"), 3);
        table.row("logo, killed", when("0x6000", "free busy\ncrash"), 2);
        table.row("boot, hangs", when("0x0", "free busy\nhang"), 1);
        table.row("exec, hangs after a while", when("0x50000", "out \\r  6% [=  ]\nfree busy\nhang"), 3);
        table.row("boot, unknown flash, exit 0",
                  when("0x0", "out SPI support not implemented yet for 1663 (F1C100s)!\\n\nexit 0"), 1);
        table.row("logo, nothing written, exit 0", when("0x6000", "exit 0"), 2);
        table.row("exec, cut off, exit 0", when("0x50000", "out \\r 99% [== ]\nexit 0"), 3);
        table.row("logo, tool vanishes", when("0x0", "vanish"), 1);
    }

    void writingFails()
    {
        QFETCH(QByteArray, atWrite);
        m_fixture->addFlashTool(atWrite);
        if (atWrite.contains("hang"))
            m_timings.toolSilenceMs = 1500;
        start(urls());
        waitForEnd(false);
        QCOMPARE(m_messages.last(), QStringLiteral("Upgrade failed."));
        QTEST(writes(), "attempts");
        QVERIFY(!toolRuns());
    }

    /// Only files that the catalogue names are written.
    void imageIsMissing_data()
    {
        const test::Table<QStringList, int, QString, int> table("names", "files", "message", "attempts");
        table.row("not in the catalogue", cNames, 2, "Firmware file missing: %1/f1c100s.bin", 2);
        table.row("boot name outside the cache", QStringList{"../../../boot.bin", cNames.at(1), cNames.at(2)},
                  3, "Firmware file missing: %1/../../../boot.bin", 0);
        // The tool then gets the folder, writes nothing and ends with 0.
        table.row("no boot name", QStringList{"b.bin", cNames.at(1), cNames.at(2)}, 3, "Upgrade failed.", 1);
    }

    void imageIsMissing()
    {
        QFETCH(QStringList, names);
        QFETCH(int, files);
        QFETCH(QString, message);
        m_fixture->addFlashTool("folder 4 exit 0");
        // A file of an earlier upgrade that cannot be deleted.
        QVERIFY(files == 3 || QDir().mkpath(FirmwareFixture::cacheFolder() + "/f1c100s.bin"));
        start(urls().mid(0, files), names.mid(0, files));
        waitForEnd(false);
        QCOMPARE(m_messages.last(),
                 message.contains("%1") ? message.arg(FirmwareFixture::cacheFolder()) : message);
        QTEST(writes(), "attempts");
    }

    void refusals()
    {
        m_fixture->scripts.add("sunxi-fel", "out awusbfex\\n");
        start(urls());
        QCOMPARE(m_messages, QStringList{"FEL device not detected. Connect USB and hold the FEL key."});
        QCOMPARE(m_upgrade->state(), FirmwareUpgrade::State::Idle);
        m_fixture->addFlashTool();
        startAgain("F2", urls());
        QCOMPARE(m_messages.size(), 1);
        QVERIFY(m_fixture->logHas("startUpgrade aborted: firmware type not found. knownTypes=F1"));
        QCOMPARE(m_progress, (QList<int>{0, 0}));
        // A failed upgrade does not block the next one. A running upgrade blocks others from its first
        // signal.
        const auto refused = std::make_shared<int>(0);
        connect(m_upgrade.get(), &FirmwareUpgrade::progress, this, [this, refused] {
            ++*refused;
            startAgain("F1", urls());
        });
        startAgain("F1", urls());
        QVERIFY(m_ends.isEmpty());
        waitForEnd(true);
        QCOMPARE(m_messages.count("An upgrade is already running."), *refused);
        QCOMPARE(writes(), 3);
    }

    /// From the acceptance to the end only the upgrade asks the controller, also after changes on the bus.
    void nobodyElseAsksTheController()
    {
        QVERIFY(test::writeFile(m_fixture->scripts.path("slow"), {}));
        create();
        m_watch->requestCheck(false);
        QTRY_VERIFY(QFile::exists(m_fixture->scripts.path("busy")));
        connect(m_upgrade.get(), &FirmwareUpgrade::message, this, [this] {
            m_watch->onDeviceChanges({{platform::cDeviceArrival, {}, {}}});
        });
        startAgain("F1", urls());
        const auto asked = [this] { return m_fixture->toolCalls("version"); };
        QCOMPARE(asked(), 2);
        connect(m_upgrade.get(), &FirmwareUpgrade::finished, this, [this, asked] {
            QCOMPARE(asked(), 2);
            QVERIFY(m_watch->felReady());
        });
        waitForEnd(true);
        QVERIFY(m_fixture->logged("requestConnectionStateRefresh completed: usbConnected=1 felReady=1") > 2);
        QTRY_COMPARE_WITH_TIMEOUT(asked(), 3, cPatienceMs);
    }

    /// The cable is removed while the tool hangs. The upgrade ends at once and does not wait for the time
    /// limit.
    void controllerLeavesWhileItIsWritten()
    {
        std::atomic_bool plugged{true};
        m_fixture->bootMode.findUsbDevice = [&plugged](const QString&, const QString&,
                                                       const platform::ProcessRun&) {
            return platform::UsbQuery{plugged, {}, true};
        };
        m_fixture->addFlashTool("out \\r  6% [=  ]\nfree busy\nhang");
        start(urls());
        QTRY_VERIFY_WITH_TIMEOUT(!m_messages.filter("6%").isEmpty(), cPatienceMs);
        // A change of another device does not end the upgrade.
        m_watch->onDeviceChanges({{platform::cDeviceArrival, "0483", "5750"}});
        QTRY_VERIFY(m_fixture->logHas("requestConnectionStateRefresh completed: usbConnected=1 felReady=1"));
        QCOMPARE(m_upgrade->state(), FirmwareUpgrade::State::WritingBoot);
        plugged = false;
        m_watch->onDeviceChanges({{platform::cDeviceRemoveComplete, "1F3A", "EFE8"}});
        waitForEnd(false);
        QVERIFY(!toolRuns());
        QCOMPARE(m_messages.last(), QStringLiteral("Upgrade failed."));
    }

    /// Files of this computer are written and read back. Success is only said of equal images.
    void ownImages_data()
    {
        const test::Table<QByteArray, QString> table("atRead", "message");
        table.row("equal", "when never exit 1", "Upgrade completed.");
        table.row("another image", "if 2 spiflash-read if 3 0x6000 write written-0x6000|other",
                  "LOGO differs in the flash from byte 0 of ");
        table.row("one byte less", "if 2 spiflash-read if 3 0x0 write written-0x0|boo",
                  "BOOT differs in the flash from byte 3 of ");
        table.row("nothing read", "if 2 spiflash-read exit 0", "BOOT differs in the flash from byte 0 of ");
        table.row("cannot be read", "if 2 spiflash-read exit 1", "Upgrade failed.");
        table.row("cable pulled", "if 2 spiflash-read crash", "Upgrade failed.");
    }

    void ownImages()
    {
        QFETCH(QByteArray, atRead);
        QFETCH(QString, message);
        const bool ok = message == QLatin1String("Upgrade completed.");
        m_fixture->addFlashTool(atRead);
        QTemporaryDir folder;
        for (const char* name : {"boot", "logo", "exec"})
            QVERIFY(test::writeFile(folder.filePath(name), name));
        const FirmwareImages images{folder.filePath("boot"), folder.filePath("logo"),
                                    folder.filePath("exec")};
        create();
        m_upgrade->setVerification(true);
        m_upgrade->start({images.boot, images.logo, folder.filePath("missing")});
        QCOMPARE(m_messages.last(), "Firmware file missing: " + folder.filePath("missing"));
        QCOMPARE(m_upgrade->state(), FirmwareUpgrade::State::Idle);
        {
            // Another program upgrades.
            QLockFile other(FirmwareFixture::cacheFolder() + ".lock");
            QVERIFY(other.tryLock());
            m_upgrade->start(images);
            QCOMPARE(m_messages.last(), QStringLiteral("An upgrade is already running."));
        }
        m_upgrade->start(images);
        waitForEnd(ok);
        QCOMPARE(writes(), 3);
        QVERIFY(std::any_of(m_messages.cbegin(), m_messages.cend(),
                            [&](const QString& text) { return text.startsWith(message); }));
        QCOMPARE(m_messages.contains(QStringLiteral("Upgrade completed.")), ok);
        QVERIFY(QFile::exists(images.boot));
    }

    /// The program closes during an upgrade. There is one end, no process runs, and no partial file remains.
    void stopping_data()
    {
        using State = FirmwareUpgrade::State;
        const test::Table<State, QString, bool> table("moment", "message", "ok");
        const QString before = "Upgrade cut off before writing: the application closes.";
        const QString during = "Upgrade cut off while writing: the application closes. The controller's "
                               "firmware is incomplete, upgrade it again.";
        table.row("pause before the downloads", State::PausingBeforeDownloads, before, false);
        table.row("download", State::Downloading, before, false);
        table.row("boot", State::WritingBoot, during, false);
        table.row("exec", State::WritingExec, during, false);
        table.row("pause after the last image", State::PausingAfterWriting, "Upgrade completed.", true);
    }

    void stopping()
    {
        using State = FirmwareUpgrade::State;
        QFETCH(State, moment);
        QFETCH(bool, ok);
        const bool writing = moment == State::WritingBoot || moment == State::WritingExec;
        if (writing)
            m_fixture->addFlashTool(moment == State::WritingBoot ? "hang" : "if 3 0x50000 hang");
        if (moment == State::Downloading)
            m_fixture->server.setReply("/f1/logo.bin", Reply::of(imageOf(cNames.at(1)), [](Reply& reply) {
                                           reply.sendBytes = 1000;
                                           reply.after = Reply::After::Stall;
                                       }));
        m_timings.pauseBeforeDownloadsMs = moment == State::PausingBeforeDownloads ? 60000 : 1;
        m_timings.pauseAfterWritingMs = 60000;
        start(urls());
        QTRY_COMPARE_WITH_TIMEOUT(m_upgrade->state(), moment, cPatienceMs);
        if (moment == State::Downloading)
            QTRY_VERIFY(m_fixture->server.requestCount("/f1/logo.bin") > 0);
        QTRY_VERIFY(!writing || toolRuns());

        m_upgrade->stop();
        QCOMPARE(m_ends, QList<bool>{ok});
        QTEST(m_messages.last(), "message");
        QVERIFY(!writing || !toolRuns());
        startAgain("F1", urls());
        QCOMPARE(m_upgrade->state(), State::Idle);
        m_upgrade.reset();
        QCOMPARE(m_ends.size(), 1);
        QVERIFY(writing || !FirmwareFixture::cached().contains(QStringLiteral("logo.bin")));
        QVERIFY(FirmwareFixture::cached().filter(".bin.").isEmpty());
    }
};

QUORVEL_TEST_MAIN(FirmwareUpgradeTest, QCoreApplication)
#include "tst_FirmwareUpgrade.moc"
