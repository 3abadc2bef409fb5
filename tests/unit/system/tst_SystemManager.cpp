// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/GenToolbox.h"
#include "hid/HidLink.h"
#include "platform/DeviceChangeMessage.h"
#include "settings/GenSettings.h"
#include "storage/DataFolders.h"
#include "storage/TimeText.h"
#include "system/SystemManager.h"
#include "tests/support/HttpFaultServer.h"
#include "tests/support/ScriptFolder.h"
#include "tests/support/TestCase.h"

#include <QApplication>
#include <QDir>
#include <QSignalSpy>
#include <QtTest>

#include <atomic>
#include <memory>

/// The parts that the facade adds to its objects: the names for QML, the log, and the end.
class SystemManagerTest : public TestCase
{
    Q_OBJECT

private:
    std::unique_ptr<GenToolbox> m_toolbox;
    std::unique_ptr<HttpFaultServer> m_server;
    std::unique_ptr<test::ScriptFolder> m_scripts;
    SystemServices m_services;
    SystemTimings m_timings;

    /// A manager in the toolbox that replaces the toolbox's own one.
    SystemManager& start()
    {
        auto* manager = new SystemManager(nullptr, m_toolbox.get(), m_toolbox->genSettings()->file(),
                                          m_services, m_timings);
        return *manager;
    }

    static QString logPath() { return DebugLog("system_manager_%1.log", {}).filePath(); }
    static QByteArray log() { return test::contentOf(logPath()); }

private Q_SLOTS:
    void init()
    {
        TestCase::init();
        QDir(folders::logs()).removeRecursively();
        m_server = std::make_unique<HttpFaultServer>();
        m_scripts = std::make_unique<test::ScriptFolder>();
        m_toolbox = std::make_unique<GenToolbox>(nullptr);
        delete m_toolbox->systemManager();
        delete m_toolbox->hidLink();
        m_toolbox->genSettings()->setValue("usbDebugEnabled", true, "sysSettings");
        m_toolbox->genSettings()->setValue("serverHost", "127.0.0.1", "sysSettings");
        m_toolbox->genSettings()->setValue("apiPort", m_server->port(), "sysSettings");
        m_services = SystemServices();
        m_services.bootMode.findUsbDevice = [](const QString&, const QString&, const platform::ProcessRun&) {
            return platform::UsbQuery{true, {}, true};
        };
        m_services.bootMode.flashToolPath = [this] { return m_scripts->program("sunxi-fel"); };
        m_timings = SystemTimings();
        m_timings.bootMode.firstCheckMs = 3600 * 1000;
        m_timings.upgrade.pauseBeforeDownloadsMs = 1;
        m_timings.upgrade.pauseAfterWritingMs = 1;
    }

    void cleanup()
    {
        m_toolbox.reset();
        m_scripts.reset();
        m_server.reset();
        TestCase::cleanup();
    }

    void linesAndSwitch()
    {
        SystemManager& manager = start();
        QCOMPARE(manager.systemLogFilePath(), folders::logs() + QStringLiteral("/system_manager_") +
                                                  timeText(QDateTime::currentDateTime(), "yyyyMMdd") +
                                                  QStringLiteral(".log"));
        QVERIFY(log().endsWith("] SystemManager constructed. appDir=" +
                               QFile::encodeName(QCoreApplication::applicationDirPath()) + '\n'));
        const QSignalSpy progress(&manager, &SystemManager::progressChanged);
        Q_EMIT manager.logMessage("\r 12% 电\r");
        QVERIFY(log().endsWith("] logMessage:  12% 电\n"));
        QCOMPARE(progress.count(), 1);
        QCOMPARE(progress.at(0).at(0).toInt(), 0);

        // The switch acts at once. The next line makes a missing folder again.
        m_toolbox->genSettings()->setValue("usbDebugEnabled", false, "sysSettings");
        QVERIFY(QDir(folders::logs()).removeRecursively());
        Q_EMIT manager.logMessage("unseen");
        QVERIFY(!QFile::exists(logPath()));
        m_toolbox->genSettings()->setValue("usbDebugEnabled", true, "sysSettings");
        Q_EMIT manager.logMessage("seen");
        QCOMPARE(log().count('\n'), 1);
    }

