// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <random>

/// The Type-C side of the bench: a charger is plugged in, offers 5 V, is talked up to 9 V over the data
/// lines, falls back to 5 V as the battery fills, and is pulled; then the next one is plugged in.
class ChargerModel
{
public:
    enum class Phase { Attached, Handshake, FastCharge, Trickle, Detached };

    /// Lets \a seconds pass; charge and time add up while a charger is attached.
    void advance(double seconds);

    Phase phase() const { return m_phase; }
    /// Volt and ampere at the Type-C input.
    double voltage() const { return m_voltage; }
    double current() const { return m_current; }
    /// Volt on the data and configuration lines, as the phase has them.
    double dPlus() const { return m_dPlus; }
    double dMinus() const { return m_dMinus; }
    double cc1() const { return m_cc1; }
    double cc2() const { return m_cc2; }
    /// Since the present charger was plugged in.
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
