// SPDX-License-Identifier: GPL-3.0-or-later
#include "hid/ReadingGate.h"
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
            now += stepMs;
            recorded += gate.consider(mode, value) ? 1 : 0;
        }
        return recorded;
    }

    qint64 now = 1700000000000;
    ReadingGate gate{[this] { return now; }};
};

} // namespace

class ReadingGateTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void recordsTheFifthIdenticalReading()
    {
        GateBench bench;
        QCOMPARE(bench.feed(1, QStringLiteral("1.234V"), 4), 0);
        QCOMPARE(bench.feed(1, QStringLiteral(" 1.234V "), 1), 1); // White space around it does not count.
        QCOMPARE(bench.feed(1, QStringLiteral("1.234V"), 100), 0);
    }

    void anotherReadingRestartsTheCount_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<QString>("value");
        QTest::newRow("other text") << 1 << QStringLiteral("7.5V");
        QTest::newRow("other function") << 4 << QStringLiteral("1.234V");
        QTest::newRow("invalid") << 1 << QStringLiteral("OL");
        QTest::newRow("no function") << 0 << QStringLiteral("1.234V");
    }

    void anotherReadingRestartsTheCount()
    {
        QFETCH(int, mode);
        QFETCH(QString, value);
        GateBench bench;
        QCOMPARE(bench.feed(1, QStringLiteral("1.234V"), 4), 0);
        QCOMPARE(bench.feed(mode, value, 1), 0);
        QCOMPARE(bench.feed(1, QStringLiteral("1.234V"), 4), 0);
        QCOMPARE(bench.feed(1, QStringLiteral("1.234V"), 1), 1);
    }

    void placeholdersAreNeverRecorded_data()
    {
        QTest::addColumn<QString>("value");
        const QStringList values{QString(),
                                 QStringLiteral("  "),
                                 QStringLiteral("0.000V"),
                                 QStringLiteral("000"),
                                 QStringLiteral("-0,0V"),
                                 QStringLiteral("+0 mV"),
                                 QStringLiteral("0Ω"),
                                 QStringLiteral("0.0℃"),
                                 QStringLiteral("OL"),
                                 QStringLiteral("-OL-"),
                                 QStringLiteral("O L"),
                                 QStringLiteral("open"),
                                 QStringLiteral("Err"),
                                 QStringLiteral("1err2"),
                                 QStringLiteral("V"),
                                 QStringLiteral("kΩ"),
                                 QStringLiteral("??"),
                                 QStringLiteral("[NULL]"),
                                 QStringLiteral("0.OL"),
                                 QStringLiteral("--FAIL--")};
        for (const QString& value : values)
            QTest::newRow(qPrintable(QLatin1Char('"') + value + QLatin1Char('"'))) << value;
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
        QTest::addColumn<int>("mode");
        QTest::addColumn<QString>("first");
        QTest::addColumn<QString>("second");
        QTest::addColumn<bool>("recorded");

        const auto row = [](const char* name, int mode, const char* first, const char* second,
                            bool recorded) {
            QTest::newRow(name) << mode << QString::fromUtf8(first) << QString::fromUtf8(second) << recorded;
        };
        row("one millivolt up", 1, "1.234V", "1.235V", false);
        row("one millivolt down", 1, "1.234V", "1.233V", false);
        // N-1..N+1 of both overlap up to two millivolts apart.
        row("two millivolts up", 1, "1.234V", "1.236V", false);
        row("three millivolts up", 1, "1.234V", "1.237V", true);
        row("millivolt unit", 1, "500.4mV", "501.3mV", false);
        row("millivolt unit, far", 1, "500mV", "504mV", true);
        row("volts and millivolts", 1, "1.234V", "1234mV", true);
        row("diode", 4, "0.612V", "0.613V", false);
        row("buzzer", 5, "0.612V", "0.613V", false);
        row("resistance", 2, "1.234Ω", "1.235Ω", true);
        row("capacitance", 3, "1.234nF", "1.235nF", true);
        row("comma as decimal point", 1, "1,234V", "1.235V", false);
        row("capital letters", 1, "1.234v", "1.234V", false);
        row("blanks inside", 2, "4.7 kΩ", "4.7kΩ", false);
        row("no number", 1, "V=1.234", "V=1.235", true);
        row("beyond exact millivolts", 1, "99999999999999999V", "99999999999999998V", true);
        row("number that overflows", 1, "1V", "9999999999999999999999999999V", true);
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
        QCOMPARE(bench.feed(2, QStringLiteral("4.7kΩ"), 5), 1);
        QCOMPARE(bench.feed(2, QStringLiteral("4.7kΩ"), 1, 16000), 0);
        QCOMPARE(bench.feed(2, QStringLiteral("4.7kΩ"), 1, 1), 1);
    }

    void changingBackSoonRecordsNothingAnew()
    {
        GateBench bench;
        QCOMPARE(bench.feed(2, QStringLiteral("4.7kΩ"), 5), 1);
        QCOMPARE(bench.feed(2, QStringLiteral("9.1kΩ"), 5), 1);
        QCOMPARE(bench.feed(2, QStringLiteral("4.7kΩ"), 5), 0);
        bench.gate.reset();
        QCOMPARE(bench.feed(2, QStringLiteral("4.7kΩ"), 5), 0);
        bench.gate.forgetRecentReadings();
        QCOMPARE(bench.feed(2, QStringLiteral("4.7kΩ"), 5), 1);
    }

    void forgettingDoesNotRecordASteadyReadingAtOnce()
    {
        GateBench bench;
        QCOMPARE(bench.feed(2, QStringLiteral("4.7kΩ"), 5), 1);
        bench.gate.forgetRecentReadings();
        QCOMPARE(bench.feed(2, QStringLiteral("4.7kΩ"), 10), 0);
    }

    void twelveHoursKeepTheTableSmall()
    {
        constexpr int kReadingsPerSecond = 10;
        constexpr int kSeconds = 12 * 3600;
        // A reading needs half a second, so at most 32 readings are younger than 16 s, plus the newest two.
        constexpr int kMostKeys = 34 * 4;
        GateBench bench;
        int recorded = 0;
        int mostKeys = 0;
        for (int i = 0; i < kSeconds * kReadingsPerSecond / ReadingGate::kStableReadings; ++i) {
            const QString value = QString::number(1 + (i % 9001) * 0.005, 'f', 3) + QLatin1Char('V');
            recorded += bench.feed(1, value, ReadingGate::kStableReadings, 1000 / kReadingsPerSecond);
            mostKeys = std::max(mostKeys, bench.gate.recentKeyCount());
        }
        QCOMPARE(recorded, kSeconds * kReadingsPerSecond / ReadingGate::kStableReadings);
        QVERIFY2(mostKeys <= kMostKeys, qPrintable(QString::number(mostKeys)));
    }
};

QUORVEL_TEST_MAIN(ReadingGateTest, QCoreApplication)
#include "tst_ReadingGate.moc"
