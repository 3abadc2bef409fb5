// SPDX-License-Identifier: GPL-3.0-or-later
#include "instrument/MultimeterReading.h"
#include "tests/support/TestCase.h"

#include <QtTest>

class MultimeterReadingTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void unitsAndSplit_data()
    {
        const test::Table<QString, QString, QString> table("value", "number", "unit");
        table.row("12.3mOhm", "12.3mΩ", "12.3", "mΩ");
        table.row("4.7KOHM", "4.7kΩ", "4.7", "kΩ");
        table.row("1.2MOhm", "1.2MΩ", "1.2", "MΩ");
        table.row("1.2MOHM", "1.2MΩ", "1.2", "MΩ");
        table.row("1.2mohm", "1.2mΩ", "1.2", "mΩ");
        table.row("220ohm", "220Ω", "220", "Ω");
        table.row("1Ohm 2kohm 3MOHM", "1Ω 2kΩ 3MΩ", "1", "Ω 2kΩ 3MΩ");
        table.row(".5 V", ".5 V", ".5", "V");
        table.row("  -1.234  mV  ", "  -1.234  mV  ", "-1.234", "mV");
        table.row("+0.5V", "+0.5V", "+0.5", "V");
        table.row("1,5V", "1,5V", "1", ",5V"); // A comma is no decimal point here.
        table.row("5.", "5.", "5", ".");
        table.row("OL", "OL", "OL", "");
        table.row("- 5 V", "- 5 V", "- 5 V", "");
        table.row("10.5℃", "10.5℃", "10.5", "℃");
        table.row("   ", "   ", "", "");
        table.row("", "", "", "");
    }

    void unitsAndSplit()
    {
        const MultimeterReading reading = MultimeterReading::fromText(
            MultimeterReading::Resistance, QString::fromUtf8(QTest::currentDataTag()));
        QTEST(reading.value, "value");
        QTEST(reading.numericValue, "number");
        QTEST(reading.unit, "unit");
        QCOMPARE(reading.mode, 2);
    }
};

QUORVEL_TEST_MAIN(MultimeterReadingTest, QCoreApplication)
#include "tst_MultimeterReading.moc"
