// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "recording/RecordingData.h"

#include <QByteArray>
#include <QStringList>

#include <vector>

namespace recording {

/// Writes measurements as lines of text with some of the fourteen values. Numbers have "." as decimal point
/// and the fewest digits that give the same value again; missing values are empty in CSV and null in JSON.
class MeasurementText
{
public:
    enum class Format { Csv, Tsv, Json };

    /// \a columns are names of schema::measurementColumns(); an empty list stands for all.
    MeasurementText(Format format, const QStringList& columns);

    /// Returns the names in \a columns that do not exist.
    static QStringList unknownColumns(const QStringList& columns);

    /// Returns the header line, "time_s,main_voltage,…"; empty for JSON.
    QByteArray header() const;
    /// Appends a line with its line end to \a text. The time is in seconds since the start of the recording.
    void append(QByteArray& text, const Measurement& measurement) const;

private:
    Format m_format;
    std::vector<int> m_columns;
    /// What stands in front of each value: a separator, or in JSON the name.
    std::vector<QByteArray> m_prefixes;
};

} // namespace recording
