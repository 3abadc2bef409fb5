// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "recording/RecordingData.h"

#include <QString>

/// Values of a recording as users read them, in the number format of the default locale.
namespace recording {

/// Returns "0:05:09". Hours have as many digits as they need. Parts of a second are cut off.
QString durationText(Time duration);
/// Returns for example "12.34 mAh", with fewer decimals for greater values.
QString chargeText(double milliampereHours);
/// Returns for example "0.123 Wh", with fewer decimals for greater values.
QString energyText(double wattHours);

} // namespace recording
