// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import QtCharts 2.3
import ChartSeriesFiller 1.0

import "../../customize"
import "../../customize/Format.js" as Format
import "WaveView.js" as WaveView

/// The whole recording in one strip, with the part that the main chart shows marked on it.
WavePanel {
    id: _panel

    readonly property alias chart: _chart
    readonly property real _plotMargin: 8
    readonly property real plotX: _chart.plotArea.x * _scale.xScale
    readonly property real plotWidth: _chart.plotArea.width * _scale.xScale

    onPlotWidthChanged: {
        if (page._drawing)
            page.updatePreviewTimeTicks()
    }

    // Shows the page's whole recording, thinned out to what the strip can show.
    function drawRecording() {
        var count = page._voltageSamples.length
        var stride = WaveView.previewStride(count, page._maxPreviewPoints)
        ChartSeriesFiller.setRange(_timeAxis, 0, WaveView.spanSec(count, page._sampleIntervalSec))
        ChartSeriesFiller.fillThinned(_voltageSeries, page._voltageSamples, stride, page._sampleIntervalSec)
        ChartSeriesFiller.fillThinned(_currentSeries, page._currentSamples, stride, page._sampleIntervalSec)
    }

    Item {
        id: _area

        anchors.fill: parent
        anchors.margins: 2
        anchors.bottomMargin: _labels.height + 4

        ChartView {
            id: _chart

            objectName: "overviewChart"
            width: _panel.page._frozenPreviewWidth > 0 ? _panel.page._frozenPreviewWidth : _area.width
            height: _panel.page._frozenPreviewHeight > 0 ? _panel.page._frozenPreviewHeight : _area.height
            transform: Scale {
                id: _scale

                xScale: _chart.width > 0 ? _area.width / _chart.width : 1
                yScale: _chart.height > 0 ? _area.height / _chart.height : 1
            }
            antialiasing: true
            animationOptions: ChartView.NoAnimation
            legend.visible: false
            backgroundColor: "transparent"
            backgroundRoundness: 0
            plotAreaColor: "transparent"
            margins { left: 0; top: 0; right: 0; bottom: 0 }
            plotArea: Qt.rect(_panel._plotMargin, _panel._plotMargin, Math.max(1, width - 2 * _panel._plotMargin),
                              Math.max(1, height - 2 * _panel._plotMargin))

            ValueAxis { id: _timeAxis; min: 0; max: 0.08; visible: false }
            // Those of the main chart, also when they change while nothing is recorded.
            ValueAxis {
                id: _voltageAxis

                min: _panel.page._voltageAxisMin
                max: _panel.page._voltageAxisMax
                visible: false
            }
            ValueAxis {
                id: _currentAxis

                min: _panel.page._currentAxisMin
                max: _panel.page._currentAxisMax
                visible: false
            }
            LineSeries {
                id: _voltageSeries

                axisX: _timeAxis
                axisY: _voltageAxis
                color: "#32E8C3"
                width: 1.4
            }
            LineSeries {
                id: _currentSeries

                axisX: _timeAxis
                axisYRight: _currentAxis
                color: "#ff4952"
                width: 1.4
            }
        }

        Rectangle {
            visible: _panel.page._sampleCount > 0
            x: _panel.page.previewSelectionX()
            y: _chart.plotArea.y * _scale.yScale
            width: _panel.page.previewSelectionWidth()
            height: _chart.plotArea.height * _scale.yScale
            radius: 3
            color: _panel.page.bgColor(PageStyle.accentCyan, 0.15)
            border.width: 1
            border.color: Format.withAlpha(PageStyle.accentCyan, 0.69)
        }

        MouseArea {
            objectName: "overviewInput"
            anchors.fill: parent
            preventStealing: true
            acceptedButtons: Qt.LeftButton
            cursorShape: Qt.PointingHandCursor
            onPressed: _panel.page.setViewCenterFromPreview(mouse.x)
            onPositionChanged: {
                if (pressed)
                    _panel.page.setViewCenterFromPreview(mouse.x)
            }
        }
    }

    WaveTimeLabels {
        id: _labels

        anchors.left: _area.left
        anchors.right: _area.right
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 2
        ticks: _panel.page._previewTimeTicks
        plotX: _panel.plotX
        plotWidth: _panel.plotWidth
    }
}
