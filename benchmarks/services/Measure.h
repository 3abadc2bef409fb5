// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QElapsedTimer>
#include <QFile>

#include <algorithm>
#include <cstdio>
#include <vector>

/// Times of two ways to the same result. They are measured in turn, so that both see the same machine.
struct Comparison
{
    double oursSeconds = 0;
    double floorSeconds = 0;
    double ratio() const { return oursSeconds / floorSeconds; }
};

inline double medianOf(std::vector<double> values)
{
    const auto middle = values.begin() + std::ptrdiff_t(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

/// Runs \a ours and \a floor \a runs times each, after one run of both that does not count. Returns the
/// medians.
template <class Ours, class Floor>
Comparison compare(int runs, Ours ours, Floor floor)
{
    const auto secondsOf = [](auto& work) {
        QElapsedTimer timer;
        timer.start();
        work();
        return double(timer.nsecsElapsed()) / 1e9;
    };
    std::vector<double> oursSeconds;
    std::vector<double> floorSeconds;
    for (int run = -1; run < runs; ++run) {
        const double floorTime = secondsOf(floor);
        const double oursTime = secondsOf(ours);
        if (run < 0)
            continue;
        floorSeconds.push_back(floorTime);
        oursSeconds.push_back(oursTime);
    }
    return {medianOf(oursSeconds), medianOf(floorSeconds)};
}

/// Prints the comparison and the highest allowed ratio. Returns true when the ratio is within it.
inline bool report(const char* name, const char* floor, const Comparison& measured, double highestRatio)
{
    std::printf("%-44s %9.1f ms   %s %9.1f ms   ratio %5.2fx (aim at most %.1fx)\n", name,
                measured.oursSeconds * 1000, floor, measured.floorSeconds * 1000, measured.ratio(),
                highestRatio);
    return measured.ratio() <= highestRatio;
}

/// Returns the peak memory of this process since its start or the last reset, in KiB; 0 when unknown.
inline int peakMemoryKb()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    const QByteArray text = status.readAll();
    return text.mid(text.indexOf("VmHWM:") + 6).simplified().split(' ').first().toInt();
}

/// Sets the peak to the current memory.
inline void resetPeakMemory()
{
    QFile references(QStringLiteral("/proc/self/clear_refs"));
    if (references.open(QIODevice::WriteOnly))
        references.write("5");
}
