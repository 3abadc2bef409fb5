// SPDX-License-Identifier: GPL-3.0-or-later
#include "ProgressBar.h"

#include <array>
#include <cmath>
#include <cstdio>

namespace {

constexpr std::size_t cCells = 48;
constexpr double cBytesPerKilobyte = 1000.0;
constexpr unsigned cSecondsPerMinute = 60;

template <class... Values>
std::string formatted(const char* format, Values... values)
{
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), format, values...);
    return text.data();
}

} // namespace

std::string progressLine(std::size_t done, std::size_t total, double kiloBytesPerSecond)
{
    const double ratio = double(done) / double(total);
    const auto filled = std::size_t(std::lround(ratio * double(cCells)));
    std::string line = formatted("\r%3.0f%% [", ratio * 100.0);
    line.append(filled, '=');
    line.append(cCells - filled, ' ');
    if (done >= total)
        return line +
               formatted("] %5.0f kB, %6.1f kB/s\n", double(total) / cBytesPerKilobyte, kiloBytesPerSecond);
    const auto secondsLeft =
        unsigned(std::lround(double(total - done) / cBytesPerKilobyte / kiloBytesPerSecond));
    return line + formatted("]%6.1f kB/s, ETA %02u:%02u ", kiloBytesPerSecond,
                            secondsLeft / cSecondsPerMinute, secondsLeft % cSecondsPerMinute);
}
