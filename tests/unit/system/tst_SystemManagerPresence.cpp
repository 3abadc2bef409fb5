// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/DeviceChangeMessage.h"
#include "platform/PowerShell.h"
#include "settings/GenSettings.h"
#include "tests/unit/system/ManagerFixture.h"

#include <QApplication>
#include <QDir>
#include <QSemaphore>
#include <QtTest>

class SystemManagerPresenceTest : public ManagerTestCase
{
    Q_OBJECT

private:
    /// What Windows delivers when a device has come or gone.
    static bool deliver(SystemManager& manager, quint64 code)
    {
        platform::WindowsMessage message{nullptr, platform::cWmDeviceChange, std::uintptr_t(code), 0};
        long result = 42;
        const bool consumed = manager.nativeEventFilter("windows_generic_MSG", &message, &result);
        return !consumed && result == 42;
    }

    int logged(const QString& text) const { return m_fixture->log().count(text); }

private Q_SLOTS:
    void init()
    {
        ManagerTestCase::init();
        m_fixture->server.close();
    }

    void answersOfTheTool_data()
    {
        const test::Table<QByteArray, bool, QString> table("tool", "ready", "line");
        table.row("controller", "echo 'AWUSBFEX soc=00001663(F1C100s)'", true,
                  "exitCode=0 output=AWUSBFEX soc=00001663(F1C100s)");
        table.row("controller, odd exit code", "echo AWUSBFEX; exit 3", true, "exitCode=3 output=AWUSBFEX");
        table.row("lower case", "echo awusbfex", false, "exitCode=0 output=awusbfex");
        table.row("only as an error", "echo AWUSBFEX >&2; exit 1", false, "exitCode=1 output=");
        table.row("hangs", "echo AWUSBFEX; exec sleep 60", false, "timeout");
        table.row("missing", {}, false, "failed to start");
    }

    void answersOfTheTool()
    {
        QFETCH(QByteArray, tool);
        QFETCH(bool, ready);
        QFETCH(QString, line);
        if (!tool.isEmpty())
            m_fixture->scripts.addRecorder("sunxi-fel", tool);
        m_fixture->timings.firstPresenceCheckMs = 1;
        SystemManager& manager = m_fixture->start();
        const QSignalSpy usb(&manager, &SystemManager::usbConnectedChanged);
        const QSignalSpy fel(&manager, &SystemManager::felReadyChanged);
        // The first check tells both states, whatever they are.
        QTRY_COMPARE(fel.count(), 1);
        QCOMPARE(usb.count(), 1);
        QVERIFY(manager.usbConnected());
        QCOMPARE(manager.felReady(), ready);
        const QStringList lines = m_fixture->log().filter("checkFelDevice: ");
        QCOMPARE(lines.size(), 1);
        QVERIFY2(lines.first().contains(line), qPrintable(lines.first()));
        if (!tool.isEmpty())
            QCOMPARE(m_fixture->scripts.calls("sunxi-fel"), QList<QStringList>{{"version"}});
    }

    void toolIsNotAskedWithoutDevice()
    {
        m_fixture->scripts.addRecorder("sunxi-fel", "echo AWUSBFEX");
        m_fixture->services.findUsbDevice = [](const QString& vid, const QString& pid,
                                               const platform::ProcessRun&) {
            return platform::UsbQuery{false, vid + pid};
        };
        m_fixture->timings.firstPresenceCheckMs = 1;
        SystemManager& manager = m_fixture->start();
        QSignalSpy fel(&manager, &SystemManager::felReadyChanged);
        QTRY_COMPARE(fel.count(), 1);
        QVERIFY(!manager.usbConnected() && !manager.felReady());
        QVERIFY(m_fixture->scripts.calls("sunxi-fel").isEmpty());
        QCOMPARE(logged("checkUsbDevice(vid,pid) PowerShell result=0 detail=1F3AEFE8"), 1);
        QCOMPARE(logged("usbConnectedChanged emitted. newValue=0"), 1);

        // Without a change there is nothing to tell.
        QVERIFY(deliver(manager, platform::cDeviceArrival));
        QTRY_COMPARE(logged("requestConnectionStateRefresh completed: usbConnected=0 felReady=0"), 2);
        QCOMPARE(fel.count(), 1);
    }

