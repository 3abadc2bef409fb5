// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import QtTest 1.12

import "qrc:/qml/toolsUI/wave/WaveView.js" as WaveView

TestCase {
    name: "WaveView"

    readonly property var _ranges: [0.7, 1.4, 3.5, 7]

    function test_zoomSteps_data() {
        return [{ tag: "in from the widest", step: 1, counts: [60, 49, 40, 33, 27, 22, 18, 15, 15] },
                { tag: "out from the deepest", step: -1, counts: [15, 18, 22, 27, 33, 40, 49, 60, 60] }]
    }

    function test_zoomSteps(row) {
        var count = row.counts[0]
        for (var i = 1; i < row.counts.length; ++i) {
            count = WaveView.zoomedCount(count, row.step, 15, 60)
            compare(count, row.counts[i])
        }
    }

    function test_viewStaysInTheRecording_data() {
        return [{ tag: "empty", start: 5, samples: 0, view: 60, clamped: 0, visible: 0 },
                { tag: "fewer than the view", start: 5, samples: 30, view: 60, clamped: 0, visible: 30 },
                { tag: "as many as the view", start: 5, samples: 60, view: 60, clamped: 0, visible: 60 },
                { tag: "before the start", start: -7, samples: 200, view: 60, clamped: 0, visible: 60 },
                { tag: "within", start: 70, samples: 200, view: 60, clamped: 70, visible: 60 },
                { tag: "beyond the end", start: 190, samples: 200, view: 60, clamped: 140, visible: 60 }]
    }

    function test_viewStaysInTheRecording(row) {
        var start = WaveView.clampStart(row.start, row.samples, row.view)
        compare(start, row.clamped)
        compare(WaveView.visibleCount(start, row.samples, row.view), row.visible)
    }

    function test_trimming() {
        compare(WaveView.trimCount(3000, 3000), 0)
        compare(WaveView.trimCount(3001, 3000), 300)
        compare(WaveView.trimCount(101, 100), 60)
    }

    function test_zoomKeepsTheCentre() {
        for (var count = 60, start = 100; count > 15;) {
            var centre = WaveView.centreOf(start, count)
            count = WaveView.zoomedCount(count, 1, 15, 60)
            start = WaveView.startAround(centre, count)
            compare(WaveView.centreOf(start, count), 130)
        }
    }

    function test_voltageAxis_data() {
        return [{ tag: "nothing", samples: [], min: 0, max: 7 },
                { tag: "within the fixed limits", samples: [4.9, 5.2], min: 0, max: 7 },
                { tag: "above", samples: [5, 9.3], min: 0, max: 10 },
                { tag: "below", samples: [-3.2], min: 0, max: 7 },
                { tag: "not a number", samples: [NaN, undefined, "x", 8], min: 0, max: 9 }]
    }

    function test_voltageAxis(row) {
        var axis = WaveView.automaticVoltageAxis(WaveView.rangeOf(row.samples, 0, row.samples.length,
                                                                  WaveView.fixedVoltageRange()))
        compare(axis.min, row.min)
        compare(axis.max, row.max)
    }

    function test_rangeOfLooksAtTheViewOnly() {
        var range = WaveView.rangeOf([9, 1, 2, 3, 9], 1, 3, { "min": 2, "max": 2 })
        compare(range.min, 1)
        compare(range.max, 3)
        compare(WaveView.rangeOf([1], -5, 100, { "min": 0, "max": 0 }).max, 1)
    }

    function test_currentRange_data() {
        return [{ tag: "none", value: 0, index: 0 }, { tag: "full scale", value: 0.7, index: 0 },
                { tag: "2 A", value: 2, index: 2 }, { tag: "8 A", value: 8, index: 3 },
                { tag: "negative", value: -1, index: 0 }, { tag: "not a number", value: NaN, index: 0 }]
    }

    function test_currentRange(row) {
        compare(WaveView.rangeIndexFor(row.value, _ranges), row.index)
    }

    function test_timeAxis() {
        compare(WaveView.timeAxis(10, 60), { "min": 10, "max": 69 })
        compare(WaveView.timeAxis(10, 1), { "min": 10, "max": 11 })
    }

    function test_timeLabels() {
        compare(WaveView.responsiveTickCount(10, 6, 3, 8), 3)
        compare(WaveView.responsiveTickCount(512, 6, 3, 8), 5)
        compare(WaveView.responsiveTickCount(5000, 6, 3, 8), 6)
        compare(WaveView.responsiveTickCount(100, 6, 3, 0), 6)
        var ticks = WaveView.timeTicks(3, 3599, 4)
        compare(ticks, [{ "ratio": 0, "label": "00:59:59" }, { "ratio": 0.5, "label": "01:00:01" },
                        { "ratio": 1, "label": "01:00:03" }])
        compare(WaveView.timeTicks(3, NaN, 4)[1].label, "00:00:00")
        fuzzyCompare(WaveView.spanSec(60, 0.08), 4.72, 1e-9)
        fuzzyCompare(WaveView.spanSec(0, 0.08), 0.08, 1e-9)
    }

    function test_overviewShowsAtMost320Points_data() {
        return [{ tag: "0", samples: 0, stride: 1 }, { tag: "320", samples: 320, stride: 1 },
                { tag: "321", samples: 321, stride: 2 }, { tag: "1000", samples: 1000, stride: 4 },
                { tag: "3000", samples: 3000, stride: 10 }]
    }

    function test_overviewShowsAtMost320Points(row) {
        compare(WaveView.previewStride(row.samples, 320), row.stride)
    }

    function test_overviewMapsToSamples_data() {
        return [{ tag: "left of it", x: -50, index: 0 }, { tag: "left end", x: 20, index: 0 },
                { tag: "middle", x: 120, index: 500 }, { tag: "right end", x: 220, index: 1000 },
                { tag: "right of it", x: 900, index: 1000 }]
    }

    function test_overviewMapsToSamples(row) {
        compare(WaveView.sampleAtPreview(row.x, 20, 200, 1001), row.index)
    }

    function test_overviewWithoutWidth() {
        compare(WaveView.sampleAtPreview(5, 0, 0, 1001), 0)
        compare(WaveView.selectionWidth(0, 60, 1000), 0)
    }

    function test_selection_data() {
        return [{ tag: "no samples", plot: 300, samples: 0, start: 0, width: 300, x: 20 },
                { tag: "all in view", plot: 300, samples: 40, start: 0, width: 300, x: 20 },
                { tag: "half", plot: 300, samples: 120, start: 60, width: 150, x: 170 },
                { tag: "never too narrow to catch", plot: 300, samples: 3000, start: 2940, width: 14, x: 306 },
                { tag: "never wider than the plot", plot: 10, samples: 3000, start: 0, width: 10, x: 20 }]
    }

    function test_selection(row) {
        var width = WaveView.selectionWidth(row.plot, 60, row.samples)
        compare(width, row.width)
        compare(WaveView.selectionX(20, row.plot, width, row.start, WaveView.maxStart(row.samples, 60)), row.x)
    }

    function test_drag() {
        compare(WaveView.draggedStart(100, 50, 600, 60), 95)
        compare(WaveView.draggedStart(100, -50, 600, 60), 105)
        compare(WaveView.draggedStart(100, 4, 600, 60), 100)
        compare(WaveView.draggedStart(100, 50, 0, 60), 100)
    }

    function test_sampleTime() {
        fuzzyCompare(WaveView.sampleTimeSec(50, 101, 100, 0.08), 96, 1e-9)
        compare(WaveView.sampleTimeSec(0, 1001, 10, 0.08), 0)
    }

    function test_generatedCurve() {
        var curve = WaveView.generatedCurve(60)
        compare(curve.length, 60)
        fuzzyCompare(curve[0], 4.6, 1e-9)
        fuzzyCompare(curve[59], 4.6, 1e-9)
        fuzzyCompare(curve[20], 4.6 + 0.35 * Math.sin(40 * Math.PI / 59) + 0.08 * Math.sin(100 * Math.PI / 59), 1e-9)
    }

    function test_localPath_data() {
        return [{ tag: "unix", url: "file:///home/a%20b/c.json", path: "/home/a b/c.json" },
                { tag: "drive", url: "file:///C:/Users/a.json", path: "C:/Users/a.json" },
                { tag: "share", url: "file://server/share/a.json", path: "//server/share/a.json" },
                { tag: "no url", url: "/home/a.json", path: "/home/a.json" }]
    }

    function test_localPath(row) {
        compare(WaveView.localPath(row.url), row.path)
    }
}
