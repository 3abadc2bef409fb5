// SPDX-License-Identifier: GPL-3.0-or-later
#include "qmlsupport/ChartSeriesFiller.h"

#include <QValueAxis>
#include <QXYSeries>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

double finiteOrZero(double value)
{
    return std::isfinite(value) ? value : 0.0;
}

void replacePoints(QObject* series, const QVector<qreal>& values, double firstX, double stepX, double lowest)
{
    auto* xySeries = qobject_cast<QtCharts::QXYSeries*>(series);
    if (!xySeries)
        return;
    QVector<QPointF> points;
    points.reserve(values.size());
    for (const qreal value : values)
        points.append({firstX + points.size() * stepX, std::max(finiteOrZero(value), lowest)});
    xySeries->replace(points);
}

} // namespace

void ChartSeriesFiller::fill(QObject* series, const QVector<qreal>& values, double firstX, double stepX) const
{
    replacePoints(series, values, firstX, stepX, std::numeric_limits<double>::lowest());
}

void ChartSeriesFiller::fillNonNegative(QObject* series, const QVector<qreal>& values, double firstX,
                                        double stepX) const
{
    replacePoints(series, values, firstX, stepX, 0.0);
}

void ChartSeriesFiller::fillThinned(QObject* series, const QJSValue& values, int stride, double stepX) const
{
    auto* xySeries = qobject_cast<QtCharts::QXYSeries*>(series);
    if (!xySeries || stride < 1)
        return;
    const quint32 length = values.property(QStringLiteral("length")).toUInt();
    QVector<QPointF> points;
    points.reserve(int(length / quint32(stride)) + 1);
    for (quint32 i = 0; i < length; i += quint32(stride))
        points.append({i * stepX, finiteOrZero(values.property(i).toNumber())});
    xySeries->replace(points);
}

void ChartSeriesFiller::setRange(QObject* axis, double minimum, double maximum) const
{
    if (auto* valueAxis = qobject_cast<QtCharts::QValueAxis*>(axis))
        valueAxis->setRange(minimum, maximum);
}
