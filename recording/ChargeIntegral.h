// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "recording/RecordingData.h"

/**
 * Integrates current and power of both supplies over the times of the measurements, with the trapezoid rule,
 * and adds up the rises of the instrument's own counters. A plain value: copies continue independently.
 */
class ChargeIntegral
{
public:
    using Step = std::array<recording::Delivered, recording::cSupplyCount>;

    /**
     * Takes the next measurement, later than the one before it. Returns what was delivered since that one;
     * all 0 for the first one and for the first after a gap. A value that is not finite adds nothing at both
     * of its ends. A counter that fell was reset: what it shows then is its rise.
     */
    Step add(const recording::Measurement& measurement);

    /// Nothing is integrated between the measurement before this call and the next one.
    void startGap() { m_hasPrevious = false; }

private:
    recording::Measurement m_previous;
    bool m_hasPrevious = false;
};
