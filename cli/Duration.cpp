// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/Duration.h"

#include "recording/RecordingText.h"

#include <QRegularExpression>

#include <cmath>

namespace cli {

namespace {

constexpr double cMicrosPerSecond = 1e6;
constexpr double cLongestSeconds = 10 * 366 * 86400.0;

double secondsOf(const QString& unit)
{
    if (unit == QLatin1String("ms"))
        return 0.001;
    if (unit == QLatin1String("m"))
        return 60;
    if (unit == QLatin1String("h"))
        return 3600;
    if (unit == QLatin1String("d"))
        return 86400;
    return 1;
}

} // namespace

std::optional<std::chrono::microseconds> parseDuration(const QString& text)
{
    static const QRegularExpression whole(
        QStringLiteral("^(?:[0-9]+(?:\\.[0-9]+)?(?:ms|s|m|h|d))+$|^[0-9]+(?:\\.[0-9]+)?$"));
    static const QRegularExpression part(QStringLiteral("([0-9]+(?:\\.[0-9]+)?)(ms|s|m|h|d|)"));
    if (!whole.match(text).hasMatch())
        return std::nullopt;
    double seconds = 0;
    QRegularExpressionMatchIterator parts = part.globalMatch(text);
    while (parts.hasNext()) {
        const QRegularExpressionMatch match = parts.next();
        seconds += match.captured(1).toDouble() * secondsOf(match.captured(2));
    }
    if (!(seconds <= cLongestSeconds))
        return std::nullopt;
    return std::chrono::microseconds(std::llround(seconds * cMicrosPerSecond));
}

QString durationText(std::chrono::microseconds duration)
{
    return recording::durationText(duration);
}

} // namespace cli
