// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import QtTest 1.12
import GenControl.ScreenTools 1.0

import "qrc:/qml/GenControl/ScreenTools/ScreenMetrics.js" as ScreenMetrics

TestCase {
    name: "ScreenTools"

    function cleanup() {
        ScreenTools._applyBasePointSize()
    }

    function test_metrics_data() {
        return [
            { tag: "7 px becomes 8", result: ScreenMetrics.evenExtent(7), expected: 8 },
            { tag: "6.9 px becomes 6", result: ScreenMetrics.evenExtent(6.9), expected: 6 },
            { tag: "fit 1280x720", result: ScreenMetrics.fitScale(1280, 720), expected: 720 / 810 },
            { tag: "fit has a lower limit", result: ScreenMetrics.fitScale(800, 600), expected: 0.82 },
            { tag: "fit never enlarges", result: ScreenMetrics.fitScale(3840, 2160), expected: 1 },
            { tag: "compact 1280x720", result: ScreenMetrics.isCompactDesktop(false, 1280, 720), expected: true },
            { tag: "compact by height", result: ScreenMetrics.isCompactDesktop(false, 1920, 759), expected: true },
            { tag: "not compact", result: ScreenMetrics.isCompactDesktop(false, 1366, 760), expected: false },
            { tag: "mobile is not compact", result: ScreenMetrics.isCompactDesktop(true, 320, 480), expected: false },
            { tag: "touch target", result: ScreenMetrics.minTouchPixels(10, 3.78, 16, 1080), expected: 38 },
            { tag: "touch target, just fits", result: ScreenMetrics.minTouchPixels(10, 1.5, 16, 100), expected: 15 },
            { tag: "touch target, tiny screen", result: ScreenMetrics.minTouchPixels(10, 8, 16, 240), expected: 48 },
            { tag: "indicator is odd", result: ScreenMetrics.indicatorSize(16, false), expected: 17 },
            { tag: "indicator, mobile", result: ScreenMetrics.indicatorSize(16, true), expected: 25 },
            { tag: "points, desktop", result: ScreenMetrics.platformPointSize(false, false, false, 1920, 9), expected: 9 },
            { tag: "points, small tablet", result: ScreenMetrics.platformPointSize(true, true, false, 569, 9), expected: 12 },
            { tag: "points, tiny phone", result: ScreenMetrics.platformPointSize(false, true, true, 300, 9), expected: 11 }
        ]
    }

    function test_metrics(data) {
        compare(data.result, data.expected)
    }

    function test_everySizeFollowsTheBaseFont() {
        for (var points = 7; points < 15; ++points) {
            ScreenTools._setBasePointSize(points)
            compare(ScreenTools.defaultFontPointSize, points)
            compare(ScreenTools.defaultFontPixelWidth % 2, 0)
            compare(ScreenTools.defaultFontPixelHeight % 2, 0)
            verify(ScreenTools.defaultFontPixelWidth > 0)
            compare(ScreenTools.largeFontPointSize, points * 1.6)
            compare(ScreenTools.implicitButtonWidth, ScreenTools.defaultFontPixelWidth * 5)
            compare(ScreenTools.toolbarHeight, ScreenTools.defaultFontPixelHeight * 3)
        }
    }
}
