// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/LogArchive.h"
#include "tests/support/FileSizeLimit.h"
#include "tests/support/TestCase.h"

#include <QDir>
#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QtTest>

#include <optional>

using platform::ArchiveOutcome;

class LogArchiveTest : public TestCase
{
    Q_OBJECT

private:
    static QByteArray noise(int bytes)
    {
        QByteArray data(bytes, Qt::Uninitialized);
        QRandomGenerator(1).generate(reinterpret_cast<quint32*>(data.begin()),
                                     reinterpret_cast<quint32*>(data.end()));
        return data;
    }

    static ArchiveOutcome pack(const QString& folder, const QString& archive, int timeLimitMs = 60000)
    {
        return platform::archiveFolder(folder, archive, {}, timeLimitMs);
    }

private Q_SLOTS:
    void everyFileComesBack()
    {
        const QTemporaryDir home;
        const QDir folder(home.path());
        // Every name contains an apostrophe, blanks and Chinese characters.
        const QString logs = folder.filePath("O'Neil 日志");
        QVERIFY(folder.mkpath(logs + QStringLiteral("/older")));
        QVERIFY(test::writeFile(logs + QStringLiteral("/system_manager_20261123.log"),
                                "[2026-11-23 10:00:00.000] one\n"));
        QVERIFY(test::writeFile(logs + QStringLiteral("/older/记录 1.txt"), noise(3 * 1024 * 1024)));
        QVERIFY(test::writeFile(logs + QStringLiteral("/empty.log"), QByteArray()));
        const QString archive = folder.filePath("it's.zip");

        const ArchiveOutcome outcome = pack(logs, archive);
        QVERIFY2(outcome.ran && outcome.exitCode == 0 && outcome.complete, qPrintable(outcome.standardError));
        const QString out = folder.filePath("out");
        QCOMPARE(QProcess::execute("python3", {"-m", "zipfile", "-e", archive, out}), 0);
        QCOMPARE(QProcess::execute("diff", {"-r", logs, out}), 0);
        QVERIFY(!QFile::exists(archive + QStringLiteral(".part")));
    }

    void failuresLeaveNothing_data()
    {
        const test::Table<QString> table("fault");
        table.row("full disk", "full");
        table.row("no such target folder", "target");
        table.row("no time", "time");
        table.row("empty folder", "empty");
        table.row("a file that cannot be read", "unreadable");
    }

    void failuresLeaveNothing()
    {
        QFETCH(QString, fault);
        const QTemporaryDir home;
        const QDir folder(home.path());
        const QString logs = folder.filePath("Logs");
        QVERIFY(folder.mkpath(logs));
        if (fault != QLatin1String("empty"))
            QVERIFY(test::writeFile(logs + QStringLiteral("/a.log"), noise(1024 * 1024)));
        if (fault == QLatin1String("unreadable"))
            QVERIFY(QFile::link("/proc/self/mem", logs + QStringLiteral("/b.log")));
        const QString target = folder.filePath("target");
        if (fault != QLatin1String("target"))
            QVERIFY(folder.mkpath(target));

        std::optional<test::FileSizeLimit> limit;
        if (fault == QLatin1String("full"))
            limit.emplace(200 * 1024);
        const ArchiveOutcome outcome =
            pack(logs, target + QStringLiteral("/logs.zip"), fault == QLatin1String("time") ? 0 : 60000);
        limit.reset();
        QVERIFY(outcome.exitCode != 0 && !outcome.complete);
        QVERIFY(!outcome.standardError.isEmpty());
        QCOMPARE(QDir(target).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
                 QStringList());
    }
};

QUORVEL_TEST_MAIN(LogArchiveTest, QCoreApplication)
#include "tst_LogArchive.moc"
