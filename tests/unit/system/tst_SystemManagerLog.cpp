// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/PowerShell.h"
#include "settings/GenSettings.h"
#include "storage/DataFolders.h"
#include "storage/TimeText.h"
#include "tests/unit/system/ManagerFixture.h"

#include <QApplication>
#include <QDateTime>
#include <QDir>
#include <QStandardPaths>
#include <QtTest>

class SystemManagerLogTest : public ManagerTestCase
{
    Q_OBJECT

private:
    static QString archivePath()
    {
        return QStandardPaths::writableLocation(QStandardPaths::DesktopLocation) +
               QStringLiteral("/Quorvel_logs.zip");
    }

    static QStringList desktop()
    {
        return QDir(QFileInfo(archivePath()).path()).entryList(QDir::Files | QDir::Hidden);
    }

    static void leaveOldArchive() { QVERIFY(test::writeFile(archivePath(), "old")); }

private Q_SLOTS:
    void init()
    {
        ManagerTestCase::init();
        m_fixture->server.close();
    }

    void linesAndSwitch()
    {
        const SystemManager& manager = m_fixture->start();
        const QString path = m_fixture->manager->systemLogFilePath();
        QCOMPARE(path, DataFolders::logs() + QStringLiteral("/system_manager_") +
                           timeText(QDateTime::currentDateTime(), "yyyyMMdd") + QStringLiteral(".log"));
        QCOMPARE(m_fixture->log(),
                 QStringList{"SystemManager constructed. appDir=" + QCoreApplication::applicationDirPath()});
        Q_EMIT m_fixture->manager->logMessage("\r 12% 电\r");
        QVERIFY(m_fixture->logHas("logMessage:  12% 电"));
        QCOMPARE(m_fixture->progress, QList<int>{0});
        QVERIFY(!manager.usbConnected());

        // The switch acts at once; a missing folder comes back with the next line.
        m_fixture->toolbox.genSettings()->setValue("usbDebugEnabled", false, "sysSettings");
        QVERIFY(QDir(DataFolders::logs()).removeRecursively());
        Q_EMIT m_fixture->manager->logMessage("unseen");
        QVERIFY(!QFile::exists(path));
        m_fixture->toolbox.genSettings()->setValue("usbDebugEnabled", true, "sysSettings");
        Q_EMIT m_fixture->manager->logMessage("seen");
        QCOMPARE(m_fixture->log(), QStringList{"logMessage: seen"});
    }

    void closingIsLogged()
    {
        m_fixture->start();
        const QString path = m_fixture->manager->systemLogFilePath();
        m_fixture->manager.reset();
        const QByteArray text = test::contentOf(path);
        QVERIFY(text.contains("] SystemManager destructing.\n"));
        QVERIFY(text.endsWith("] Native event filter removed.\n"));
    }

    void exportReplacesTheArchive()
    {
        leaveOldArchive();
        SystemManager& manager = m_fixture->start();
        QCOMPARE(manager.exportLogsArchive(), archivePath());
        QVERIFY(QFileInfo(archivePath()).size() > 100);
        QCOMPARE(desktop(), QStringList{"Quorvel_logs.zip"});
        QVERIFY(m_fixture->logHas(
            QStringLiteral("exportLogsArchive finished. ok=1 exitCode=0 archive=%1 stdout= stderr=")
                .arg(archivePath())));
    }

    void failedExportLeavesNoArchive_data()
    {
        const test::Table<QString> table("fault");
        for (const char* fault : {"no logs", "exit 1", "half a file", "no archive", "too slow"})
            table.row(fault, fault);
    }

    void failedExportLeavesNoArchive()
    {
        QFETCH(QString, fault);
        leaveOldArchive();
        const QByteArray archive = QFile::encodeName(archivePath());
        if (fault == QLatin1String("exit 1"))
            m_fixture->scripts.add("powershell", "echo zip > '" + archive + "'; exit 1");
        else if (fault == QLatin1String("half a file"))
            m_fixture->scripts.add("powershell", "echo zip > '" + archive + "'; kill -9 $$");
        else if (fault == QLatin1String("no archive"))
            m_fixture->scripts.add("powershell", "exit 0");
        else if (fault == QLatin1String("too slow"))
            m_fixture->scripts.add("powershell", "echo zip > '" + archive + "'; exec sleep 60");
        if (QFile::exists(m_fixture->scripts.path("powershell")))
            m_fixture->services.archiveFolder = platform::powershell::archiveFolder;
        SystemManager& manager = m_fixture->start();
        if (fault == QLatin1String("no logs")) {
            m_fixture->toolbox.genSettings()->setValue("usbDebugEnabled", false, "sysSettings");
            QVERIFY(QDir(DataFolders::logs()).removeRecursively());
            QVERIFY(QDir(DataFolders::logs()).isEmpty());
        }
        QCOMPARE(manager.exportLogsArchive(), QString());
        QCOMPARE(desktop(), QStringList());
    }

    void exportWithoutALogFolderTouchesNothing()
    {
        leaveOldArchive();
        SystemManager& manager = m_fixture->start();
        QVERIFY(QDir(DataFolders::logs()).removeRecursively());
        QCOMPARE(manager.exportLogsArchive(), QString());
        QCOMPARE(desktop(), QStringList{"Quorvel_logs.zip"});
        // The line itself brings the folder back.
        QCOMPARE(m_fixture->log(), QStringList{"exportLogsArchive aborted: sourceDir missing. path=" +
                                               DataFolders::logsPath()});
    }

    /// The window goes on living during the export, and nothing is started twice.
    void exportLetsTheEventLoopRun()
    {
        m_fixture->services.archiveFolder = platform::powershell::archiveFolder;
        const QByteArray archive = QFile::encodeName(archivePath());
        const QByteArray go = QFile::encodeName(m_fixture->scripts.path("go"));
        m_fixture->scripts.add("powershell", "while [ ! -e " + go + " ]; do sleep 0.01; done; echo zip > '" +
                                                 archive + "'");
        SystemManager& manager = m_fixture->start();
        QString second = QStringLiteral("not called");
        QTimer::singleShot(20, &manager, [this, &manager, &second] {
            second = manager.exportLogsArchive();
            m_fixture->scripts.add("go", ":");
        });
        QCOMPARE(manager.exportLogsArchive(), archivePath());
        QCOMPARE(second, QString());
    }

    void closingDuringTheExport()
    {
        m_fixture->services.archiveFolder = platform::powershell::archiveFolder;
        const QString id = m_fixture->addHanging("powershell");
        SystemManager& manager = m_fixture->start();
        QTimer watch;
        connect(&watch, &QTimer::timeout, this, [this, &watch, &id] {
            if (test::processIdIn(id) == 0)
                return;
            watch.stop();
            m_fixture->manager.reset();
        });
        watch.start(5);
        QCOMPARE(manager.exportLogsArchive(), QString());
        QVERIFY(m_fixture->manager == nullptr);
        QVERIFY(!test::processRuns(test::processIdIn(id)));
    }
};

QUORVEL_TEST_MAIN(SystemManagerLogTest, QApplication)
#include "tst_SystemManagerLog.moc"
