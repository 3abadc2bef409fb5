// SPDX-License-Identifier: GPL-3.0-or-later
#include "recording/RecordingText.h"

#include <QLocale>

#include <cmath>

namespace recording {

namespace {

/// Returns \a value with \a decimals, and with one less for each power of ten above 10.
QString shortened(double value, int decimals)
{
    for (double limit = 10; decimals > 0 && std::abs(value) >= limit; limit *= 10)
        --decimals;
    return QLocale().toString(value, 'f', decimals);
}

} // namespace

QString durationText(Time duration)
{
    constexpr qint64 cSecondsPerMinute = 60;
    constexpr qint64 cSecondsPerHour = 3600;
    const qint64 seconds = std::chrono::duration_cast<std::chrono::seconds>(duration).count();
    return QStringLiteral("%1:%2:%3")
        .arg(seconds / cSecondsPerHour)
        .arg(seconds % cSecondsPerHour / cSecondsPerMinute, 2, 10, QLatin1Char('0'))
        .arg(seconds % cSecondsPerMinute, 2, 10, QLatin1Char('0'));
}

QString chargeText(double milliampereHours)
{
    return shortened(milliampereHours, 3) + QStringLiteral(" mAh");
}

QString energyText(double wattHours)
{
    return shortened(wattHours, 3) + QStringLiteral(" Wh");
}

} // namespace recording