    /// A burst of messages starts one check; what changed after its look is seen by one more.
    void burst()
    {
        QSemaphore looking;
        QSemaphore proceed;
        std::atomic_int looks{0};
        m_fixture->services.findUsbDevice = [&](const QString&, const QString&, const platform::ProcessRun&) {
            const bool pluggedIn = ++looks > 1;
            looking.release();
            proceed.acquire();
            return platform::UsbQuery{pluggedIn, {}};
        };
        SystemManager& manager = m_fixture->start();
        QTRY_COMPARE(logged("Native event filter installed."), 1);
        QVERIFY(deliver(manager, platform::cDevNodesChanged));
        QVERIFY(looking.tryAcquire(1, 5000));
        for (int i = 0; i < 500; ++i)
            QVERIFY(deliver(manager, platform::cDeviceArrival));
        QCOMPARE(logged("requestConnectionStateRefresh skipped: check already in progress."), 500);
        QCOMPARE(looks.load(), 1);
        proceed.release(2);
        QTRY_VERIFY(manager.usbConnected());
        QCOMPARE(looks.load(), 2);
        QCOMPARE(logged("WM_DEVICECHANGE received. wParam=32768"), 500);
    }

    void closingDuringACheck()
    {
        const QString id = m_fixture->addHanging("sunxi-fel");
        m_fixture->timings.firstPresenceCheckMs = 1;
        m_fixture->start();
        QTRY_VERIFY(test::processIdIn(id) > 0);
        m_fixture->manager.reset();
        QVERIFY(!test::processRuns(test::processIdIn(id)));
    }

    /// The toolbox deletes the settings store first; a task that is still busy must not miss it.
    void closingWithTheToolbox()
    {
        QSemaphore looking;
        GenToolbox toolbox(nullptr);
        m_fixture->services.findUsbDevice = [&looking](const QString&, const QString&,
                                                       const platform::ProcessRun& run) {
            looking.release();
            run("sleep", {"60"}, nullptr, nullptr, nullptr, 60000);
            return platform::UsbQuery{};
        };
        m_fixture->timings.firstPresenceCheckMs = 1;
        auto* manager = new SystemManager(nullptr, &toolbox, toolbox.genSettings()->file(),
                                          m_fixture->services, m_fixture->timings);
        QTRY_VERIFY(looking.available() > 0);
        QVERIFY(manager->parent() == &toolbox);
    }

    void driverJob_data()
    {
        const test::Table<bool, QByteArray, bool, QString> table("install", "powershell", "ok", "message");
        table.row("installed", true, "exit 0", true, "FEL WinUSB driver installed successfully.");
        table.row("removed", false, "exit 0", true, "FEL WinUSB driver uninstalled successfully.");
        // Exit codes of a shell end at 255, so the refusal is played by what the runner sees.
        table.row("denied", true, "echo talk; echo '  access denied ' >&2; exit 5", false,
                  "FEL driver installation failed. Exit code: 5 access denied");
        table.row("crash", false, "kill -9 $$", false, "FEL driver uninstallation failed. Exit code: 9");
        table.row("no PowerShell", true, {}, false,
                  "FEL driver installation failed. Exit code: -1 Failed to start process: powershell");
    }

