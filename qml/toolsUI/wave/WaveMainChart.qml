// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.15
import QtCharts 2.3
import ChartSeriesFiller 1.0
import GenControl.ScreenTools 1.0

import "../../customize"
import "WaveView.js" as WaveView

/// The chart of the samples in view with its labels. Cursor and input are laid over it by the page. What stands still
/// lies around the chart, so that it costs nothing with a tick.
WavePanel {
    id: _panel

    required property WaveAxes axes
    property alias frozen: _chart.frozen
    property alias showVoltage: _voltageSeries.visible
    property alias showStandard: _standardSeries.visible
    /// As WaveTimeLabels takes them.
    property alias timeTicks: _timeLabels.ticks
    /// Items as large as the chart, above it.
    default property alias overlay: _overlay.data

    readonly property alias chart: _chart
    property alias frozenWidth: _chart.frozenWidth
    property alias frozenHeight: _chart.frozenHeight
    readonly property rect plotArea: _chart.plotArea
    // A chart without a size is not narrow: the labels of the usual width are then created only once.
    readonly property bool _narrow: width > 0 && width < ScreenTools.defaultFontPixelWidth * 95
    readonly property int _labelSize: _narrow ? 12 : 16
    readonly property int _tickCount: _narrow ? 6 : 11
    // Between a value axis and its labels.
    readonly property real _labelGap: 8
    // Room around the plot for the thickness of a curve.
    readonly property real _bleed: 2

    objectName: "waveChartPanel"

    /// Shows `count` samples from index `start` on within the limits of the axes, and the comparison curve from there on.
    function drawView(voltages, currents, comparison, start, count) {
        var time = WaveView.timeAxis(start, count)
        ChartSeriesFiller.setRange(_timeAxis, time.min, time.max)
        ChartSeriesFiller.setRange(_voltageAxis, axes.voltageMin, axes.voltageMax)
        ChartSeriesFiller.setRange(_currentAxis, axes.currentMin, axes.currentMax)
        ChartSeriesFiller.fill(_voltageSeries, voltages.slice(start, start + count), start, 1)
        ChartSeriesFiller.fill(_standardSeries, comparison, start, 1)
        ChartSeriesFiller.fillNonNegative(_currentSeries, currents.slice(start, start + count), start, 1)
    }

    Item {
        id: _plot

        anchors.fill: parent
        anchors.leftMargin: Math.ceil(_voltageLabels.implicitWidth + 2.5 * _panel._labelGap)
        anchors.rightMargin: Math.ceil(_currentLabels.implicitWidth + 2.5 * _panel._labelGap)
        anchors.topMargin: _panel._labelSize
        anchors.bottomMargin: _timeLabels.height + 2 * _panel._labelGap

        WaveGrid {
            anchors.fill: parent
            rows: _panel._tickCount
        }

        WaveChart {
            id: _chart

            objectName: "waveChart"
            x: -_panel._bleed
            y: -_panel._bleed
            fullWidth: _plot.width + 2 * _panel._bleed
            fullHeight: _plot.height + 2 * _panel._bleed
            plotArea: Qt.rect(_panel._bleed, _panel._bleed, Math.max(1, width - 2 * _panel._bleed),
                              Math.max(1, height - 2 * _panel._bleed))

            // Not visible: an axis that moves lays out its labels anew each time, shown or not.
            ValueAxis { id: _timeAxis; min: 0; max: 59; visible: false }
            ValueAxis { id: _voltageAxis; min: 0; max: 6; visible: false }
            ValueAxis { id: _currentAxis; min: 0; max: 8; visible: false }
            LineSeries {
                id: _standardSeries

                name: "标准曲线"
                axisX: _timeAxis
                axisY: _voltageAxis
                color: PageStyle.waveStandard
                width: 2.2
                style: Qt.DashLine
            }
            LineSeries {
                id: _voltageSeries

                name: "电压 (V)"
                axisX: _timeAxis
                axisY: _voltageAxis
                color: PageStyle.waveLiveVoltage
                width: 2.4
            }
            LineSeries {
                id: _currentSeries

                name: "电流 (mA)"
                axisX: _timeAxis
                axisYRight: _currentAxis
                color: PageStyle.waveCurrent
                width: 2.4
            }
        }

        Item {
            id: _overlay

            x: _chart.x
            y: _chart.y
            width: _chart.fullWidth
            height: _chart.fullHeight
        }
    }

    WaveAxisLabels {
        id: _voltageLabels

        anchors.right: _plot.left
        anchors.rightMargin: _panel._labelGap
        anchors.top: _plot.top
        anchors.bottom: _plot.bottom
        minimum: _panel.axes.voltageMin
        maximum: _panel.axes.voltageMax
        tickCount: _panel._tickCount
        decimals: 1
        unit: " V"
        color: PageStyle.waveVoltage
        pixelSize: _panel._labelSize
        alignRight: true
    }

    WaveAxisLabels {
        id: _currentLabels

        anchors.left: _plot.right
        anchors.leftMargin: _panel._labelGap
        anchors.top: _plot.top
        anchors.bottom: _plot.bottom
        minimum: _panel.axes.currentMin
        maximum: _panel.axes.currentMax
        tickCount: _panel._tickCount
        decimals: 2
        unit: " A"
        color: PageStyle.waveCurrent
        pixelSize: _panel._labelSize
    }

    WaveTimeLabels {
        id: _timeLabels

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: _plot.bottom
        anchors.topMargin: _panel._labelGap
        plotX: _plot.x
        plotWidth: _plot.width
    }
}
