// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.15
import QtCharts 2.3

/// A chart that paints its curves only. While frozen it keeps its size and is scaled into its place instead of being
/// painted again.
ChartView {
    id: _chart

    property bool frozen: false
    /// The chart's place; its size is this one unless it is frozen.
    property real fullWidth: 0
    property real fullHeight: 0

    readonly property real xScale: width > 0 ? fullWidth / width : 1
    readonly property real yScale: height > 0 ? fullHeight / height : 1
    /// Size to keep while frozen, else 0.
    property real frozenWidth: 0
    property real frozenHeight: 0

    onFrozenChanged: {
        frozenWidth = frozen ? width : 0
        frozenHeight = frozen ? height : 0
    }

    width: frozenWidth > 0 ? frozenWidth : fullWidth
    height: frozenHeight > 0 ? frozenHeight : fullHeight
    transform: Scale {
        xScale: _chart.xScale
        yScale: _chart.yScale
    }
    antialiasing: true
    animationOptions: ChartView.NoAnimation
    legend.visible: false
    backgroundColor: "transparent"
    backgroundRoundness: 0
    plotAreaColor: "transparent"
    margins { left: 0; top: 0; right: 0; bottom: 0 }
}
