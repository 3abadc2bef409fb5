// SPDX-License-Identifier: GPL-3.0-or-later
#include "instrument/CurveArchive.h"

#include "storage/JsonFile.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>

#include <algorithm>
#include <charconv>
#include <cmath>

namespace {

/// Two million samples parse within half a second; no object of an archive has many members.
constexpr jsonfile::Limits kArchiveLimits{64 * 1024 * 1024, 2000000, 100000};

constexpr char kCreatedAtKey[] = "created_at";
constexpr char kDeviceIdKey[] = "device_id";
constexpr char kDeviceVersionKey[] = "device_version";
constexpr char kSampleIntervalKey[] = "sample_interval_sec";
constexpr char kVoltageSamplesKey[] = "voltage_samples";
constexpr char kCurrentSamplesKey[] = "current_samples";

/// Longest number that is written: 17 digits, sign, point and exponent; an index has at most 10.
constexpr int kMaxNumberLength = 32;
constexpr int kCsvPrecision = 6;

/// \a value as the files can hold it: what is no finite number becomes 0, and so does negative zero.
double finiteOrZero(double value)
{
    return std::isfinite(value) && value != 0.0 ? value : 0.0;
}

/// Whether \a value is in the range of measured values, which Qt writes without an exponent.
bool isPlain(double value)
{
    constexpr double kPlainFrom = 1e-4;
    constexpr double kPlainTo = 1e6;
    const double magnitude = std::abs(value);
    return magnitude == 0.0 || (magnitude >= kPlainFrom && magnitude < kPlainTo);
}

/// Writes \a value at \a to as QJsonDocument does and returns the end. std::to_chars gives
/// plain numbers the same text, five times as fast.
char* writeJsonNumber(char* to, double value)
{
    if (isPlain(value))
        return std::to_chars(to, to + kMaxNumberLength, value, std::chars_format::fixed).ptr;
    // Compact, an array of one number is the number between two brackets.
    const QByteArray array = QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact);
    return std::copy(array.cbegin() + 1, array.cend() - 1, to);
}

/// Whether \a magnitude, 0 or 1e-4 to 1e6, lies midway between two numbers of kCsvPrecision digits. May say
/// so of one that is very near, too.
bool isHalfway(double magnitude)
{
    constexpr double kLeastWithAllDigits = 1e5;
    double scaled = magnitude;
    for (double power = 10.0; scaled != 0.0 && scaled < kLeastWithAllDigits; power *= 10.0)
        scaled = magnitude * power;
    return scaled - std::floor(scaled) == 0.5;
}

/// Writes \a value at \a to as QTextStream's smart notation does and returns the end. std::to_chars gives the
/// same digits four times as fast, but rounds halfway values to even where Qt rounds them up.
char* writeCsvNumber(char* to, double value)
{
    if (isPlain(value) && !isHalfway(std::abs(value)))
        return std::to_chars(to, to + kMaxNumberLength, value, std::chars_format::general, kCsvPrecision).ptr;
    const QByteArray text = QByteArray::number(value, 'g', kCsvPrecision);
    return std::copy(text.cbegin(), text.cend(), to);
}

/// The lines of an indented JSON array's elements, one level deep in an object.
QByteArray jsonElements(const QVariantList& samples)
{
    constexpr char kIndent[] = "        ";
    constexpr int kIndentLength = sizeof kIndent - 1;
    QByteArray lines(samples.size() * (kIndentLength + kMaxNumberLength + 2), Qt::Uninitialized);
    char* end = lines.data();
    for (int i = 0; i < samples.size(); ++i) {
        end = std::copy(kIndent, kIndent + kIndentLength, end);
        end = writeJsonNumber(end, finiteOrZero(samples.at(i).toDouble()));
        if (i + 1 < samples.size())
            *end++ = ',';
        *end++ = '\n';
    }
    lines.truncate(int(end - lines.constData()));
    return lines;
}

/// Puts \a samples into the empty array of \a key in the indented object \a json. The text looked for
/// cannot stand inside a JSON string, where quotes and line feeds are escaped.
void fillArray(QByteArray& json, const char* key, const QVariantList& samples)
{
    const QByteArray opening = '"' + QByteArray(key) + "\": [\n";
    json.insert(json.indexOf(opening) + opening.size(), jsonElements(samples));
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
    archive.createdAt = object.value(QLatin1String(kCreatedAtKey)).toString();
    archive.deviceId = object.value(QLatin1String(kDeviceIdKey)).toString();
    archive.deviceVersion = object.value(QLatin1String(kDeviceVersionKey)).toString();
    archive.sampleIntervalSec = object.value(QLatin1String(kSampleIntervalKey)).toDouble();
    archive.voltageSamples = samplesFromJson(object.value(QLatin1String(kVoltageSamplesKey)));
    archive.currentSamples = samplesFromJson(object.value(QLatin1String(kCurrentSamplesKey)));
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
    return QStringLiteral("curve_%1.json").arg(time.toString(QStringLiteral("yyyyMMdd_HHmmss")));
}

QString CurveArchive::csvPath(const QString& jsonPath)
{
    constexpr int kJsonSuffixLength = 5;
    return jsonPath.chopped(kJsonSuffixLength) + QStringLiteral(".csv");
}

QByteArray CurveArchive::toJson() const
{
    const QJsonObject frame{{QLatin1String(kCreatedAtKey), createdAt},
                            {QLatin1String(kDeviceIdKey), deviceId},
                            {QLatin1String(kDeviceVersionKey), deviceVersion},
                            {QLatin1String(kSampleIntervalKey), finiteOrZero(sampleIntervalSec)},
                            {QLatin1String(kVoltageSamplesKey), QJsonArray()},
                            {QLatin1String(kCurrentSamplesKey), QJsonArray()}};
    QByteArray json = QJsonDocument(frame).toJson(QJsonDocument::Indented);
    fillArray(json, kVoltageSamplesKey, voltageSamples);
    fillArray(json, kCurrentSamplesKey, currentSamples);
    return json;
}

QByteArray CurveArchive::toCsv() const
{
    constexpr int kMaxLineLength = 4 * (kMaxNumberLength + 1);
    constexpr int kTypicalLineLength = 40;
    const int lineCount = std::max(voltageSamples.size(), currentSamples.size());
    const double interval = finiteOrZero(sampleIntervalSec);
    QByteArray csv("index,time_sec,voltage,current\n");
    csv.reserve(csv.size() + lineCount * kTypicalLineLength);
    char line[kMaxLineLength];
    for (int i = 0; i < lineCount; ++i) {
        char* end = std::to_chars(line, line + kMaxNumberLength, i).ptr;
        for (const double value :
             {i * interval, voltageSamples.value(i).toDouble(), currentSamples.value(i).toDouble()}) {
            *end++ = ',';
            end = writeCsvNumber(end, finiteOrZero(value));
        }
        *end++ = '\n';
        csv.append(line, int(end - line));
    }
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
    return fromDocument(jsonfile::parse(text, kArchiveLimits));
}

CurveArchive::LoadStatus CurveArchive::load(const QString& path, CurveArchive& archive)
{
    const jsonfile::Result result = jsonfile::read(path, kArchiveLimits);
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
