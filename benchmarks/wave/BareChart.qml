// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import QtQuick.Window 2.12
import QtCharts 2.3

/// The floor: a chart with two value axes and as many series as the one it is compared with, and nothing else.
Window {
    property int seriesCount: 2
    property bool axesShown: true
    readonly property var series: [_first, _second, _third]

    visible: true
    color: "black"

    ChartView {
        id: _chart

        anchors.fill: parent
        antialiasing: true
        legend.visible: false
        theme: ChartView.ChartThemeDark

        ValueAxis { id: _x; min: 0; max: 320; tickCount: 21; labelsVisible: false; visible: axesShown }
        ValueAxis { id: _left; min: 0; max: 6; tickCount: 11; visible: axesShown }
        ValueAxis { id: _right; min: 0; max: 7; tickCount: 11; visible: axesShown }
        LineSeries { id: _first; axisX: _x; axisY: _left; width: 2.4 }
        LineSeries { id: _second; axisX: _x; axisYRight: _right; width: 2.4 }
        LineSeries { id: _third; axisX: _x; axisY: _left; width: 2.2; visible: seriesCount > 2 }
    }

    function setSpan(points) {
        _x.max = points - 1
    }

    // Curves as thick and in the same area as on `chart`, so that as many pixels are painted.
    function drawLike(chart) {
        _chart.plotArea = chart.plotArea
        _first.width = chart.series(0).width
        _second.width = chart.series(1).width
    }
}
