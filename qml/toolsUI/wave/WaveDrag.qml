// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.15

import "WaveView.js" as WaveView

/// State of a drag of the chart: where it began, in pixels and as the first sample in view.
QtObject {
    property bool active: false
    property real startX: 0
    property int startIndex: 0
    property int lastIndex: -1

    function begin(x, viewStart) {
        active = true
        startX = x
        startIndex = viewStart
        lastIndex = viewStart
    }

    /// Returns the first sample in view once the mouse is at x, or -1 when the view stays as it is.
    function moveTo(x, plotWidth, sampleCount, viewCount) {
        if (!active)
            return -1
        var start = WaveView.clampStart(WaveView.draggedStart(startIndex, x - startX, plotWidth, viewCount), sampleCount,
                                        viewCount)
        if (start === lastIndex)
            return -1
        lastIndex = start
        return start
    }

    function end() {
        active = false
        lastIndex = -1
    }
}
