// SPDX-License-Identifier: GPL-3.0-or-later
#include "recording/CurrentBelow.h"

#include <cmath>

using namespace recording;

bool CurrentBelow::add(const recording::Measurement& measurement)
{
    const Quantity quantity = m_supply == Supply::Main ? Quantity::MainCurrent : Quantity::TypeCCurrent;
    const double current = std::fabs(static_cast<double>(valueOf(measurement.values, quantity)));
    const bool gap = measurement.at - m_lastAt > cLongestStep;
    m_lastAt = measurement.at;
    // Also false for NaN.
    if (!(current < m_limit)) {
        m_since.reset();
        return false;
    }
    if (!m_since || gap)
        m_since = measurement.at;
    return measurement.at - *m_since >= m_during;
}
