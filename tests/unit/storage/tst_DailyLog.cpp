// SPDX-License-Identifier: GPL-3.0-or-later
#include "storage/DailyLog.h"
#include "storage/DataFolders.h"
#include "tests/support/TestCase.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QtTest>

#include <array>
#include <thread>

class DailyLogTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void eachDayHasItsFile()
    {
        const DailyLog log("day_%1.log");
        const QDateTime late(QDate(2026, 3, 1), QTime(23, 59, 59, 999));
        log.append(QString::fromUtf8("a Ω"), late);
        log.append(QStringLiteral("%1 stays"), late.addMSecs(1));
        log.appendLine("two\r\nlines\r\n\n", late.addMSecs(1));
        log.appendLine("bare", late.addMSecs(1));
        QCOMPARE(log.filePath(late), folders::logs() + QStringLiteral("/day_20260301.log"));
        QCOMPARE(test::contentOf(log.filePath(late)), "[2026-03-01 23:59:59.999] a \xCE\xA9" + m_lineEnd);
        QCOMPARE(test::contentOf(log.filePath(late.addMSecs(1))),
                 "[2026-03-02 00:00:00.000] %1 stays" + m_lineEnd + "two" + m_lineEnd + "lines" + m_lineEnd +
                     "bare" + m_lineEnd);
    }

    void linesOfAPauseFollowInOrder()
    {
        const DailyLog first("first_%1.log");
        const DailyLog second("second_%1.log");
        const QDateTime late(QDate(2026, 3, 3), QTime(23, 59, 59, 7));
        {
            const DailyLog::Pause pause;
            for (const char* line : {"1", "2"})
                first.append(line, late);
            second.append("a", late);
            first.append("3", late.addMSecs(993));
            first.append("4", late);
            QVERIFY(!QFile::exists(first.filePath(late)));
        }
        const QByteArray stamp = "[2026-03-03 23:59:59.007] ";
        QCOMPARE(test::contentOf(first.filePath(late)),
                 stamp + "1" + m_lineEnd + stamp + "2" + m_lineEnd + stamp + "4" + m_lineEnd);
        QCOMPARE(test::contentOf(second.filePath(late)), stamp + "a" + m_lineEnd);
        QCOMPARE(test::contentOf(first.filePath(late.addMSecs(993))),
                 "[2026-03-04 00:00:00.000] 3" + m_lineEnd);
    }

    void threadsDoNotTearLines()
    {
        const DailyLog log("threads_%1.log");
        const QDateTime when(QDate(2026, 3, 1), QTime(12, 0));
        std::array<std::thread, 4> writers;
        for (std::size_t writer = 0; writer < writers.size(); ++writer) {
            writers[writer] = std::thread([&log, &when, writer] {
                for (int i = 0; i < 50; ++i)
                    log.appendLine(QString(200, QLatin1Char(static_cast<char>('a' + writer))), when);
            });
        }
        for (std::thread& writer : writers)
            writer.join();
        const QList<QByteArray> lines =
            test::contentOf(log.filePath(when)).replace(m_lineEnd, "\n").split('\n');
        QCOMPARE(lines.size(), 201);
        const QList<QByteArray> written = lines.mid(0, 200);
        for (const QByteArray& line : written)
            QCOMPARE(line, QByteArray(200, line.at(0)));
    }

private:
    const QByteArray m_lineEnd = QDir::separator() == QLatin1Char('\\') ? "\r\n" : "\n";
};

QUORVEL_TEST_MAIN(DailyLogTest, QCoreApplication)
#include "tst_DailyLog.moc"
