// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/virtual-instrument/ChargerModel.h"

#include "tools/virtual-instrument/Waveform.h"

#include <cmath>

namespace {

struct PhaseRule
{
    ChargerModel::Phase phase;
    double durationSec;
    /// Output voltage of the charger at the end of its slew.
    double busVoltage;
    /// The sink's current at the start and at the end of the phase.
    double startAmpere;
    double endAmpere;
    double dPlus;
    double dMinus;
    /// Whether a cable is attached. CC1 then carries the level of the 3 A pull-up.
    bool attached;
};

// Data lines of the 9 V request: D+ 0.6 V asks for the handshake, D+ 3.3 V with D- 0.6 V for 9 V.
constexpr PhaseRule cPhases[] = {
    {ChargerModel::Phase::Attached, 2.5, 5.10, 0.10, 0.48, 0.60, 0.60, true},
    {ChargerModel::Phase::Handshake, 2.0, 5.10, 0.48, 0.50, 0.60, 0.00, true},
    {ChargerModel::Phase::FastCharge, 48.0, 9.08, 1.95, 1.10, 3.30, 0.60, true},
    {ChargerModel::Phase::Trickle, 24.0, 5.10, 0.90, 0.12, 0.60, 0.00, true},
    {ChargerModel::Phase::Detached, 4.0, 0.00, 0.00, 0.00, 0.00, 0.00, false},
};

constexpr double cCcAttached = 1.68;
constexpr double cSlewVoltPerSec = 14.0;
constexpr double cCableOhm = 0.07;
/// Time constant of the current; it settles after about three of them.
constexpr double cCurrentRiseSec = 1.2;
constexpr double cVoltageNoise = 0.002;
constexpr double cCurrentNoise = 0.003;
constexpr double cLineNoise = 0.004;

const PhaseRule& ruleOf(ChargerModel::Phase phase)
{
    return cPhases[static_cast<int>(phase)];
}

double towards(double from, double to, double step)
{
    return from < to ? std::min(to, from + step) : std::max(to, from - step);
}

} // namespace

void ChargerModel::enter(Phase phase)
{
    m_phase = phase;
    m_phaseSec = 0;
    if (phase == Phase::Attached) {
        m_chargeMah = 0;
        m_timeSec = 0;
    }
}

void ChargerModel::advance(double seconds)
{
    m_phaseSec += seconds;
    if (m_phaseSec >= ruleOf(m_phase).durationSec)
        enter(m_phase == Phase::Detached ? Phase::Attached
                                         : static_cast<Phase>(static_cast<int>(m_phase) + 1));
    const PhaseRule& rule = ruleOf(m_phase);
    if (!rule.attached) {
        m_voltage = m_current = m_dPlus = m_dMinus = m_cc1 = m_cc2 = 0;
        return;
    }
    const double course = interpolate(rule.startAmpere, rule.endAmpere, m_phaseSec / rule.durationSec);
    m_current += (course - m_current) * (1 - std::exp(-seconds / cCurrentRiseSec));
    m_current = std::max(0.0, m_current + noise(m_random, cCurrentNoise));
    m_voltage = towards(m_voltage, rule.busVoltage - cCableOhm * m_current, cSlewVoltPerSec * seconds) +
                noise(m_random, cVoltageNoise);
    m_dPlus = rule.dPlus + noise(m_random, cLineNoise);
    m_dMinus = std::max(0.0, rule.dMinus + noise(m_random, cLineNoise));
    m_cc1 = cCcAttached + noise(m_random, cLineNoise);
    m_cc2 = 0;
    m_chargeMah += mAhOf(m_current, seconds);
    m_timeSec += seconds;
}
