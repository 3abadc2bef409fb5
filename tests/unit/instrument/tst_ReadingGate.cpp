// SPDX-License-Identifier: GPL-3.0-or-later
#include "instrument/ReadingGate.h"
#include "tests/support/TestCase.h"

#include <QtTest>

namespace {

/// A gate on a clock that the test turns.
struct GateBench
{
    /// Feeds \a count readings, \a stepMs apart; returns how many of them were to be recorded.
    int feed(int mode, const QString& value, int count, qint64 stepMs = 100)
    {
        int recorded = 0;
        for (int i = 0; i < count; ++i) {
            now += std::chrono::milliseconds(stepMs);
            recorded += gate.consider(mode, value, now) ? 1 : 0;
        }
        return recorded;
    }

    ReadingGate::TimePoint now;
    ReadingGate gate;
};

} // namespace

class ReadingGateTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void recordsTheFifthIdenticalReading()
    {
        GateBench bench;
        QCOMPARE(bench.feed(1, "1.234V", 4), 0);
        QCOMPARE(bench.feed(1, " 1.234V ", 1), 1); // White space around it does not count.
        QCOMPARE(bench.feed(1, "1.234V", 100), 0);
    }

    void anotherReadingRestartsTheCount_data()
    {
        const test::Table<int, QString> table("mode", "value");
        table.row("other text", 1, "7.5V");
        table.row("other function", 4, "1.234V");
        table.row("invalid", 1, "OL");
        table.row("no function", 0, "1.234V");
    }

    void anotherReadingRestartsTheCount()
    {
        QFETCH(int, mode);
        QFETCH(QString, value);
        GateBench bench;
        QCOMPARE(bench.feed(1, "1.234V", 4), 0);
        QCOMPARE(bench.feed(mode, value, 1), 0);
        QCOMPARE(bench.feed(1, "1.234V", 4), 0);
        QCOMPARE(bench.feed(1, "1.234V", 1), 1);
    }

    void placeholdersAreNeverRecorded_data()
    {
        const test::Table<QString> table("value");
        for (const char* value :
             {"",    "  ",   "0.000V", "000",   "-0,0V", "+0 mV", "0Ω", "0.0℃",   "OL",   "-OL-",
              "O L", "open", "Err",    "1err2", "V",     "kΩ",    "??", "[NULL]", "0.OL", "--FAIL--"})
            table.row(value, value);
    }

    void placeholdersAreNeverRecorded()
    {
        QFETCH(QString, value);
        GateBench bench;
        QCOMPARE(bench.feed(1, value, 20), 0);
        QCOMPARE(bench.gate.recentKeyCount(), 0);
    }

    void sameReadingWithin16Seconds_data()
    {
        const test::Table<int, QString, QString, bool> table("mode", "first", "second", "recorded");
        table.row("one millivolt up", 1, "1.234V", "1.235V", false);
        table.row("one millivolt down", 1, "1.234V", "1.233V", false);
        // N-1..N+1 of both overlap up to two millivolts apart.
        table.row("two millivolts up", 1, "1.234V", "1.236V", false);
        table.row("three millivolts up", 1, "1.234V", "1.237V", true);
        table.row("millivolt unit", 1, "500.4mV", "501.3mV", false);
        table.row("millivolt unit, far", 1, "500mV", "504mV", true);
        table.row("volts and millivolts", 1, "1.234V", "1234mV", true);
        table.row("diode", 4, "0.612V", "0.613V", false);
        table.row("buzzer", 5, "0.612V", "0.613V", false);
        table.row("resistance", 2, "1.234Ω", "1.235Ω", true);
        table.row("capacitance", 3, "1.234nF", "1.235nF", true);
        table.row("comma as decimal point", 1, "1,234V", "1.235V", false);
        table.row("capital letters", 1, "1.234v", "1.234V", false);
        table.row("blanks inside", 2, "4.7 kΩ", "4.7kΩ", false);
        table.row("no number", 1, "V=1.234", "V=1.235", true);
        table.row("beyond exact millivolts", 1, "99999999999999999V", "99999999999999998V", true);
        table.row("number that overflows", 1, "1V", "9999999999999999999999999999V", true);
    }

    void sameReadingWithin16Seconds()
    {
        QFETCH(int, mode);
        QFETCH(QString, first);
        QFETCH(QString, second);
        QFETCH(bool, recorded);
        GateBench bench;
        QCOMPARE(bench.feed(mode, first, 5), 1);
        QCOMPARE(bench.feed(mode, second, 5) == 1, recorded);
    }

    void recordsAgainAfterMoreThan16Seconds()
    {
        GateBench bench;
        QCOMPARE(bench.feed(2, "4.7kΩ", 5), 1);
        QCOMPARE(bench.feed(2, "4.7kΩ", 1, 16000), 0);
        QCOMPARE(bench.feed(2, "4.7kΩ", 1, 1), 1);
    }

    void changingBackSoonRecordsNothingAnew()
    {
        GateBench bench;
        QCOMPARE(bench.feed(2, "4.7kΩ", 5), 1);
        QCOMPARE(bench.feed(2, "9.1kΩ", 5), 1);
        QCOMPARE(bench.feed(2, "4.7kΩ", 5), 0);
        bench.gate.reset();
        QCOMPARE(bench.feed(2, "4.7kΩ", 5), 0);
        bench.gate.forgetRecentReadings();
        QCOMPARE(bench.feed(2, "4.7kΩ", 5), 1);
    }

    void forgettingDoesNotRecordASteadyReadingAtOnce()
    {
        GateBench bench;
        QCOMPARE(bench.feed(2, "4.7kΩ", 5), 1);
        bench.gate.forgetRecentReadings();
        QCOMPARE(bench.feed(2, "4.7kΩ", 10), 0);
    }

    void twelveHoursKeepTheTableSmall()
    {
        constexpr int cReadingsPerSecond = 10;
        constexpr int cSeconds = 12 * 3600;
        // A reading needs half a second, so at most 32 readings are younger than 16 s, plus the newest two.
        constexpr int cMostKeys = 34 * 4;
        GateBench bench;
        int recorded = 0;
        int mostKeys = 0;
        for (int i = 0; i < cSeconds * cReadingsPerSecond / ReadingGate::cStableReadings; ++i) {
            const QString value = QString::number(1 + (i % 9001) * 0.005, 'f', 3) + QLatin1Char('V');
            recorded += bench.feed(1, value, ReadingGate::cStableReadings, 1000 / cReadingsPerSecond);
            mostKeys = std::max(mostKeys, bench.gate.recentKeyCount());
        }
        QCOMPARE(recorded, cSeconds * cReadingsPerSecond / ReadingGate::cStableReadings);
        QVERIFY2(mostKeys <= cMostKeys, qPrintable(QString::number(mostKeys)));
    }
};

QUORVEL_TEST_MAIN(ReadingGateTest, QCoreApplication)
#include "tst_ReadingGate.moc"
