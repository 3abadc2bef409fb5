// SPDX-License-Identifier: GPL-3.0-or-later
#include "hid/MultimeterReading.h"
#include "tests/support/TestCase.h"

#include <QtTest>

class MultimeterReadingTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void unitsAndSplit_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("value");
        QTest::addColumn<QString>("number");
        QTest::addColumn<QString>("unit");

        const auto row = [](const char* text, const char* value, const char* number, const char* unit) {
            QTest::newRow(text) << QString::fromUtf8(text) << QString::fromUtf8(value)
                                << QString::fromUtf8(number) << QString::fromUtf8(unit);
        };
        row("12.3mOhm", "12.3mΩ", "12.3", "mΩ");
        row("4.7KOHM", "4.7kΩ", "4.7", "kΩ");
        row("1.2MOhm", "1.2MΩ", "1.2", "MΩ");
        row("1.2MOHM", "1.2MΩ", "1.2", "MΩ");
        row("1.2mohm", "1.2mΩ", "1.2", "mΩ");
        row("220ohm", "220Ω", "220", "Ω");
        row("1Ohm 2kohm 3MOHM", "1Ω 2kΩ 3MΩ", "1", "Ω 2kΩ 3MΩ");
        row(".5 V", ".5 V", ".5", "V");
        row("  -1.234  mV  ", "  -1.234  mV  ", "-1.234", "mV");
        row("+0.5V", "+0.5V", "+0.5", "V");
        row("1,5V", "1,5V", "1", ",5V"); // A comma is no decimal point here.
        row("5.", "5.", "5", ".");
        row("OL", "OL", "OL", "");
        row("- 5 V", "- 5 V", "- 5 V", "");
        row("10.5℃", "10.5℃", "10.5", "℃");
        row("   ", "   ", "", "");
        row("", "", "", "");
    }

    void unitsAndSplit()
    {
        QFETCH(QString, text);
        const MultimeterReading reading = MultimeterReading::fromText(MultimeterReading::Resistance, text);
        QTEST(reading.value, "value");
        QTEST(reading.numericValue, "number");
        QTEST(reading.unit, "unit");
        QCOMPARE(reading.mode, 2);
    }
};

QUORVEL_TEST_MAIN(MultimeterReadingTest, QCoreApplication)
#include "tst_MultimeterReading.moc"
