// SPDX-License-Identifier: GPL-3.0-or-later
#include "recording/RecordingData.h"

#include <QCoreApplication>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>

namespace recording {

namespace {

template <typename Reason>
struct ReasonWords
{
    Reason reason;
    const char* code;
    const char* text;
};

constexpr ReasonWords<GapReason> cGapReasons[] = {
    {GapReason::NotConnected, "not-connected", QT_TRANSLATE_NOOP("Recording", "No instrument connected")},
    {GapReason::Unplugged, "unplugged", QT_TRANSLATE_NOOP("Recording", "Unplugged")},
    {GapReason::Silence, "silence", QT_TRANSLATE_NOOP("Recording", "No data from the instrument")},
    {GapReason::Suspended, "suspended", QT_TRANSLATE_NOOP("Recording", "Computer asleep")},
    {GapReason::SlowDisk, "slow-disk", QT_TRANSLATE_NOOP("Recording", "Disk too slow or full")},
    {GapReason::Interrupted, "interrupted", QT_TRANSLATE_NOOP("Recording", "Recording interrupted")},
    {GapReason::Merged, "merged", QT_TRANSLATE_NOOP("Recording", "Between two recordings")},
};

constexpr ReasonWords<EndReason> cEndReasons[] = {
    {EndReason::None, "running", QT_TRANSLATE_NOOP("Recording", "Running")},
    {EndReason::Stopped, "stopped", QT_TRANSLATE_NOOP("Recording", "Stopped")},
    {EndReason::Condition, "condition", QT_TRANSLATE_NOOP("Recording", "The condition came true")},
    {EndReason::DiskSpace, "disk-space", QT_TRANSLATE_NOOP("Recording", "The disk was almost full")},
    {EndReason::WriteFailed, "write-failed", QT_TRANSLATE_NOOP("Recording", "The file could not be written")},
    {EndReason::Interrupted, "interrupted", QT_TRANSLATE_NOOP("Recording", "Interrupted")},
    {EndReason::Merged, "merged", QT_TRANSLATE_NOOP("Recording", "Merged from several recordings")},
};

template <typename Reason, size_t Count>
const ReasonWords<Reason>& wordsOf(const ReasonWords<Reason> (&table)[Count], Reason reason)
{
    return table[static_cast<size_t>(reason)];
}

template <typename Reason, size_t Count>
Reason reasonOf(const ReasonWords<Reason> (&table)[Count], const QString& code, Reason unknown)
{
    const auto found = std::find_if(std::cbegin(table), std::cend(table),
                                    [&code](const auto& words) { return code == QLatin1String(words.code); });
    return found != std::cend(table) ? found->reason : unknown;
}

QString translated(const char* text)
{
    return QCoreApplication::translate("Recording", text);
}

constexpr float protocol::Measurement::*cQuantityMembers[cQuantityCount] = {
    &protocol::Measurement::mainInputVoltage,  &protocol::Measurement::mainOutputCurrent,
    &protocol::Measurement::mainPower,         &protocol::Measurement::typeCInputVoltage,
    &protocol::Measurement::typeCInputCurrent, &protocol::Measurement::typeCInputPower,
    &protocol::Measurement::typeCDPlusVoltage, &protocol::Measurement::typeCDMinusVoltage,
    &protocol::Measurement::typeCCC1Voltage,   &protocol::Measurement::typeCCC2Voltage,
};

} // namespace

QString gapReasonCode(GapReason reason)
{
    return QLatin1String(wordsOf(cGapReasons, reason).code);
}

GapReason gapReasonOfCode(const QString& code)
{
    return reasonOf(cGapReasons, code, GapReason::Interrupted);
}

QString gapReasonText(GapReason reason)
{
    return translated(wordsOf(cGapReasons, reason).text);
}

QString endReasonCode(EndReason reason)
{
    return QLatin1String(wordsOf(cEndReasons, reason).code);
}

EndReason endReasonOfCode(const QString& code)
{
    return reasonOf(cEndReasons, code, EndReason::None);
}

QString endReasonText(EndReason reason)
{
    return translated(wordsOf(cEndReasons, reason).text);
}

float valueOf(const protocol::Measurement& values, Quantity quantity)
{
    return values.*cQuantityMembers[static_cast<size_t>(quantity)];
}

Delivered& Delivered::operator+=(const Delivered& other)
{
    chargeMah += other.chargeMah;
    energyWh += other.energyWh;
    counterMah += other.counterMah;
    return *this;
}

std::optional<double> counterDifference(const Delivered& delivered)
{
    const double difference = delivered.chargeMah - delivered.counterMah;
    if (delivered.counterMah >= cLeastComparedMah)
        return difference / delivered.counterMah;
    // A counter that stands still.
    const double charge = std::fabs(delivered.chargeMah);
    return charge >= cLeastComparedMah ? std::optional(difference / charge) : std::nullopt;
}

bool counterDiffers(const Delivered& delivered)
{
    return std::fabs(counterDifference(delivered).value_or(0)) > cCounterTolerance;
}

} // namespace recording
