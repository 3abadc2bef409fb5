// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <string>

/**
 * One update of the tool's progress line after \a done of \a total bytes (\a total is above 0).
 *
 * It begins with a carriage return. The last one, with done == total, states the size and ends with a
 * newline; the others state the time that is left. \a kiloBytesPerSecond is above 0.
 */
std::string progressLine(std::size_t done, std::size_t total, double kiloBytesPerSecond);
