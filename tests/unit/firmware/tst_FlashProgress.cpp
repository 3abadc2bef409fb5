// SPDX-License-Identifier: GPL-3.0-or-later
#include "firmware/FlashProgress.h"
#include "tests/support/TestCase.h"

#include <QtTest>

class FlashProgressTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void percentages_data()
    {
        const test::Table<QString, int> table("output", "percent");
        // Lines of the tool, without carriage returns.
        table.row("bar", " 12% [=====               ] 102.4 kB/s, ETA 00:31 ", 12);
        table.row("two updates in one piece", " 12% [=  ] 40.0 kB/s, ETA 00:31  40% [== ]", 12);
        table.row("end", "100% [====]   992 kB,  101.3 kB/s\n", 100);
        table.row("none", "AWUSBFEX soc=00001663(F1C100s) 00000001", -1);
        table.row("a sign without a number", "% done", -1);
        table.row("a fraction", "99.5%", 5);
        table.row("beyond everything", "99999999999999999999%", 100);
        table.row("beyond the end", "250%", 100);
        table.row("digits of another script", "٤٢%", -1);
    }

    void percentages()
    {
        QFETCH(QString, output);
        QTEST(flash::percentIn(output).value_or(-1), "percent");
    }

    void bands_data()
    {
        const test::Table<int, int, int> table("stage", "percent", "overall");
        table.row("idle", 0, 50, 0);
        table.row("boot begins", 1, 0, 30);
        table.row("boot, truncated", 1, 99, 49);
        table.row("boot ends", 1, 100, 50);
        table.row("logo", 2, 12, 52);
        table.row("exec", 3, 50, 85);
        table.row("exec ends", 3, 100, 100);
        table.row("no stage", 4, 100, 0);
    }

    void bands()
    {
        QFETCH(int, stage);
        QFETCH(int, percent);
        QTEST(flash::overallProgress(stage, percent), "overall");
    }

    void downloads()
    {
        QCOMPARE(flash::downloadProgress(1, 3, 50, 100), 15);
        QCOMPARE(flash::downloadProgress(2, 3, 100, 100), 30);
        QCOMPARE(flash::downloadPercent(999, 1000), 99);
        // A server that sends more than it announced.
        QCOMPARE(flash::downloadProgress(2, 3, 500, 100), 30);
        QCOMPARE(flash::downloadPercent(std::numeric_limits<qint64>::max(), 1), 100);
    }

    void writtenOnlyWithAHundredPercentAtTheEnd_data()
    {
        const test::Table<QString, bool> table("output", "written");
        table.row("end", "\r 99% [=== ] 101.0 kB/s, ETA 00:00 \r100% [====]   992 kB,  101.3 kB/s\n", true);
        table.row("cut off", "\r 99% [=== ] 101.0 kB/s, ETA 00:00 ", false);
        table.row("nothing to write", "", false);
        table.row("unknown flash", "SPI support not implemented yet for 1663 (F1C100s)!\n", false);
        table.row("more digits", "1100%", false);
    }

    void writtenOnlyWithAHundredPercentAtTheEnd()
    {
        QFETCH(QString, output);
        QTEST(flash::reportsWritten(output), "written");
    }
};

QUORVEL_TEST_MAIN(FlashProgressTest, QCoreApplication)
#include "tst_FlashProgress.moc"
