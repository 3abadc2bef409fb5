// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <random>

/// From \a from to \a to as \a fraction goes from 0 to 1; beyond, the nearer end.
inline double interpolate(double from, double to, double fraction)
{
    return from + (to - from) * std::clamp(fraction, 0.0, 1.0);
}

/// A value spread evenly over plus and minus \a amplitude.
inline double noise(std::minstd_rand& random, double amplitude)
{
    return std::uniform_real_distribution<double>(-amplitude, amplitude)(random);
}

/// Charge in mAh that \a ampere moves in \a seconds.
inline double mAhOf(double ampere, double seconds)
{
    constexpr double cMilliPerUnit = 1000.0;
    constexpr double cSecondsPerHour = 3600.0;
    return ampere * cMilliPerUnit * seconds / cSecondsPerHour;
}
