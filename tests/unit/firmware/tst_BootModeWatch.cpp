// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/DeviceChangeMessage.h"
#include "tests/unit/firmware/FirmwareFixture.h"

#include <QSemaphore>
#include <QtTest>

#include <atomic>

class BootModeWatchTest : public FirmwareTestCase
{
    Q_OBJECT

private:
    std::unique_ptr<BootModeWatch> m_watch;

    BootModeWatch& create(const BootModeTimings& timings = {1, 50})
    {
        m_watch = std::make_unique<BootModeWatch>(m_fixture->bootMode, timings, m_fixture->log);
        return *m_watch;
    }

private Q_SLOTS:
    void cleanup()
    {
        m_watch.reset();
        FirmwareTestCase::cleanup();
    }

    void answersOfTheTool_data()
    {
        const test::Table<QByteArray, bool, QString> table("tool", "ready", "line");
        table.row("not on the bus", "no bus", false, {});
        table.row("controller", "out AWUSBFEX soc=00001663(F1C100s)\\n", true,
                  "exitCode=0 output=AWUSBFEX soc=00001663(F1C100s)");
        table.row("controller, odd exit code", "out AWUSBFEX\\n\nexit 3", true, "exitCode=3 output=AWUSBFEX");
        table.row("lower case, and an error", "out awusbfex\\n\nerr AWUSBFEX\\n", false,
                  "exitCode=0 output=awusbfex");
        table.row("hangs", "out AWUSBFEX\\n\nhang", false, "timeout");
        table.row("missing", {}, false, "failed to start");
    }

    void answersOfTheTool()
    {
        QFETCH(QByteArray, tool);
        QFETCH(bool, ready);
        QFETCH(QString, line);
        const bool present = tool != "no bus";
        if (!tool.isEmpty())
            m_fixture->scripts.addRecorder("sunxi-fel", tool);
        m_fixture->bootMode.findUsbDevice = [present](const QString& vid, const QString& pid,
                                                      const platform::ProcessRun&) {
            return platform::UsbQuery{present, vid + pid, true};
        };
        BootModeWatch& watch = create();
        const QSignalSpy usb(&watch, &BootModeWatch::usbConnectedChanged);
        const QSignalSpy fel(&watch, &BootModeWatch::felReadyChanged);
        watch.start();
        // The first check always emits both signals.
        QTRY_COMPARE(fel.count(), 1);
        QCOMPARE(usb.count(), 1);
        QCOMPARE(watch.usbConnected(), present);
        QCOMPARE(watch.felReady(), ready);
        QCOMPARE(
            m_fixture->logged(
                QStringLiteral("checkUsbDevice(vid,pid) PowerShell result=%1 detail=1F3AEFE8").arg(present)),
            1);
        const QStringList lines = m_fixture->logLines().filter("checkFelDevice: ");
        QCOMPARE(lines.size(), int(present));
        QVERIFY(lines.join(QString()).contains(line));
        QCOMPARE(m_fixture->toolCalls("version"), int(present && !tool.isEmpty()));
        // Without a change and without force, nothing is emitted.
        watch.requestCheck(false);
        QTRY_COMPARE(m_fixture->logLines().filter("requestConnectionStateRefresh completed: ").size(), 2);
        QCOMPARE(fel.count(), 1);
    }

    /// A burst of changes starts one check, and one more when the bus has settled.
    void burst()
    {
        QSemaphore looking;
        QSemaphore proceed;
        std::atomic_int looks{0};
        m_fixture->bootMode.findUsbDevice = [&](const QString&, const QString&, const platform::ProcessRun&) {
            const bool pluggedIn = ++looks > 1;
            looking.release();
            proceed.acquire();
            return platform::UsbQuery{pluggedIn, {}, true};
        };
        BootModeWatch& watch = create();
        watch.onDeviceChanges({{platform::cDevNodesChanged, {}, {}}});
        QVERIFY(looking.tryAcquire(1, 5000));
        for (int i = 0; i < 500; ++i)
            watch.onDeviceChanges({{platform::cDeviceArrival, {}, {}}});
        QCOMPARE(m_fixture->logged("requestConnectionStateRefresh skipped: check already in progress."), 500);
        QCOMPARE(m_fixture->logged("WM_DEVICECHANGE received. wParam=32768"), 500);
        QCOMPARE(looks.load(), 1);
        proceed.release(2);
        QTRY_VERIFY(watch.usbConnected());
        QCOMPARE(looks.load(), 2);
    }

    /// The system reports the removal of the controller while its list still contains it.
    void removalCountsBeforeTheList()
    {
        m_fixture->addFlashTool();
        QSemaphore proceed(1);
        std::atomic_bool listed{true};
        std::atomic_int looks{0};
        m_fixture->bootMode.findUsbDevice = [&](const QString&, const QString&, const platform::ProcessRun&) {
            const bool found = listed;
            ++looks;
            proceed.acquire();
            return platform::UsbQuery{found, {}, true};
        };
        BootModeWatch& watch = create();
        watch.requestCheck(false);
        QTRY_VERIFY(watch.felReady());
        const QSignalSpy usb(&watch, &BootModeWatch::usbConnectedChanged);
        // A running check has already seen the controller.
        watch.requestCheck(false);
        QTRY_COMPARE(looks.load(), 2);
        watch.onDeviceChanges({{platform::cDeviceRemoveComplete, "1F3A", "EFE8"}});
        QVERIFY(!watch.usbConnected() && !watch.felReady());
        listed = false;
        proceed.release(2);
        QTRY_COMPARE(m_fixture->logLines().filter("completed: usbConnected=0").size(), 2);
        QCOMPARE(usb.count(), 1);
        // Removed and added within one burst, the controller is present.
        listed = true;
        proceed.release(2);
        watch.onDeviceChanges({{platform::cDeviceRemoveComplete, "1F3A", "EFE8"},
                               {platform::cDeviceArrival, "1F3A", "EFE8"},
                               {platform::cDeviceRemoveComplete, "0483", "5750"}});
        QTRY_VERIFY(watch.felReady());
    }

    /// The first PowerShell of the day is too slow; one that is always too slow is not asked for ever.
    void unfinishedQueryIsRepeated()
    {
        m_fixture->addFlashTool();
        std::atomic_int looks{0};
        std::atomic_int slow{2};
        m_fixture->bootMode.findUsbDevice = [&](const QString&, const QString&, const platform::ProcessRun&) {
            return ++looks > slow ? platform::UsbQuery{true, {}, true}
                                  : platform::UsbQuery{false, "Process timed out: powershell", false, true};
        };
        BootModeWatch& watch = create();
        watch.requestCheck(false);
        QTRY_VERIFY(watch.felReady());
        QCOMPARE(looks.load(), 3);
        slow = 1000;
        looks = 0;
        watch.requestCheck(false);
        QTRY_COMPARE(
            m_fixture->logged("The query of the USB devices was not finished. Looking again, 3 of 3."), 1);
        QTRY_COMPARE(m_fixture->logLines().filter("requestConnectionStateRefresh completed: ").size(), 7);
        QCOMPARE(looks.load(), 4);
        QVERIFY(!watch.usbConnected());
    }

    void stoppingDuringACheck()
    {
        const QString id = m_fixture->addHanging("sunxi-fel");
        create().requestCheck(false);
        QTRY_VERIFY(test::processIdIn(id) > 0);
        m_watch.reset();
        QVERIFY(!test::processRuns(test::processIdIn(id)));
    }
};

QUORVEL_TEST_MAIN(BootModeWatchTest, QCoreApplication)
#include "tst_BootModeWatch.moc"
