// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <chrono>
#include <optional>

namespace cli {

/// Reads a time such as "90", "1.5h", "8h30m", "5m" or "200ms"; a number alone is seconds. Returns nothing
/// for anything else, negative times and times beyond ten years included.
std::optional<std::chrono::microseconds> parseDuration(const QString& text);

/// Returns "0:05:09", hours with as many digits as they need.
QString durationText(std::chrono::microseconds duration);

} // namespace cli
