// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QJSValue>
#include <QObject>
#include <QVector>

/**
 * Fills the series of a chart from JavaScript arrays and moves its axes: the QML singleton
 * "ChartSeriesFiller". Lives on the GUI thread.
 *
 * QML can add points only one by one, and can move an axis only one end at a time. The chart lays itself out
 * after each of these steps. This class does each change in one step.
 */
class ChartSeriesFiller : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// Replaces the points of \a series (a line series of a chart) by \a values. The first point is at
    /// x = \a firstX; the distance between points is \a stepX. Non-finite values become 0.
    Q_INVOKABLE void fill(QObject* series, const QVector<qreal>& values, double firstX, double stepX) const;

    /// The same, but negative values become 0.
    Q_INVOKABLE void fillNonNegative(QObject* series, const QVector<qreal>& values, double firstX,
                                     double stepX) const;

    /// Replaces the points of \a series by every \a stride-th (1 or more) element of the array \a values,
    /// starting with the first. Value i is at x = i * \a stepX. Only these elements are read. Non-finite
    /// values become 0.
    Q_INVOKABLE void fillThinned(QObject* series, const QJSValue& values, int stride, double stepX) const;

    /// Sets both ends of the value axis \a axis in one step.
    Q_INVOKABLE void setRange(QObject* axis, double minimum, double maximum) const;
};
