// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "instrument/PacketCodec.h"

#include <QString>

#include <array>
#include <chrono>
#include <optional>
#include <variant>

/**
 * What a recording holds, as plain values. Times are microseconds since the start of the recording, on a
 * clock that never jumps and counts the time in which the system was suspended.
 */
namespace recording {

using Time = std::chrono::microseconds;

/// A pause between two measurements that is longer than this is a gap.
constexpr std::chrono::seconds cLongestStep{2};

/// One measurement of the instrument. Strictly later than the one before it.
struct Measurement
{
    Time at{};
    protocol::Measurement values;
};

enum class GapReason {
    NotConnected, ///< no instrument yet when the recording began
    Unplugged,    ///< the instrument was unplugged, or its connection failed
    Silence,      ///< the instrument was connected and sent nothing
    Suspended,    ///< the system slept
    SlowDisk,     ///< the disk took the data too slowly, or not at all, and the queue was full
    Interrupted,  ///< the recording program ended without finishing the recording
    Merged,       ///< between two recordings that were merged
};
/// Returns the word that stands for \a reason in files, for example "unplugged".
QString gapReasonCode(GapReason reason);
/// Returns the reason of \a code; Interrupted for an unknown one.
GapReason gapReasonOfCode(const QString& code);
/// Returns a short text for the user in the language of the application, for example "Unplugged".
QString gapReasonText(GapReason reason);

/// Time without measurements. Charge and energy are not integrated across it.
struct Gap
{
    Time from{};            ///< the last measurement before the gap, or 0
    std::optional<Time> to; ///< the first measurement after it; nothing while it lasts
    GapReason reason = GapReason::Unplugged;
    QString detail; ///< the failure as the system said it, in English; may be empty
};

/// Ends the measurements so far: the next one ends the gap.
struct GapBegin
{
    Time at{};
    GapReason reason = GapReason::Unplugged;
    QString detail;
};

/// A note that the user set at a moment.
struct Mark
{
    Time at{};
    QString text;
};

/// A multimeter reading that has settled.
struct MultimeterRecord
{
    Time at{};
    int mode = 0; ///< the function, as in MultimeterReading::Mode
    QString text; ///< number with unit, or a word; unit words are normalised
};

/// The instrument reported that its screen changed.
struct ScreenChange
{
    Time at{};
    int layer0 = protocol::cLayerNotGiven;
    int layer1 = protocol::cLayerNotGiven;
};

/// The wall clock at a moment of the recording.
struct ClockPoint
{
    Time at{};
    qint64 wallUs = 0;        ///< microseconds since 1970-01-01 00:00 UTC
    int utcOffsetSeconds = 0; ///< local time minus UTC
};

/// The instrument said who it is.
struct Identity
{
    Time at{};
    protocol::DeviceInfo info;
};

/// What a recorder writes, in order.
using Event = std::variant<Measurement, GapBegin, Mark, MultimeterRecord, ScreenChange, ClockPoint, Identity>;

/// The quantities of which the pyramid keeps minimum, mean and maximum.
enum class Quantity {
    MainVoltage,
    MainCurrent,
    MainPower,
    TypeCVoltage,
    TypeCCurrent,
    TypeCPower,
    DPlus,
    DMinus,
    CC1,
    CC2,
};
constexpr int cQuantityCount = 10;
/// Returns the value of \a quantity: volts, amperes or watts; NaN when the instrument does not know it.
float valueOf(const protocol::Measurement& values, Quantity quantity);

/// Minimum, mean and maximum of the finite values; all NaN when there was none. The mean is taken over the
/// measurements, each with the same weight.
struct Extent
{
    double minimum;
    double mean;
    double maximum;
};

enum class Supply { Main, TypeC };
constexpr int cSupplyCount = 2;

/// What one supply delivered. Sums of adjacent times can be added.
struct Delivered
{
    double chargeMah = 0;  ///< integral of the current, in mAh
    double energyWh = 0;   ///< integral of the power, in Wh
    double counterMah = 0; ///< what the instrument's own counter rose by in the same time, in mAh
    Delivered& operator+=(const Delivered& other);
};
/// Charge and counter are compared from this charge on: the instrument's counter has coarse steps.
constexpr double cLeastComparedMah = 1;
/// A greater difference of charge and counter, as a share of the counter, is worth a word.
constexpr double cCounterTolerance = 0.02;
/// Returns by what share the integrated charge differs from the instrument's counter, 0.05 for 5 % more; the
/// share of the charge when the counter stands still; nothing when both are too small to compare.
std::optional<double> counterDifference(const Delivered& delivered);
/// Returns true when counterDifference() exceeds cCounterTolerance.
bool counterDiffers(const Delivered& delivered);

/// The levels of the pyramid.
enum class Level { Second, Minute };
constexpr int cLevelCount = 2;
constexpr Time bucketLength(Level level)
{
    return level == Level::Second ? Time(std::chrono::seconds(1)) : Time(std::chrono::minutes(1));
}

/// The measurements of one second or minute, summed up.
struct Bucket
{
    Time start{};     ///< a multiple of the bucket's length
    qint64 count = 0; ///< measurements in it, whether each was stored or not
    std::array<Extent, cQuantityCount> extents{};
    std::array<Delivered, cSupplyCount> delivered{};
    const Extent& extent(Quantity quantity) const { return extents.at(static_cast<size_t>(quantity)); }
    const Delivered& of(Supply supply) const { return delivered.at(static_cast<size_t>(supply)); }
};

enum class EndReason {
    None,        ///< the recording is running, or it was interrupted and not recovered yet
    Stopped,     ///< the user stopped it, or its time was over
    Condition,   ///< the condition that the user gave came true
    DiskSpace,   ///< too little space was left on the disk
    WriteFailed, ///< the file could not be written any more
    Interrupted, ///< the program ended without finishing; recovered later
    Merged,      ///< made of other recordings
};
/// Returns the word that stands for \a reason in files, for example "disk-space"; "running" for None.
QString endReasonCode(EndReason reason);
EndReason endReasonOfCode(const QString& code);
/// Returns a short text for the user in the language of the application.
QString endReasonText(EndReason reason);

} // namespace recording
