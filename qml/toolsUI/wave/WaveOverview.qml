// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.15
import QtCharts 2.3
import ChartSeriesFiller 1.0

import "../../customize"
import "../../customize/Format.js" as Format
import "WaveView.js" as WaveView

/// The whole recording in one strip, with the part that the main chart shows marked on it.
WavePanel {
    id: _panel

    required property WaveAxes axes
    property alias frozen: _chart.frozen
    /// As WaveTimeLabels takes them.
    property alias timeTicks: _labels.ticks
    /// Whether the mark is shown, and where, in pixels of this item's strip.
    property bool selectionShown: false
    property real selectionX: 0
    property real selectionWidth: 0

    readonly property alias chart: _chart
    property alias frozenWidth: _chart.frozenWidth
    property alias frozenHeight: _chart.frozenHeight
    readonly property real _plotMargin: 8
    readonly property real plotX: _chart.plotArea.x * _chart.xScale
    readonly property real plotWidth: _chart.plotArea.width * _chart.xScale

    /// The user points at a place of the recording, in pixels of the strip.
    signal placeChosen(real x)

    /// Shows the whole recording, thinned out to at most maxPoints points a curve.
    function drawRecording(voltages, currents, maxPoints, intervalSec) {
        var stride = WaveView.previewStride(voltages.length, maxPoints)
        ChartSeriesFiller.setRange(_timeAxis, 0, WaveView.spanSec(voltages.length, intervalSec))
        ChartSeriesFiller.fillThinned(_voltageSeries, voltages, stride, intervalSec)
        ChartSeriesFiller.fillThinned(_currentSeries, currents, stride, intervalSec)
    }

    Item {
        id: _area

        anchors.fill: parent
        anchors.margins: 2
        anchors.bottomMargin: _labels.height + 4

        WaveChart {
            id: _chart

            objectName: "overviewChart"
            fullWidth: _area.width
            fullHeight: _area.height
            plotArea: Qt.rect(_panel._plotMargin, _panel._plotMargin, Math.max(1, width - 2 * _panel._plotMargin),
                              Math.max(1, height - 2 * _panel._plotMargin))

            ValueAxis { id: _timeAxis; min: 0; max: 0.08; visible: false }
            // Those of the main chart, also when they change while nothing is recorded.
            ValueAxis {
                id: _voltageAxis

                min: _panel.axes.voltageMin
                max: _panel.axes.voltageMax
                visible: false
            }
            ValueAxis {
                id: _currentAxis

                min: _panel.axes.currentMin
                max: _panel.axes.currentMax
                visible: false
            }
            LineSeries {
                id: _voltageSeries

                axisX: _timeAxis
                axisY: _voltageAxis
                color: PageStyle.waveVoltage
                width: 1.4
            }
            LineSeries {
                id: _currentSeries

                axisX: _timeAxis
                axisYRight: _currentAxis
                color: PageStyle.waveCurrent
                width: 1.4
            }
        }

        Rectangle {
            visible: _panel.selectionShown
            x: _panel.selectionX
            y: _chart.plotArea.y * _chart.yScale
            width: _panel.selectionWidth
            height: _chart.plotArea.height * _chart.yScale
            radius: 3
            color: Format.withAlpha(PageStyle.accentCyan, 0.15 * _panel.backgroundOpacity)
            border.width: 1
            border.color: Format.withAlpha(PageStyle.accentCyan, 0.69)
        }

        MouseArea {
            id: _input

            objectName: "overviewInput"
            anchors.fill: parent
            preventStealing: true
            acceptedButtons: Qt.LeftButton
            cursorShape: Qt.PointingHandCursor
            onPressed: function(mouse) { _panel.placeChosen(mouse.x) }
            onPositionChanged: function(mouse) {
                if (_input.pressed)
                    _panel.placeChosen(mouse.x)
            }
        }
    }

    WaveTimeLabels {
        id: _labels

        anchors.left: _area.left
        anchors.right: _area.right
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 2
        plotX: _panel.plotX
        plotWidth: _panel.plotWidth
    }
}
