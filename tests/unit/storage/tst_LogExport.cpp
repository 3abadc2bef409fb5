// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/LogArchive.h"
#include "platform/PowerShell.h"
#include "platform/UserFolders.h"
#include "storage/DataFolders.h"
#include "storage/DebugLog.h"
#include "storage/LogExport.h"
#include "storage/SettingsFile.h"
#include "tests/support/ScriptFolder.h"
#include "tests/support/TestCase.h"

#include <QDir>
#include <QtTest>

#include <thread>

class LogExportTest : public TestCase
{
    Q_OBJECT

private:
    std::shared_ptr<SettingsFile> m_settings = std::make_shared<SettingsFile>();
    const DebugLog m_log{"export_%1.log", m_settings};

    static QString archivePath()
    {
        return platform::userFolder(platform::UserFolder::Desktop) + QStringLiteral("/Quorvel_logs.zip");
    }

    static QStringList desktop()
    {
        return QDir(QFileInfo(archivePath()).path()).entryList(QDir::Files | QDir::Hidden);
    }

private Q_SLOTS:
    void init()
    {
        TestCase::init();
        m_settings->setValue(setting::usbDebugEnabled, true);
        QDir(folders::logs()).removeRecursively();
        m_log.write("first");
        QVERIFY(test::writeFile(archivePath(), "old"));
    }

    void archiveIsReplacedAndNoLineIsLost()
    {
        if (test::ScriptFolder::opener() == QLatin1String("explorer"))
            QSKIP("The archiver of Windows is PowerShell, which tests never start.");
        const QByteArray before = test::contentOf(m_log.filePath());
        const QString archive =
            exportLogs(m_log, [this, before](const QString& folder, const QString& path,
                                             const platform::ProcessRun& run, int timeLimitMs) {
                // Another thread logs and is not blocked. No file changes while it is read.
                std::thread([this] { m_log.write("meanwhile"); }).join();
                if (test::contentOf(m_log.filePath()) != before)
                    return platform::ArchiveOutcome();
                return platform::archiveFolder(folder, path, run, timeLimitMs);
            });
        QCOMPARE(archive, archivePath());
        QVERIFY(QFileInfo(archive).size() > 100);
        QCOMPARE(desktop(), QStringList{"Quorvel_logs.zip"});
        const QByteArray lines = test::contentOf(m_log.filePath());
        QCOMPARE(lines.count('\n'), 3);
        QVERIFY(lines.contains("] meanwhile\n"));
        QVERIFY(lines.contains("] exportLogsArchive finished. ok=1 exitCode=0 archive=" +
                               QFile::encodeName(archive) + " stdout= stderr=\n"));
    }

    /// The archiver of Windows, played by a stand-in.
    void failureOnWindowsLeavesNoArchive_data()
    {
        const test::Table<QByteArray, bool> table("powershell", "saved");
        const QByteArray write = "write " + archivePath().toUtf8() + '|';
        table.row("exit 1", write + "zip\nexit 1", false);
        table.row("half a file", write + "zip\ncrash", false);
        table.row("no archive", "exit 0", false);
        table.row("too slow", write + "zip\nhang", false);
        // The record at the end of an archive, with its number of files.
        const QByteArray record =
            write + "PK\\x05\\x06" + QByteArray("\\0").repeated(6) + "\\x0%" + QByteArray("\\0").repeated(11);
        table.row("a file is left out", QByteArray(record).replace('%', '1'), false);
        table.row("every file", QByteArray(record).replace('%', '2'), true);
    }

    void failureOnWindowsLeavesNoArchive()
    {
        QFETCH(QByteArray, powershell);
        const test::ScriptFolder scripts;
        scripts.add("powershell", powershell);
        QVERIFY(test::writeFile(folders::logs() + "/second.log", "second"));
        QFETCH(bool, saved);
        QCOMPARE(exportLogs(m_log, platform::powershell::archiveFolder), saved ? archivePath() : QString());
        QCOMPARE(desktop().size(), int(saved));
    }

    void withoutALogFolderNothingIsTouched()
    {
        QVERIFY(QDir(folders::logs()).removeRecursively());
        QCOMPARE(exportLogs(m_log, platform::archiveFolder), QString());
        QCOMPARE(desktop(), QStringList{"Quorvel_logs.zip"});
        // Writing a line makes the folder again.
        QVERIFY(test::contentOf(m_log.filePath())
                    .contains("] exportLogsArchive aborted: sourceDir missing. path=" +
                              QFile::encodeName(folders::logsPath())));
    }
};

QUORVEL_TEST_MAIN(LogExportTest, QCoreApplication)
#include "tst_LogExport.moc"
