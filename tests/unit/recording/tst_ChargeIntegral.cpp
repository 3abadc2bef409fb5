// SPDX-License-Identifier: GPL-3.0-or-later
#include "recording/ChargeIntegral.h"
#include "tests/support/TestCase.h"

#include <cmath>
#include <functional>
#include <limits>
#include <random>

using recording::Delivered;
using recording::Time;
using Signal = std::function<double(double seconds)>;
Q_DECLARE_METATYPE(Signal)

namespace {

constexpr double cHour = 3600;

/// Feeds a current and its power at 5 V with steps of 1 ms to 9 ms, and nothing between gapFrom and gapTo.
Delivered integrate(const Signal& current, double seconds, double gapFrom, double gapTo)
{
    std::mt19937 random(1);
    std::uniform_int_distribution<int> jitterUs(1000, 9000);
    ChargeIntegral integral;
    Delivered sum;
    bool inGap = false;
    const auto feed = [&](Time at) {
        const double now = static_cast<double>(at.count()) / 1e6;
        if (now > gapFrom && now < gapTo) {
            if (!inGap)
                integral.startGap();
            inGap = true;
            return;
        }
        recording::Measurement measurement{at, {}};
        measurement.values.mainOutputCurrent = static_cast<float>(current(now));
        measurement.values.mainPower = static_cast<float>(5 * current(now));
        sum += integral.add(measurement)[0];
    };
    const Time end(static_cast<qint64>(seconds * 1e6));
    for (Time at(0); at < end; at += Time(jitterUs(random)))
        feed(at);
    feed(end);
    return sum;
}

recording::Measurement counterAt(int second, float counterMah)
{
    recording::Measurement measurement{std::chrono::seconds(second), {}};
    measurement.values.typeCMah = counterMah;
    return measurement;
}

} // namespace

class ChargeIntegralTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void closedForms_data();
    void closedForms();
    void aGapAddsNothing();
    void missingValuesAddNothing();
    void counterAddsItsRisesAndSurvivesAReset();
    void differenceFromTheCounter();
};

void ChargeIntegralTest::closedForms_data()
{
    const test::Table<Signal, double> table("current", "ampereSeconds");
    table.row(
        "constant", [](double) { return 1.5; }, 1.5 * 60);
    table.row(
        "ramp", [](double t) { return t / 60; }, 30.0);
    table.row(
        "sine", [](double t) { return 1 + std::sin(2 * M_PI * t); }, 60.0);
    table.row(
        "discharge", [](double) { return -0.5; }, -30.0);
}

void ChargeIntegralTest::closedForms()
{
    QFETCH(const Signal, current);
    QFETCH(const double, ampereSeconds);
    const Delivered delivered = integrate(current, 60, 60, 60);
    const double chargeMah = ampereSeconds / cHour * 1000;
    QVERIFY2(std::fabs(delivered.chargeMah / chargeMah - 1) < 1e-4,
             qPrintable(QString::number(delivered.chargeMah)));
    QVERIFY(std::fabs(delivered.energyWh / (5 * chargeMah / 1000) - 1) < 1e-4);
}

void ChargeIntegralTest::aGapAddsNothing()
{
    const Delivered delivered = integrate([](double t) { return t < 30 ? 1 : 2; }, 60, 10, 50);
    // The steps beside the gap may be up to 9 ms short.
    QVERIFY(std::fabs(delivered.chargeMah - 30 / cHour * 1000) < 0.03 / cHour * 1000);
}

void ChargeIntegralTest::missingValuesAddNothing()
{
    constexpr float cNaN = std::numeric_limits<float>::quiet_NaN();
    ChargeIntegral integral;
    Delivered sum;
    int second = 0;
    for (const float current : {1.F, 1.F, cNaN, 1.F, 1.F}) {
        recording::Measurement measurement{std::chrono::seconds(second++), {}};
        measurement.values.mainOutputCurrent = current;
        sum += integral.add(measurement)[0];
    }
    QCOMPARE(sum.chargeMah, 2 / cHour * 1000);
}

void ChargeIntegralTest::counterAddsItsRisesAndSurvivesAReset()
{
    ChargeIntegral integral;
    Delivered sum;
    int second = 0;
    for (const float counter : {100.F, 104.F, 110.F, 1.F, 3.F})
        sum += integral.add(counterAt(second++, counter))[1];
    integral.startGap();
    sum += integral.add(counterAt(second, 50))[1];
    QCOMPARE(sum.counterMah, 13.0);
}

void ChargeIntegralTest::differenceFromTheCounter()
{
    QVERIFY(!recording::counterDiffers({0.5, 0, 0.9}));
    QVERIFY(!recording::counterDiffers({101.9, 0, 100}));
    QVERIFY(recording::counterDiffers({102.1, 0, 100}));
    QVERIFY(recording::counterDiffers({97.9, 0, 100}));
    QVERIFY(recording::counterDiffers({5, 0, 0}));
    QCOMPARE(recording::counterDifference({150, 0, 100}).value_or(0), 0.5);
}

QUORVEL_TEST_MAIN(ChargeIntegralTest, QCoreApplication)
#include "tst_ChargeIntegral.moc"
