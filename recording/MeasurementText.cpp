// SPDX-License-Identifier: GPL-3.0-or-later
#include "recording/MeasurementText.h"

#include "recording/RecordingSchema.h"

#include <array>
#include <charconv>
#include <cmath>

namespace recording {

namespace {

constexpr int cMicrosPerSecond = 1000000;
constexpr int cMicroDigits = 6;

template <typename Number>
void appendNumber(QByteArray& text, Number value)
{
    std::array<char, 64> digits{};
    const std::to_chars_result end = std::to_chars(digits.data(), digits.data() + digits.size(), value);
    text.append(digits.data(), static_cast<int>(end.ptr - digits.data()));
}

/// \a time in seconds with six decimals.
void appendTime(QByteArray& text, Time time)
{
    appendNumber(text, time.count() / cMicrosPerSecond);
    text.append('.');
    auto micros = static_cast<int>(time.count() % cMicrosPerSecond);
    std::array<char, cMicroDigits> digits{};
    for (auto digit = digits.rbegin(); digit != digits.rend(); ++digit, micros /= 10)
        *digit = static_cast<char>('0' + micros % 10);
    text.append(digits.data(), cMicroDigits);
}

} // namespace

MeasurementText::MeasurementText(Format format, const QStringList& columns) : m_format(format)
{
    const QStringList all = schema::measurementColumns();
    for (const QString& name : columns.isEmpty() ? all : columns) {
        m_columns.push_back(all.indexOf(name));
        m_prefixes.push_back(format == Format::Json  ? ",\"" + name.toLatin1() + "\":"
                             : format == Format::Csv ? QByteArray(",")
                                                     : QByteArray("\t"));
    }
}

QStringList MeasurementText::unknownColumns(const QStringList& columns)
{
    QStringList unknown;
    for (const QString& name : columns)
        if (!schema::measurementColumns().contains(name))
            unknown << name;
    return unknown;
}

QByteArray MeasurementText::header() const
{
    if (m_format == Format::Json)
        return {};
    QByteArray line = "time_s";
    for (size_t i = 0; i < m_columns.size(); ++i)
        line += m_prefixes[i] + schema::measurementColumns().at(m_columns[i]).toLatin1();
    return line + '\n';
}

void MeasurementText::append(QByteArray& text, const Measurement& measurement) const
{
    const bool json = m_format == Format::Json;
    if (json)
        text.append("{\"time_s\":");
    appendTime(text, measurement.at);
    for (size_t i = 0; i < m_columns.size(); ++i) {
        text.append(m_prefixes[i]);
        const float value =
            measurement.values.*schema::cMeasurementMembers.at(static_cast<size_t>(m_columns[i]));
        if (std::isfinite(value))
            appendNumber(text, value);
        else if (json)
            text.append("null");
    }
    text.append(json ? "}\n" : "\n");
}

} // namespace recording
