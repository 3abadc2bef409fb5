// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/virtual-instrument/SupplyModel.h"

#include "tools/virtual-instrument/Waveform.h"

#include <cmath>

namespace {

constexpr double cOpenVoltage = 5.12;
constexpr double cSourceOhm = 0.055;
constexpr double cVoltageNoise = 0.0015;
constexpr double cCurrentNoise = 0.002;

constexpr double cIdleAmpere = 0.08;
constexpr double cPulseLowAmpere = 0.65;
constexpr double cPulseHighAmpere = 2.1;
constexpr double cPeakAmpere = 3.2;

// Seconds of the load's cycle at which one phase ends and the next begins.
constexpr double cRampEnd = 10;
constexpr double cPulseEnd = 26;
constexpr double cPeakEnd = 34;
constexpr double cTaperEnd = 56;
constexpr double cCycle = 62;

double loadAt(double second)
{
    const double at = std::fmod(second, cCycle);
    if (at < cRampEnd)
        return interpolate(cIdleAmpere, cPulseHighAmpere, at / cRampEnd);
    if (at < cPulseEnd)
        return std::fmod(at - cRampEnd, 2.0) < 1.0 ? cPulseLowAmpere : cPulseHighAmpere;
    if (at < cPeakEnd)
        return interpolate(cPulseHighAmpere, cPeakAmpere, (at - cPulseEnd) / 3.0);
    if (at < cTaperEnd)
        return cIdleAmpere + (cPeakAmpere - cIdleAmpere) * std::exp(-(at - cPeakEnd) / 6.0);
    return cIdleAmpere;
}

} // namespace

void SupplyModel::advance(double seconds)
{
    m_timeSec += seconds;
    m_current = loadAt(m_timeSec) + noise(m_random, cCurrentNoise);
    m_voltage = cOpenVoltage - cSourceOhm * m_current + noise(m_random, cVoltageNoise);
    m_chargeMah += mAhOf(m_current, seconds);
}
