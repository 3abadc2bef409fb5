// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "recording/RecordingData.h"

#include <optional>

/// Comes true when the current of a supply has stayed below a limit for some time: a charge has ended. A gap
/// starts the time again.
class CurrentBelow
{
public:
    /// \a limit is in amperes; the direction of the current does not matter.
    CurrentBelow(recording::Supply supply, double limit, recording::Time during)
        : m_supply(supply), m_limit(limit), m_during(during)
    {}

    /// Takes the next measurement. Returns true when the condition has come true.
    bool add(const recording::Measurement& measurement);

private:
    recording::Supply m_supply;
    double m_limit;
    recording::Time m_during;
    std::optional<recording::Time> m_since;
    recording::Time m_lastAt{};
};
