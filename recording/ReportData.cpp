// SPDX-License-Identifier: GPL-3.0-or-later
#include "recording/ReportData.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <cmath>
#include <limits>

using namespace recording;

namespace report {

namespace {

constexpr double cNaN = std::numeric_limits<double>::quiet_NaN();
constexpr Extent cNothing{cNaN, cNaN, cNaN};
/// Longer recordings are charted by their minutes, so that a week takes no longer to read than a day.
constexpr std::chrono::hours cLongestBySeconds{24};
/// Less than this, in volts or amperes, is noise of an input without anything connected.
constexpr double cLeastSignal = 0.02;

/// Joins extents of which each stands for a number of measurements.
class ExtentSum
{
public:
    void add(const Extent& extent, qint64 count)
    {
        if (!std::isfinite(extent.mean))
            return;
        m_minimum = std::fmin(m_minimum, extent.minimum);
        m_maximum = std::fmax(m_maximum, extent.maximum);
        m_sum += extent.mean * static_cast<double>(count);
        m_count += count;
    }
    Extent extent() const
    {
        return m_count == 0 ? cNothing : Extent{m_minimum, m_sum / static_cast<double>(m_count), m_maximum};
    }

private:
    double m_minimum = cNaN;
    double m_maximum = cNaN;
    double m_sum = 0;
    qint64 m_count = 0;
};

/// Takes the points of the charts in order, joins those of one step and interrupts the lines at gaps.
class PointList
{
public:
    explicit PointList(Data& data) : m_data(data) {}

    void add(const Bucket& bucket)
    {
        const Time start = bucket.start - bucket.start % m_data.step;
        if (m_hasStep && start != m_start)
            finishStep();
        m_hasStep = true;
        m_start = start;
        for (size_t i = 0; i < cChartQuantities.size(); ++i)
            m_sums[i].add(bucket.extent(cChartQuantities[i]), bucket.count);
    }
    void add(const Measurement& measurement)
    {
        Point point{measurement.at, {}};
        for (size_t i = 0; i < cChartQuantities.size(); ++i) {
            const double value = valueOf(measurement.values, cChartQuantities[i]);
            point.extents[i] = {value, value, value};
        }
        append(point);
    }
    /// Adds the step that is under way.
    void finish()
    {
        if (m_hasStep)
            finishStep();
    }

private:
    void finishStep()
    {
        Point point{m_start, {}};
        for (size_t i = 0; i < cChartQuantities.size(); ++i)
            point.extents[i] = m_sums[i].extent();
        append(point);
        m_sums = {};
    }
    void append(const Point& point)
    {
        for (; m_nextGap < m_data.gaps.size() && m_data.gaps[m_nextGap].from < point.at; ++m_nextGap) {
            const Gap& gap = m_data.gaps[m_nextGap];
            Point blank{gap.from + (std::min(gap.to.value_or(point.at), point.at) - gap.from) / 2, {}};
            blank.extents.fill(cNothing);
            if (!m_data.points.empty() && blank.at > m_data.points.back().at)
                m_data.points.push_back(blank);
        }
        m_data.points.push_back(point);
    }

