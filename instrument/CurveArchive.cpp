// SPDX-License-Identifier: GPL-3.0-or-later
#include "instrument/CurveArchive.h"

#include "storage/JsonFile.h"
#include "storage/TimeText.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>
#include <QTextStream>

#include <algorithm>
#include <cmath>

namespace {

/// Two million samples parse within half a second; no object of an archive has many members.
constexpr jsonfile::Limits cArchiveLimits{64 * 1024 * 1024, 2000000, 100000};

constexpr char cCreatedAtKey[] = "created_at";
constexpr char cDeviceIdKey[] = "device_id";
constexpr char cDeviceVersionKey[] = "device_version";
constexpr char cSampleIntervalKey[] = "sample_interval_sec";
constexpr char cVoltageSamplesKey[] = "voltage_samples";
constexpr char cCurrentSamplesKey[] = "current_samples";

/// \a value as the files can hold it: non-finite values become 0, and so does negative zero.
double finiteOrZero(double value)
{
    return std::isfinite(value) && value != 0.0 ? value : 0.0;
}

QJsonArray samplesToJson(const QVariantList& samples)
{
    QJsonArray elements;
    for (const QVariant& sample : samples)
        elements.append(finiteOrZero(sample.toDouble()));
    return elements;
}

QVariantList samplesFromJson(const QJsonValue& value)
{
    const QJsonArray elements = value.toArray();
    QVariantList samples;
    samples.reserve(elements.size());
    for (const QJsonValue& element : elements)
        samples.append(finiteOrZero(element.toDouble()));
    return samples;
}

std::optional<CurveArchive> fromDocument(const QJsonDocument& document)
{
    if (!document.isObject())
        return std::nullopt;
    const QJsonObject object = document.object();
    CurveArchive archive;
    archive.createdAt = object.value(QLatin1String(cCreatedAtKey)).toString();
    archive.deviceId = object.value(QLatin1String(cDeviceIdKey)).toString();
    archive.deviceVersion = object.value(QLatin1String(cDeviceVersionKey)).toString();
    archive.sampleIntervalSec = object.value(QLatin1String(cSampleIntervalKey)).toDouble();
    archive.voltageSamples = samplesFromJson(object.value(QLatin1String(cVoltageSamplesKey)));
    archive.currentSamples = samplesFromJson(object.value(QLatin1String(cCurrentSamplesKey)));
    return archive;
}

bool replaceFile(const QString& path, const QByteArray& text, QIODevice::OpenMode mode)
{
    QSaveFile file(path);
    return jsonfile::stage(file, text, mode) && file.commit();
}

} // namespace

QString CurveArchive::fileName(const QDateTime& time)
{
    return QStringLiteral("curve_%1.json").arg(timeText(time, QStringLiteral("yyyyMMdd_HHmmss")));
}

QString CurveArchive::csvPath(const QString& jsonPath)
{
    constexpr int cJsonSuffixLength = 5;
    return jsonPath.chopped(cJsonSuffixLength) + QStringLiteral(".csv");
}

QByteArray CurveArchive::toJson() const
{
    const QJsonObject object{{QLatin1String(cCreatedAtKey), createdAt},
                             {QLatin1String(cDeviceIdKey), deviceId},
                             {QLatin1String(cDeviceVersionKey), deviceVersion},
                             {QLatin1String(cSampleIntervalKey), finiteOrZero(sampleIntervalSec)},
                             {QLatin1String(cVoltageSamplesKey), samplesToJson(voltageSamples)},
                             {QLatin1String(cCurrentSamplesKey), samplesToJson(currentSamples)}};
    return QJsonDocument(object).toJson(QJsonDocument::Indented);
}

QByteArray CurveArchive::toCsv() const
{
    QByteArray csv;
    QTextStream stream(&csv);
    stream << "index,time_sec,voltage,current\n";
    const int lineCount = std::max(voltageSamples.size(), currentSamples.size());
    const double interval = finiteOrZero(sampleIntervalSec);
    for (int i = 0; i < lineCount; ++i) {
        stream << i << ',' << finiteOrZero(i * interval) << ','
               << finiteOrZero(voltageSamples.value(i).toDouble()) << ','
               << finiteOrZero(currentSamples.value(i).toDouble()) << '\n';
    }
    stream.flush();
    return csv;
}

QVariantMap CurveArchive::toMap(const QString& filePath) const
{
    return {{QStringLiteral("filePath"), filePath},
            {QStringLiteral("createdAt"), createdAt},
            {QStringLiteral("deviceId"), deviceId},
            {QStringLiteral("deviceVersion"), deviceVersion},
            {QStringLiteral("sampleIntervalSec"), sampleIntervalSec},
            {QStringLiteral("voltageSamples"), voltageSamples},
            {QStringLiteral("currentSamples"), currentSamples}};
}

std::optional<CurveArchive> CurveArchive::fromJson(const QByteArray& text)
{
    return fromDocument(jsonfile::parse(text, cArchiveLimits));
}

CurveArchive::LoadStatus CurveArchive::load(const QString& path, CurveArchive& archive)
{
    const jsonfile::Result result = jsonfile::read(path, cArchiveLimits);
    if (result.status == jsonfile::Status::Missing || result.status == jsonfile::Status::Unreadable)
        return LoadStatus::NotOpened;
    const std::optional<CurveArchive> loaded = fromDocument(result.document);
    if (!loaded)
        return LoadStatus::Invalid;
    archive = *loaded;
    return LoadStatus::Loaded;
}

bool CurveArchive::save(const QString& jsonPath) const
{
    if (!replaceFile(jsonPath, toJson(), QIODevice::WriteOnly))
        return false;
    replaceFile(csvPath(jsonPath), toCsv(), QIODevice::WriteOnly | QIODevice::Text);
    return true;
}
