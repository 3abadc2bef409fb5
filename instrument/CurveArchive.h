// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <QVariantList>
#include <QVariantMap>

#include <optional>

/// A recorded voltage and current curve with its metadata, as it is kept on disk: a JSON file that can be
/// loaded back and a CSV file of the same samples for spreadsheets.
struct CurveArchive
{
    enum class LoadStatus { Loaded, NotOpened, Invalid };

    /// The name of an archive written at \a time (local), for example "curve_20260301_140509.json".
    static QString fileName(const QDateTime& time);
    /// The path of the CSV file that belongs to the archive at \a jsonPath, which ends in ".json".
    static QString csvPath(const QString& jsonPath);

    /// The JSON text: one object with sorted keys, indented as QJsonDocument does it.
    QByteArray toJson() const;
    /// The CSV text: "index,time_sec,voltage,current", then a line for every sample of the longer list; reals
    /// with six significant digits, 0 where the shorter list has ended.
    QByteArray toCsv() const;
    /// What the interface gets: "filePath", "createdAt", "deviceId", "deviceVersion", "sampleIntervalSec",
    /// "voltageSamples" and "currentSamples".
    QVariantMap toMap(const QString& filePath) const;

    /**
     * The archive in the JSON object \a text. Missing and mistyped members give empty values; nothing when
     * the text is no JSON object or too large to be read at once (64 MiB, two million samples).
     */
    static std::optional<CurveArchive> fromJson(const QByteArray& text);

    /// Reads the archive at \a path into \a archive, which stays as it is when that fails.
    static LoadStatus load(const QString& path, CurveArchive& archive);

    /**
     * Writes the JSON file to \a jsonPath and the CSV file, with the line ends of the system, beside it, each
     * atomically. False when the JSON file could not be written; a CSV file that cannot be written is left
     * out.
     */
    bool save(const QString& jsonPath) const;

    /// Local time of writing, ISO 8601 without zone.
    QString createdAt;
    QString deviceId;
    QString deviceVersion;
    /// Time between samples in seconds.
    double sampleIntervalSec = 0;
    /// In volts, in order. Written as 0: what is no finite number.
    QVariantList voltageSamples;
    /// In amperes, the same way.
    QVariantList currentSamples;
};
