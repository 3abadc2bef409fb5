// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "recording/RecordingReader.h"

#include <QByteArray>

#include <vector>

/// What a report shows of a recording, read in one pass over summaries whose number does not grow with it.
namespace report {

/// The quantities of a report's charts for both supplies, in this order.
constexpr std::array<recording::Quantity, 6> cChartQuantities{
    recording::Quantity::MainVoltage,  recording::Quantity::MainCurrent,  recording::Quantity::MainPower,
    recording::Quantity::TypeCVoltage, recording::Quantity::TypeCCurrent, recording::Quantity::TypeCPower};
/// A chart has about as many points at most. More make a browser slow and show nothing more.
constexpr qint64 cMostPoints = 20000;

/// A point of the charts; all values NaN where the lines are interrupted.
struct Point
{
    recording::Time at{};
    std::array<recording::Extent, cChartQuantities.size()> extents{};
};

struct Data
{
    recording::Info info;
    std::vector<recording::Gap> gaps;
    std::vector<recording::Mark> marks;
    std::vector<recording::MultimeterRecord> multimeter;
    /// Over the whole recording.
    std::array<recording::Extent, recording::cQuantityCount> extents{};
    std::vector<Point> points;
    /// Time that a point sums up; 0 when each point is a measurement.
    recording::Time step{0};

    const recording::Extent& extent(recording::Quantity quantity) const
    {
        return extents.at(static_cast<size_t>(quantity));
    }
    /// Returns true when the supply had a voltage or a current.
    bool isUsed(recording::Supply supply) const;
};

/// Reads what a report shows. Check reader.error() afterwards.
Data collect(RecordingReader& reader);

/// Returns the charts' data as JSON that can stand in an HTML script element. \a names are the names of the
/// supplies for the user.
QByteArray chartJson(const Data& data, const std::array<QString, recording::cSupplyCount>& names);

} // namespace report
