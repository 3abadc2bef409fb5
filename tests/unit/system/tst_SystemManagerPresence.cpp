// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/DeviceChangeMessage.h"
#include "platform/PowerShell.h"
#include "tests/support/TestCase.h"
#include "tests/unit/system/ManagerFixture.h"

#include <QApplication>
#include <QDir>
#include <QSemaphore>
#include <QtTest>

#include <optional>

class SystemManagerPresenceTest : public TestCase
{
    Q_OBJECT

private:
    std::optional<ManagerFixture> m_fixture;

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
        TestCase::init();
        m_fixture.emplace();
        m_fixture->server.close();
    }

    void cleanup()
    {
        m_fixture.reset();
        TestCase::cleanup();
    }

    void answersOfTheTool_data()
    {
        QTest::addColumn<QByteArray>("tool");
        QTest::addColumn<bool>("ready");
        QTest::addColumn<QString>("line");
        QTest::newRow("controller") << QByteArray("echo 'AWUSBFEX soc=00001663(F1C100s)'") << true
                                    << "exitCode=0 output=AWUSBFEX soc=00001663(F1C100s)";
        QTest::newRow("controller, odd exit code")
            << QByteArray("echo AWUSBFEX; exit 3") << true << "exitCode=3 output=AWUSBFEX";
        QTest::newRow("lower case") << QByteArray("echo awusbfex") << false << "exitCode=0 output=awusbfex";
        QTest::newRow("only as an error")
            << QByteArray("echo AWUSBFEX >&2; exit 1") << false << "exitCode=1 output=";
        QTest::newRow("hangs") << QByteArray("echo AWUSBFEX; exec sleep 60") << false << "timeout";
        QTest::newRow("missing") << QByteArray() << false << "failed to start";
    }

    void answersOfTheTool()
    {
        QFETCH(QByteArray, tool);
        QFETCH(bool, ready);
        QFETCH(QString, line);
        if (!tool.isEmpty())
            m_fixture->scripts.addRecorder(QStringLiteral("sunxi-fel"), tool);
        m_fixture->timings.firstPresenceCheckMs = 1;
        SystemManager& manager = m_fixture->start();
        const QSignalSpy usb(&manager, &SystemManager::usbConnectedChanged);
        const QSignalSpy fel(&manager, &SystemManager::felReadyChanged);
        // The first check tells both states, whatever they are.
        QTRY_COMPARE(fel.count(), 1);
        QCOMPARE(usb.count(), 1);
        QVERIFY(manager.usbConnected());
        QCOMPARE(manager.felReady(), ready);
        const QStringList lines = m_fixture->log().filter(QStringLiteral("checkFelDevice: "));
        QCOMPARE(lines.size(), 1);
        QVERIFY2(lines.first().contains(line), qPrintable(lines.first()));
        if (!tool.isEmpty())
            QCOMPARE(m_fixture->scripts.calls(QStringLiteral("sunxi-fel")), QList<QStringList>{{"version"}});
    }

    void toolIsNotAskedWithoutDevice()
    {
        m_fixture->scripts.addRecorder(QStringLiteral("sunxi-fel"), "echo AWUSBFEX");
        m_fixture->services.findUsbDevice = [](const QString& vid, const QString& pid,
                                               const platform::ProcessRun&) {
            return platform::UsbQuery{false, vid + pid};
        };
        m_fixture->timings.firstPresenceCheckMs = 1;
        SystemManager& manager = m_fixture->start();
        QSignalSpy fel(&manager, &SystemManager::felReadyChanged);
        QTRY_COMPARE(fel.count(), 1);
        QVERIFY(!manager.usbConnected() && !manager.felReady());
        QVERIFY(m_fixture->scripts.calls(QStringLiteral("sunxi-fel")).isEmpty());
        QCOMPARE(logged(QStringLiteral("checkUsbDevice(vid,pid) PowerShell result=0 detail=1F3AEFE8")), 1);
        QCOMPARE(logged(QStringLiteral("usbConnectedChanged emitted. newValue=0")), 1);

        // Without a change there is nothing to tell.
        QVERIFY(deliver(manager, platform::cDeviceArrival));
        QTRY_COMPARE(
            logged(QStringLiteral("requestConnectionStateRefresh completed: usbConnected=0 felReady=0")), 2);
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
        QTRY_COMPARE(logged(QStringLiteral("Native event filter installed.")), 1);
        QVERIFY(deliver(manager, platform::cDevNodesChanged));
        QVERIFY(looking.tryAcquire(1, 5000));
        for (int i = 0; i < 500; ++i)
            QVERIFY(deliver(manager, platform::cDeviceArrival));
        QCOMPARE(logged(QStringLiteral("requestConnectionStateRefresh skipped: check already in progress.")),
                 500);
        QCOMPARE(looks.load(), 1);
        proceed.release(2);
        QTRY_VERIFY(manager.usbConnected());
        QCOMPARE(looks.load(), 2);
        QCOMPARE(logged(QStringLiteral("WM_DEVICECHANGE received. wParam=32768")), 500);
    }

    void otherMessagesStartNothing()
    {
        SystemManager& manager = m_fixture->start();
        QTRY_COMPARE(logged(QStringLiteral("Native event filter installed.")), 1);
        QVERIFY(deliver(manager, 0x0018));
        QVERIFY(m_fixture->log().filter(QStringLiteral("WM_DEVICECHANGE")).isEmpty());
    }

    void closingDuringACheck()
    {
        const QString id = m_fixture->scripts.path(QStringLiteral("id"));
        m_fixture->scripts.add(QStringLiteral("sunxi-fel"),
                               "echo $$ > " + QFile::encodeName(id) + "; exec sleep 60");
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
            run(QStringLiteral("sleep"), {QStringLiteral("60")}, nullptr, nullptr, nullptr, 60000);
            return platform::UsbQuery{};
        };
        m_fixture->timings.firstPresenceCheckMs = 1;
        auto* manager = new SystemManager(nullptr, &toolbox, m_fixture->services, m_fixture->timings);
        QTRY_VERIFY(looking.available() > 0);
        QVERIFY(manager->parent() == &toolbox);
    }

    void driverJob_data()
    {
        QTest::addColumn<bool>("install");
        QTest::addColumn<QByteArray>("powershell");
        QTest::addColumn<bool>("ok");
        QTest::addColumn<QString>("message");
        QTest::newRow("installed") << true << QByteArray("exit 0") << true
                                   << "FEL WinUSB driver installed successfully.";
        QTest::newRow("removed") << false << QByteArray("exit 0") << true
                                 << "FEL WinUSB driver uninstalled successfully.";
        // Exit codes of a shell end at 255, so the refusal is played by what the runner sees.
        QTest::newRow("denied") << true << QByteArray("echo talk; echo '  access denied ' >&2; exit 5")
                                << false << "FEL driver installation failed. Exit code: 5 access denied";
        QTest::newRow("crash") << false << QByteArray("kill -9 $$") << false
                               << "FEL driver uninstallation failed. Exit code: 9";
        QTest::newRow("no PowerShell")
            << true << QByteArray() << false
            << "FEL driver installation failed. Exit code: -1 Failed to start process: powershell";
    }

    void driverJob()
    {
        QFETCH(bool, install);
        QFETCH(QByteArray, powershell);
        QFETCH(bool, ok);
        QFETCH(QString, message);
        const QDir folder(m_fixture->scripts.path(QStringLiteral("it's")));
        QVERIFY(folder.mkpath(QStringLiteral("docs/FELdrivers")));
        const QString workingBefore = QDir::currentPath();
        QDir::setCurrent(folder.path());
        const QString name = install ? QStringLiteral("install-fel-winusb-driver.ps1")
                                     : QStringLiteral("uninstall-fel-winusb-driver.ps1");
        QFile script(folder.filePath(QStringLiteral("docs/FELdrivers/") + name));
        QVERIFY(script.open(QIODevice::WriteOnly));
        if (!powershell.isEmpty())
            m_fixture->scripts.addRecorder(QStringLiteral("powershell"), powershell);
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

        const QList<QStringList> calls = m_fixture->scripts.calls(QStringLiteral("powershell"));
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
        const QString id = m_fixture->scripts.path(QStringLiteral("id"));
        m_fixture->scripts.add(QStringLiteral("powershell"),
                               "echo $$ > " + QFile::encodeName(id) + "; exec sleep 60");
        const QString workingBefore = QDir::currentPath();
        const QDir folder(m_fixture->scripts.path(QString()));
        QVERIFY(folder.mkpath(QStringLiteral("docs/FELdrivers")));
        QFile script(folder.filePath(QStringLiteral("docs/FELdrivers/install-fel-winusb-driver.ps1")));
        QVERIFY(script.open(QIODevice::WriteOnly));
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