    Data& m_data;
    std::array<ExtentSum, cChartQuantities.size()> m_sums{};
    Time m_start{};
    bool m_hasStep = false;
    size_t m_nextGap = 0;
};

void collectPoints(RecordingReader& reader, Data& data)
{
    PointList points(data);
    if (data.info.rows <= cMostPoints) {
        reader.measurements({}, [&points](const Measurement& measurement) {
            points.add(measurement);
            return true;
        });
        return;
    }
    const Level level = data.info.duration <= cLongestBySeconds ? Level::Second : Level::Minute;
    const Time length = bucketLength(level);
    data.step = length * std::max<qint64>(1, (data.info.duration / length + cMostPoints - 1) / cMostPoints);
    reader.buckets(level, {}, [&points](const Bucket& bucket) {
        points.add(bucket);
        return true;
    });
    points.finish();
}

QByteArray number(double value)
{
    constexpr int cDigits = 6;
    return std::isfinite(value) ? QByteArray::number(value, 'g', cDigits) : QByteArrayLiteral("null");
}

QByteArray milliseconds(Time time)
{
    return QByteArray::number(std::chrono::duration<double, std::milli>(time).count(), 'f', 1);
}

/// Returns \a text as a JSON string without "<", which could end the script element.
QByteArray quoted(const QString& text)
{
    QByteArray list = QJsonDocument(QJsonArray{text}).toJson(QJsonDocument::Compact);
    return list.mid(1, list.size() - 2).replace('<', "\\u003c");
}

QByteArray seriesJson(const Data& data, size_t quantity)
{
    QByteArray json = "[";
    for (const Point& point : data.points) {
        const Extent& extent = point.extents[quantity];
        if (json.size() > 1)
            json += ',';
        if (data.step > Time(0) && std::isfinite(extent.mean))
            json +=
                '[' + number(extent.minimum) + ',' + number(extent.mean) + ',' + number(extent.maximum) + ']';
        else
            json += number(extent.mean);
    }
    return json + ']';
}

} // namespace

bool Data::isUsed(Supply supply) const
{
    const bool main = supply == Supply::Main;
    const Extent& voltage = extent(main ? Quantity::MainVoltage : Quantity::TypeCVoltage);
    const Extent& current = extent(main ? Quantity::MainCurrent : Quantity::TypeCCurrent);
    // A comparison with NaN is false.
    return std::fabs(voltage.maximum) > cLeastSignal || std::fabs(current.maximum) > cLeastSignal ||
           std::fabs(current.minimum) > cLeastSignal;
}

Data collect(RecordingReader& reader)
{
    Data data;
    data.info = reader.info();
    data.gaps = reader.gaps();
    data.marks = reader.marks();
    data.multimeter = reader.multimeterRecords();
    std::array<ExtentSum, cQuantityCount> sums{};
    reader.buckets(Level::Minute, {}, [&sums](const Bucket& bucket) {
        for (size_t i = 0; i < sums.size(); ++i)
            sums[i].add(bucket.extents[i], bucket.count);
        return true;
    });
    for (size_t i = 0; i < sums.size(); ++i)
        data.extents[i] = sums[i].extent();
    collectPoints(reader, data);
    return data;
}

QByteArray chartJson(const Data& data, const std::array<QString, cSupplyCount>& names)
{
    constexpr std::array<const char*, 3> cQuantityKeys{"voltage", "current", "power"};
    constexpr std::array<const char*, cSupplyCount> cColours{"main", "type-c"};
    const qint64 startMs = data.info.start.wallUs / 1000 + data.info.start.utcOffsetSeconds * 1000LL -
                           std::chrono::duration_cast<std::chrono::milliseconds>(data.info.start.at).count();
    QByteArray json = "{\"startMs\":" + QByteArray::number(startMs) +
                      ",\"summed\":" + (data.step > Time(0) ? "true" : "false") + ",\"times\":[";
    for (size_t i = 0; i < data.points.size(); ++i)
        json += (i == 0 ? "" : ",") + milliseconds(data.points[i].at);
    json += "],\"supplies\":[";
    bool first = true;
    for (const Supply supply : {Supply::Main, Supply::TypeC}) {
        const auto index = static_cast<size_t>(supply);
        if (!data.isUsed(supply) && (supply == Supply::TypeC || data.isUsed(Supply::TypeC)))
            continue;
        json += (first ? "{\"name\":" : ",{\"name\":") + quoted(names.at(index)) + ",\"colour\":\"" +
                cColours.at(index) + '"';
        first = false;
        for (size_t i = 0; i < cQuantityKeys.size(); ++i)
            json += ",\"" + QByteArray(cQuantityKeys.at(i)) +
                    "\":" + seriesJson(data, index * cQuantityKeys.size() + i);
        json += '}';
    }
    json += "],\"gaps\":[";
    for (size_t i = 0; i < data.gaps.size(); ++i)
        json += (i == 0 ? "[" : ",[") + milliseconds(data.gaps[i].from) + ',' +
                milliseconds(data.gaps[i].to.value_or(data.info.duration)) + ']';
    json += "],\"marks\":[";
    for (size_t i = 0; i < data.marks.size(); ++i)
        json += (i == 0 ? "" : ",") + milliseconds(data.marks[i].at);
    return json + "]}";
}

} // namespace report