    void driverJob()
    {
        QFETCH(bool, install);
        QFETCH(QByteArray, powershell);
        QFETCH(bool, ok);
        QFETCH(QString, message);
        const QDir folder(m_fixture->scripts.path("it's"));
        QVERIFY(folder.mkpath("docs/FELdrivers"));
        const QString workingBefore = QDir::currentPath();
        QDir::setCurrent(folder.path());
        const QString name = install ? QStringLiteral("install-fel-winusb-driver.ps1")
                                     : QStringLiteral("uninstall-fel-winusb-driver.ps1");
        QVERIFY(test::writeFile(folder.filePath(QStringLiteral("docs/FELdrivers/") + name), {}));
        if (!powershell.isEmpty())
            m_fixture->scripts.addRecorder("powershell", powershell);
        m_fixture->services.driverJobs = true;

        SystemManager& manager = m_fixture->start();
        const QSignalSpy busy(&manager, &SystemManager::felDriverInstallBusyChanged);
        const QSignalSpy finished(&manager, &SystemManager::felDriverInstallFinished);
        const QSignalSpy checked(&manager, &SystemManager::felReadyChanged);
        install ? manager.installFelDriver() : manager.uninstallFelDriver();
        QVERIFY(manager.felDriverInstallBusy());
        // While it runs, neither of them does anything.
        manager.installFelDriver();
        manager.uninstallFelDriver();
        QTRY_COMPARE(finished.count(), 1);
        QDir::setCurrent(workingBefore);
        QCOMPARE(finished.at(0).at(0).toBool(), ok);
        QCOMPARE(finished.at(0).at(1).toString(), message);
        QVERIFY(!manager.felDriverInstallBusy());
        QCOMPARE(busy.count(), 2);
        QTRY_COMPARE(checked.count(), 1);

        const QList<QStringList> calls = m_fixture->scripts.calls("powershell");
        QCOMPARE(calls.size(), powershell.isEmpty() ? 0 : 1);
        if (!calls.isEmpty()) {
            QCOMPARE(calls.first().mid(0, 4),
                     (QStringList{"-NoProfile", "-ExecutionPolicy", "Bypass", "-Command"}));
            QVERIFY(calls.first().last().contains(QStringLiteral("it''s/docs/FELdrivers/") + name));
        }
    }

    void driverJobThatCannotBegin()
    {
        m_fixture->services.driverJobs = false;
        SystemManager& unsupported = m_fixture->start();
        const QSignalSpy finished(&unsupported, &SystemManager::felDriverInstallFinished);
        const QSignalSpy busy(&unsupported, &SystemManager::felDriverInstallBusyChanged);
        unsupported.uninstallFelDriver();
        QCOMPARE(finished.count(), 1);
        QCOMPARE(finished.at(0).at(1).toString(),
                 QStringLiteral("FEL driver uninstallation is only supported on Windows."));
        QCOMPARE(busy.count(), 0);

        m_fixture->services.driverJobs = true;
        SystemManager& withoutFiles = m_fixture->start();
        const QSignalSpy missing(&withoutFiles, &SystemManager::felDriverInstallFinished);
        withoutFiles.installFelDriver();
        QCOMPARE(missing.count(), 1);
        QCOMPARE(missing.at(0).at(1).toString(), QStringLiteral("FEL driver files were not found."));
        withoutFiles.launchLegacyFelDriverInstaller();
    }

    void closingDuringADriverJob()
    {
        const QString id = m_fixture->addHanging("powershell");
        const QString workingBefore = QDir::currentPath();
        const QDir folder(m_fixture->scripts.path(QString()));
        QVERIFY(folder.mkpath("docs/FELdrivers"));
        QVERIFY(test::writeFile(folder.filePath("docs/FELdrivers/install-fel-winusb-driver.ps1"), {}));
        QDir::setCurrent(folder.path());
        m_fixture->services.driverJobs = true;
        SystemManager& manager = m_fixture->start();
        int ends = 0;
        connect(&manager, &SystemManager::felDriverInstallFinished, this, [&ends] { ++ends; });
        manager.installFelDriver();
        QTRY_VERIFY(test::processIdIn(id) > 0);
        QDir::setCurrent(workingBefore);
        m_fixture->manager.reset();
        QCOMPARE(ends, 1);
        QVERIFY(!test::processRuns(test::processIdIn(id)));
    }
};

QUORVEL_TEST_MAIN(SystemManagerPresenceTest, QApplication)
#include "tst_SystemManagerPresence.moc"
