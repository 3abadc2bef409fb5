// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <random>

/// The Type-C input of the bench. A charger is plugged in and supplies 5 V, then 9 V after a handshake on the
/// data lines, then 5 V again when the battery is nearly full. It is unplugged, and the cycle repeats.
class ChargerModel
{
public:
    enum class Phase { Attached, Handshake, FastCharge, Trickle, Detached };

    /// Advances the time by \a seconds. Charge and time accumulate while a charger is attached.
    void advance(double seconds);

    Phase phase() const { return m_phase; }
    /// Voltage (V) and current (A) at the Type-C input.
    double voltage() const { return m_voltage; }
    double current() const { return m_current; }
    /// Voltages (V) of the data and configuration lines in this phase.
    double dPlus() const { return m_dPlus; }
    double dMinus() const { return m_dMinus; }
    double cc1() const { return m_cc1; }
    double cc2() const { return m_cc2; }
    /// Counted since the current charger was plugged in.
    double chargeMah() const { return m_chargeMah; }
    double timeSec() const { return m_timeSec; }

private:
    void enter(Phase phase);

    Phase m_phase = Phase::Attached;
    double m_phaseSec = 0;
    double m_voltage = 0;
    double m_current = 0;
    double m_dPlus = 0;
    double m_dMinus = 0;
    double m_cc1 = 0;
    double m_cc2 = 0;
    double m_chargeMah = 0;
    double m_timeSec = 0;
    std::minstd_rand m_random{2};
};