    /// The toolbox deletes the settings first. The log is still complete, also from a running check.
    void closingWithTheToolbox()
    {
        std::atomic_bool looking{false};
        m_services.bootMode.findUsbDevice = [&looking](const QString&, const QString&,
                                                       const platform::ProcessRun& run) {
            looking = true;
            run("sleep", {"60"}, nullptr, nullptr, nullptr, 60000);
            return platform::UsbQuery{false, "cut off", false};
        };
        m_timings.bootMode.firstCheckMs = 1;
        start();
        QTRY_VERIFY(looking);
        m_toolbox.reset();
        const QByteArray text = log();
        QVERIFY(text.contains("PowerShell result=0 detail=cut off\n"));
        QVERIFY(text.contains("] SystemManager destructing.\n"));
        QVERIFY(text.endsWith("] Native event filter removed.\n"));
    }

    /// The signals of an upgrade to a type without files. The tool writes nothing.
    void upgrade()
    {
        m_scripts->add("sunxi-fel", "out AWUSBFEX\\n\nif 1 -p out \\r 50% [==  ] 1 kB/s");
        m_server->setReply("/api/mcu/firmware_list",
                           HttpFaultServer::Reply::of("{\"firmware\":[{\"type\":\"F1\"}]}"));
        SystemManager& manager = start();
        QTRY_COMPARE(manager.mcuTypes(), QStringList{"F1"});
        QTRY_VERIFY(manager.serverConnected());
        const QSignalSpy progress(&manager, &SystemManager::progressChanged);
        const QSignalSpy fel(&manager, &SystemManager::felReadyChanged);
        const QSignalSpy finished(&manager, &SystemManager::upgradeFinished);
        manager.startUpgrade("F1");
        // The check of the controller is part of the call.
        QVERIFY(manager.felReady());
        QCOMPARE(fel.count(), 1);
        QTRY_COMPARE_WITH_TIMEOUT(finished.count(), 1, 30000);
        QCOMPARE(finished.at(0).at(0).toBool(), false);
        QCOMPARE(progress.count(), 2);
        QCOMPARE(progress.at(1).at(0).toInt(), 40);
        QVERIFY(log().contains("] logMessage: Upgrade failed.\n"));
    }

    void deviceMessageOfWindows()
    {
        SystemManager& manager = start();
        platform::WindowsMessage message{nullptr, platform::cWmDeviceChange, platform::cDeviceArrival, 0};
        long result = 42;
        QVERIFY(!manager.nativeEventFilter("windows_generic_MSG", &message, &result));
        QCOMPARE(result, 42L);
        QTRY_VERIFY(manager.usbConnected());
    }

    /// The job reports the text for the user that this system has no such driver.
    void driverJob()
    {
        SystemManager& manager = start();
        const QSignalSpy finished(&manager, &SystemManager::felDriverInstallFinished);
        manager.uninstallFelDriver();
        QCOMPARE(finished.value(0), (QVariantList{false, "FEL driver uninstallation is only supported on "
                                                         "Windows."}));
        manager.launchLegacyFelDriverInstaller();
    }

    /// Nothing starts after the application's event loop has ended.
    void quitting()
    {
        SystemManager& manager = start();
        QTimer::singleShot(0, qApp, &QCoreApplication::quit);
        QCoreApplication::exec();
        const QSignalSpy driver(&manager, &SystemManager::felDriverInstallFinished);
        const QSignalSpy types(&manager, &SystemManager::mcuTypesChanged);
        manager.startUpgrade("F1");
        manager.requestMcuTypes(QString());
        manager.installFelDriver();
        QCOMPARE(manager.exportLogsArchive(), QString());
        QCOMPARE(driver.count() + types.count(), 0);
    }
};

QUORVEL_TEST_MAIN(SystemManagerTest, QApplication)
#include "tst_SystemManager.moc"
