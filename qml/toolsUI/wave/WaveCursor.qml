// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.15

import "WaveView.js" as WaveView

/// State of the cursor on the paused chart: its sample, and the pixels of the chart at which the sample is drawn.
QtObject {
    property bool active: false
    property int sampleIndex: -1
    property real voltage: 0
    property real current: 0
    property real timeSec: 0

    property real chartX: 0
    property real voltageY: 0
    property real currentY: 0
    // The read-out keeps clear of this place.
    property real mouseX: 0
    property real mouseY: 0

    /// Moves the cursor to where its sample is drawn. `plot` is the rectangle of the chart's plot.
    function place(plot, viewStart, viewCount, axes) {
        chartX = WaveView.pixelX(sampleIndex, plot, viewStart, viewCount)
        voltageY = WaveView.pixelY(voltage, plot, axes.voltageMin, axes.voltageMax)
        currentY = WaveView.pixelY(Math.max(0, current), plot, axes.currentMin, axes.currentMax)
        mouseX = chartX
        mouseY = Math.min(voltageY, currentY)
    }
}
