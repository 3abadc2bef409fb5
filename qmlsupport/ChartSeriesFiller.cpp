// SPDX-License-Identifier: GPL-3.0-or-later
#include "qmlsupport/ChartSeriesFiller.h"

#include <QValueAxis>
#include <QXYSeries>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

void replacePoints(QObject* series, const QVector<qreal>& values, double firstX, double stepX, double lowest)
{
    auto* xySeries = qobject_cast<QtCharts::QXYSeries*>(series);
    if (!xySeries)
        return;
    QVector<QPointF> points;
    points.reserve(values.size());
    for (const qreal value : values)
        points.append({firstX + points.size() * stepX, std::isfinite(value) ? std::max(value, lowest) : 0.0});
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

void ChartSeriesFiller::setRange(QObject* axis, double minimum, double maximum) const
{
    if (auto* valueAxis = qobject_cast<QtCharts::QValueAxis*>(axis))
        valueAxis->setRange(minimum, maximum);
}
