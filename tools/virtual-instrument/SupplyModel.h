// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <random>

/// The main supply of the bench: a 5 V source and a load that idles, ramps, pulses and tapers in a cycle.
class SupplyModel
{
public:
    /// Advances the time by \a seconds. Charge and time accumulate.
    void advance(double seconds);

    /// Voltage (V) at the terminals, less the drop across the source resistance.
    double voltage() const { return m_voltage; }
    /// Current (A) into the load.
    double current() const { return m_current; }
    double chargeMah() const { return m_chargeMah; }
    double timeSec() const { return m_timeSec; }

private:
    double m_voltage = 0;
    double m_current = 0;
    double m_chargeMah = 0;
    double m_timeSec = 0;
    std::minstd_rand m_random{1};
};
