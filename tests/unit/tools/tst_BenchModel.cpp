// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/TestCase.h"
#include "tools/virtual-instrument/BenchModel.h"

#include <QCoreApplication>
#include <QtTest>

#include <algorithm>
#include <cmath>

Q_DECLARE_METATYPE(protocol::UiControl)

namespace {

constexpr double cTickSec = 0.01;
constexpr double cSecondsPerHour = 3600;

} // namespace

class BenchModelTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void chargeIsTheIntegralOfTheCurrent()
    {
        BenchModel bench;
        double mainMah = 0;
        float highest = 0;
        float lowest = 100;
        for (int tick = 0; tick < 20000; ++tick) {
            bench.advance(cTickSec);
            const protocol::Measurement values = bench.measurement();
            mainMah += static_cast<double>(values.mainOutputCurrent) * 1000 * cTickSec / cSecondsPerHour;
            highest = std::max(highest, values.mainOutputCurrent);
            lowest = std::min(lowest, values.mainOutputCurrent);
            const double power = static_cast<double>(values.mainInputVoltage) * values.mainOutputCurrent;
            QVERIFY(std::abs(values.mainPower - power) < 1e-3);
        }
        const protocol::Measurement values = bench.measurement();
        QVERIFY(std::abs(values.mainMah - mainMah) < 0.01 * mainMah);
        QVERIFY(std::abs(values.mainTimeSec - 200) < 0.1F);
        QVERIFY2(highest > 3 && lowest < 0.2F, "the load both idles and works");
    }

    void lineLevelsFitTheNegotiatedVoltage()
    {
        ChargerModel charger;
        bool wasFast = false;
        bool fellBack = false;
        int sessions = 0;
        double lastTime = 0;
        for (int tick = 0; tick < 20000; ++tick) {
            charger.advance(cTickSec);
            if (charger.timeSec() < lastTime)
                ++sessions;
            lastTime = charger.timeSec();
            const bool settledAtNine = charger.voltage() > 8.5;
            wasFast = wasFast || settledAtNine;
            fellBack = fellBack || (wasFast && charger.current() > 0 && charger.voltage() < 5.3);
            if (settledAtNine && charger.phase() == ChargerModel::Phase::FastCharge) {
                QVERIFY(charger.dPlus() > 3 && charger.dMinus() > 0.5);
            }
            if (charger.voltage() > 1) {
                QVERIFY2(charger.cc1() > 1.5 && charger.cc2() < 0.1, "a cable is in, one way round");
            }
        }
        QVERIFY(wasFast);
        QVERIFY(fellBack);
        QVERIFY2(sessions >= 1, "a new charger starts from zero");
    }

    void steadyReadingsRepeatExactly_data()
    {
        const test::Table<int, int> table("function", "mode");
        table.row("voltage", int(protocol::VoltageFunction), 1);
        table.row("resistance", int(protocol::ResistanceFunction), 2);
        table.row("capacitance", int(protocol::CapacitanceFunction), 3);
        table.row("diode", int(protocol::DiodeFunction), 4);
        table.row("buzzer reports diode", int(protocol::BuzzerFunction), 4);
    }

    void steadyReadingsRepeatExactly()
    {
        QFETCH(int, function);
        QFETCH(int, mode);
        constexpr double cReadingSec = 0.2;
        constexpr int cRepeatsToRecord = 5;
        MultimeterModel multimeter;
        multimeter.setFunction(static_cast<protocol::MultimeterFunction>(function));
        QStringList steadyTexts;
        bool settled = false;
        int repeats = 0;
        QString last;
        for (int i = 0; i < 200; ++i) {
            multimeter.advance(cReadingSec);
            const protocol::MultimeterReading reading = multimeter.reading();
            QCOMPARE(reading.mode, mode);
            QVERIFY(reading.text.toUtf8().size() <= protocol::cReadingTextSize);
            settled = settled || multimeter.contact() == MultimeterModel::Contact::Settling;
            const bool steady = multimeter.contact() == MultimeterModel::Contact::Steady;
            repeats = steady && reading.text == last ? repeats + 1 : 1;
            last = reading.text;
            if (repeats == cRepeatsToRecord)
                steadyTexts.append(reading.text);
        }
        steadyTexts.removeDuplicates();
        QVERIFY(settled);
        QVERIFY2(steadyTexts.size() >= 2, "the probe touches several things");
    }

    void followsTheHost_data()
    {
        const test::Table<protocol::UiControl, int, int> table("request", "screen", "function");
        using protocol::UiControl;
        table.row("screen", UiControl{1, 2, 255, 255, 255}, 2, 0);
        table.row("function", UiControl{1, 4, 4, 255, 255}, 4, 4);
        table.row("no function", UiControl{1, 4, 255, 255, 255}, 4, 0);
        table.row("function elsewhere", UiControl{1, 3, 2, 255, 255}, 3, 0);
        table.row("no screen", UiControl{1, 9, 2, 255, 255}, 1, 0);
        table.row("its own report", UiControl{2, 3, 255, 255, 255}, 1, 0);
    }

    void followsTheHost()
    {
        QFETCH(protocol::UiControl, request);
        BenchModel bench;
        bench.followHost(request);
        QTEST(int(bench.screen()), "screen");
        QTEST(int(bench.multimeter().function()), "function");
    }
};

QUORVEL_TEST_MAIN(BenchModelTest, QCoreApplication)
#include "tst_BenchModel.moc"
