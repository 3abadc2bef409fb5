// SPDX-License-Identifier: GPL-3.0-or-later
#include "instrument/ReadingGate.h"

#include "instrument/MultimeterReading.h"

#include <QRegularExpression>

#include <algorithm>
#include <cmath>

namespace {

/// Volts per millivolt: the divisor that turns a reading without an "MV" unit into millivolts.
constexpr double cVoltPerMillivolt = 0.001;
/// Beyond this a double no longer tells neighbouring integers apart.
constexpr double cLargestExactInteger = 9007199254740992.0;

/// A reading text without white space, in the forms that the rules compare.
struct ComparableText
{
    explicit ComparableText(const QString& text)
        : compact(text.simplified().remove(QLatin1Char(' '))), upper(compact.toUpper())
    {}

    QString compact;
    QString upper;
};

/// \a upper without its leading and trailing characters other than A to Z.
QString lettersCore(const QString& upper)
{
    const auto isLetter = [](QChar c) { return c >= QLatin1Char('A') && c <= QLatin1Char('Z'); };
    const auto first = std::find_if(upper.cbegin(), upper.cend(), isLetter);
    const auto last = std::find_if(upper.crbegin(), upper.crend(), isLetter).base();
    return first < last ? QString(first, int(last - first)) : QString();
}

/// Whether \a text reports no value: nothing, zero, a unit without a number, over-range or an error.
bool isPlaceholder(const ComparableText& text)
{
    static const QRegularExpression zeroOrLetters(
        QStringLiteral("^[+-]?0+(?:[.,]0+)?[A-Za-z?Ωω℃℉%]*$|^[A-Za-z?Ωω℃℉%]+$"));
    static const QStringList specialReadings{
        QStringLiteral("OL"),   QStringLiteral("OPEN"), QStringLiteral("NULL"),  QStringLiteral("NUL"),
        QStringLiteral("OVER"), QStringLiteral("ERR"),  QStringLiteral("ERROR"), QStringLiteral("FAIL")};
    return zeroOrLetters.match(text.compact).hasMatch() || specialReadings.contains(text.upper) ||
           specialReadings.contains(lettersCore(text.upper));
}

bool hasMillivoltKeys(int mode)
{
    return mode == MultimeterReading::Voltage || mode == MultimeterReading::Diode ||
           mode == MultimeterReading::Buzzer;
}

/// The keys of a reading: its text, and for voltages its value in millivolts and both neighbours, so that
/// two readings at most two millivolts apart share a key.
QStringList readingKeys(int mode, const ComparableText& text)
{
    static const QRegularExpression leadingNumber(QStringLiteral("^[+-]?(?:\\d+(?:[\\.,]\\d*)?|[\\.,]\\d+)"));

    const QString prefix = QString::number(mode) + QLatin1Char('|');
    QStringList keys{prefix + text.upper};
    if (!hasMillivoltKeys(mode))
        return keys;
    const QRegularExpressionMatch match = leadingNumber.match(text.compact);
    if (!match.hasMatch())
        return keys;
    bool converted = false;
    const double number = match.captured().replace(QLatin1Char(','), QLatin1Char('.')).toDouble(&converted);
    const QString rest = text.upper.mid(match.capturedEnd());
    const double divisor = rest.startsWith(QLatin1String("MV")) ? 1.0 : cVoltPerMillivolt;
    const double millivolts = std::round(number / divisor);
    if (!converted || !(std::abs(millivolts) < cLargestExactInteger))
        return keys;
    for (const qint64 neighbour : {-1, 0, 1})
        keys.append(prefix + rest + QLatin1Char('|') + QString::number(qint64(millivolts) + neighbour));
    return keys;
}

} // namespace

bool ReadingGate::consider(int mode, const QString& value, TimePoint now)
{
    const QString text = value.trimmed();
    const ComparableText comparable(text);
    if (mode < 1 || text.isEmpty() || isPlaceholder(comparable)) {
        reset();
        return false;
    }

    if (mode == m_candidateMode && text == m_candidateText) {
        // The count stops where it decides nothing more: a reading may stay on the display for years.
        m_stableCount = std::min(m_stableCount + 1, cStableReadings);
    } else {
        reset();
        m_stableCount = 1;
        m_candidateMode = mode;
        m_candidateText = text;
    }
    if (m_stableCount < cStableReadings)
        return false;

    for (auto key = m_recentReadingKeys.begin(); key != m_recentReadingKeys.end();)
        key = now - key.value() > cRepeatAfter ? m_recentReadingKeys.erase(key) : std::next(key);

    // What is older than cRepeatAfter is gone, so a known key was recorded recently.
    const QStringList keys = readingKeys(mode, comparable);
    if (std::any_of(keys.cbegin(), keys.cend(),
                    [this](const QString& key) { return m_recentReadingKeys.contains(key); }))
        return false;
    if (mode == m_lastRecordedMode && text == m_lastRecordedText && now - m_lastRecordedAt <= cRepeatAfter)
        return false;

    m_lastRecordedMode = mode;
    m_lastRecordedText = text;
    m_lastRecordedAt = now;
    for (const QString& key : keys)
        m_recentReadingKeys.insert(key, now);
    return true;
}

void ReadingGate::reset()
{
    m_stableCount = 0;
    m_candidateMode = -1;
    m_candidateText.clear();
    m_lastRecordedMode = -1;
    m_lastRecordedText.clear();
}

void ReadingGate::forgetRecentReadings()
{
    m_recentReadingKeys.clear();
}
