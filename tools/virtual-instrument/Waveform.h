// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <random>

/// Interpolates between \a from and \a to; \a fraction is clamped to 0..1.
inline double interpolate(double from, double to, double fraction)
{
    return from + (to - from) * std::clamp(fraction, 0.0, 1.0);
}

/// Returns a uniformly distributed value between -\a amplitude and \a amplitude.
inline double noise(std::minstd_rand& random, double amplitude)
{
    return std::uniform_real_distribution<double>(-amplitude, amplitude)(random);
}

/// Charge in mAh of \a ampere during \a seconds.
inline double mAhOf(double ampere, double seconds)
{
    constexpr double cMilliPerUnit = 1000.0;
    constexpr double cSecondsPerHour = 3600.0;
    return ampere * cMilliPerUnit * seconds / cSecondsPerHour;
}
