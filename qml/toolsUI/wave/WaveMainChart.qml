// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import QtCharts 2.3
import ChartSeriesFiller 1.0
import GenControl.ScreenTools 1.0

import "WaveView.js" as WaveView

/// The chart of the samples in view, with its cursor, its labels and what mouse and keyboard do on it. The chart
/// itself paints the curves only: what stands still lies around it and costs nothing with a tick.
WavePanel {
    id: _panel

    readonly property alias chart: _chart
    readonly property alias input: _input
    readonly property rect plotArea: _chart.plotArea
    readonly property bool _narrow: width < ScreenTools.defaultFontPixelWidth * 95
    readonly property int _labelSize: _narrow ? 12 : 16
    readonly property int _tickCount: _narrow ? 6 : 11
    // Between a value axis and its labels.
    readonly property real _labelGap: 8
    // Room around the plot for the thickness of a curve.
    readonly property real _bleed: 2

    objectName: "waveChartPanel"
    onPlotAreaChanged: page.placeOnChart()

    // Shows the page's view of the samples; the page has brought its limits up to date.
    function drawView() {
        var start = page._viewStartIndex
        var time = WaveView.timeAxis(start, page._viewSampleCount)
        // What lies beyond the widest view is never seen, however long a loaded curve is.
        var standardCount = page._showStandardCurve ? page._defaultViewSamples : 0
        ChartSeriesFiller.setRange(_timeAxis, time.min, time.max)
        ChartSeriesFiller.setRange(_voltageAxis, page._voltageAxisMin, page._voltageAxisMax)
        ChartSeriesFiller.setRange(_currentAxis, page._currentAxisMin, page._currentAxisMax)
        ChartSeriesFiller.fill(_voltageSeries, page._voltageSamples.slice(start, start + page._viewSampleCount), start,
                               1)
        ChartSeriesFiller.fill(_standardSeries, page._standardSamples.slice(0, standardCount), start, 1)
        ChartSeriesFiller.fillNonNegative(_currentSeries,
                                          page._currentSamples.slice(start, start + page._viewSampleCount), start, 1)
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

        ChartView {
            id: _chart

            // The chart at rest; while the window is being resized it keeps its size and is scaled instead.
            readonly property real _fullWidth: _plot.width + 2 * _panel._bleed
            readonly property real _fullHeight: _plot.height + 2 * _panel._bleed

            objectName: "waveChart"
            x: -_panel._bleed
            y: -_panel._bleed
            width: _panel.page._frozenMainChartWidth > 0 ? _panel.page._frozenMainChartWidth : _fullWidth
            height: _panel.page._frozenMainChartHeight > 0 ? _panel.page._frozenMainChartHeight : _fullHeight
            transform: Scale {
                xScale: _chart.width > 0 ? _chart._fullWidth / _chart.width : 1
                yScale: _chart.height > 0 ? _chart._fullHeight / _chart.height : 1
            }
            antialiasing: true
            animationOptions: ChartView.NoAnimation
            legend.visible: false
            backgroundColor: "transparent"
            backgroundRoundness: 0
            plotAreaColor: "transparent"
            margins { left: 0; top: 0; right: 0; bottom: 0 }
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
                visible: _panel.page._showStandardCurve
                color: "#3A7AFE"
                width: 2.2
                style: Qt.DashLine
            }
            LineSeries {
                id: _voltageSeries

                name: "电压 (V)"
                axisX: _timeAxis
                axisY: _voltageAxis
                visible: _panel.page._showVoltageCurve
                color: "cyan"
                width: 2.4
            }
            LineSeries {
                id: _currentSeries

                name: "电流 (mA)"
                axisX: _timeAxis
                axisYRight: _currentAxis
                color: "#ff4952"
                width: 2.4
            }
        }

        WaveHover {
            x: _chart.x
            y: _chart.y
            width: _chart.width
            height: _chart.height
            page: _panel.page
            plotArea: _chart.plotArea
        }

        WaveChartInput {
            id: _input

            x: _chart.x
            y: _chart.y
            width: _chart._fullWidth
            height: _chart._fullHeight
            page: _panel.page
            chart: _chart
        }
    }

    WaveAxisLabels {
        id: _voltageLabels

        anchors.right: _plot.left
        anchors.rightMargin: _panel._labelGap
        anchors.top: _plot.top
        anchors.bottom: _plot.bottom
        minimum: _panel.page._voltageAxisMin
        maximum: _panel.page._voltageAxisMax
        tickCount: _panel._tickCount
        decimals: 1
        unit: " V"
        color: "#32E8C3"
        pixelSize: _panel._labelSize
        alignRight: true
    }

    WaveAxisLabels {
        id: _currentLabels

        anchors.left: _plot.right
        anchors.leftMargin: _panel._labelGap
        anchors.top: _plot.top
        anchors.bottom: _plot.bottom
        minimum: _panel.page._currentAxisMin
        maximum: _panel.page._currentAxisMax
        tickCount: _panel._tickCount
        decimals: 2
        unit: " A"
        color: "#ff4952"
        pixelSize: _panel._labelSize
    }

    WaveTimeLabels {
        id: _timeLabels

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: _plot.bottom
        anchors.topMargin: _panel._labelGap
        ticks: _panel.page._mainTimeTicks
        plotX: _plot.x
        plotWidth: _plot.width
    }
}
