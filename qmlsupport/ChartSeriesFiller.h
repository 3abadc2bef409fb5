// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QJSValue>
#include <QObject>
#include <QVector>

/**
 * Fills the series of a chart from JavaScript arrays and moves its axes: the QML singleton
 * "ChartSeriesFiller". Lives on the GUI thread.
 *
 * From QML a series can only be filled point by point and an axis only moved end by end, and the chart lays
 * itself out after each; here both are one step.
 */
class ChartSeriesFiller : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// Replaces the points of \a series (a line series of a chart) by \a values, the first at x = \a firstX
    /// and each next one \a stepX further on. What is no finite number becomes 0.
    Q_INVOKABLE void fill(QObject* series, const QVector<qreal>& values, double firstX, double stepX) const;

    /// The same with negative values shown as 0, for what cannot be negative.
    Q_INVOKABLE void fillNonNegative(QObject* series, const QVector<qreal>& values, double firstX,
                                     double stepX) const;

    /// Replaces the points of \a series by every \a stride-th (1 or more) of the array \a values from the
    /// first on, value i at x = i * \a stepX. Only these are taken out of the array. What is no finite number
    /// becomes 0.
    Q_INVOKABLE void fillThinned(QObject* series, const QJSValue& values, int stride, double stepX) const;

    /// Sets both ends of the value axis \a axis in one step.
    Q_INVOKABLE void setRange(QObject* axis, double minimum, double maximum) const;
};
