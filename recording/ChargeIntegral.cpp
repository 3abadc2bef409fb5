// SPDX-License-Identifier: GPL-3.0-or-later
#include "recording/ChargeIntegral.h"

#include <cmath>
#include <ratio>

namespace {

using Hours = std::chrono::duration<double, std::ratio<3600>>;
using protocol::Measurement;

constexpr double cMilliPerUnit = 1000;

struct SupplyMembers
{
    float Measurement::*current;
    float Measurement::*power;
    float Measurement::*counter;
};

/// In the order of Supply.
constexpr SupplyMembers cSupplies[recording::cSupplyCount] = {
    {&Measurement::mainOutputCurrent, &Measurement::mainPower, &Measurement::mainMah},
    {&Measurement::typeCInputCurrent, &Measurement::typeCInputPower, &Measurement::typeCMah},
};

double trapezoid(double before, double after, Hours time)
{
    const double area = (before + after) / 2 * time.count();
    return std::isfinite(area) ? area : 0;
}

double rise(double before, double after)
{
    if (!std::isfinite(before) || !std::isfinite(after))
        return 0;
    return after >= before ? after - before : after;
}

} // namespace

ChargeIntegral::Step ChargeIntegral::add(const recording::Measurement& measurement)
{
    Step step{};
    if (m_hasPrevious) {
        const Hours time = measurement.at - m_previous.at;
        const Measurement& before = m_previous.values;
        const Measurement& after = measurement.values;
        for (size_t i = 0; i < step.size(); ++i) {
            const SupplyMembers& of = cSupplies[i];
            step[i].chargeMah = trapezoid(before.*of.current, after.*of.current, time) * cMilliPerUnit;
            step[i].energyWh = trapezoid(before.*of.power, after.*of.power, time);
            step[i].counterMah = rise(before.*of.counter, after.*of.counter);
        }
    }
    m_previous = measurement;
    m_hasPrevious = true;
    return step;
}
