// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import QtTest 1.12

import "qrc:/qml/toolsUI/wave/WaveView.js" as WaveView

TestCase {
    name: "WaveView"

    readonly property var _ranges: [0.7, 1.4, 3.5, 7]

    function voltageAxis(samples) {
        var axis = WaveView.automaticVoltageAxis(WaveView.rangeOf(samples, 0, samples.length, WaveView.fixedVoltageRange()))
        return [axis.min, axis.max]
    }

    function test_values_data() {
        var runs = WaveView.interruptedAt(WaveView.interruptedAt([], 5, 40), 10, 99)
        var inside = WaveView.rangeOf([9, 1, 2, 3, 9], 1, 3, { "min": 2, "max": 2 })
        return [
            { tag: "trim: a tenth", result: WaveView.trimCount(3001, 3000), expected: 300 },
            { tag: "trim: at least a view", result: WaveView.trimCount(101, 100), expected: 60 },
            { tag: "axis: within the fixed limits", result: voltageAxis([4.9, 5.2]), expected: [0, 7] },
            { tag: "axis: above", result: voltageAxis([5, 9.3]), expected: [0, 10] },
            { tag: "axis: below", result: voltageAxis([-3.2]), expected: [0, 7] },
            { tag: "axis: not a number", result: voltageAxis([NaN, undefined, "x", 8]), expected: [0, 9] },
            { tag: "range of the view only", result: [inside.min, inside.max], expected: [1, 3] },
            { tag: "current: full scale", result: WaveView.rangeIndexFor(0.7, _ranges), expected: 0 },
            { tag: "current: 2 A", result: WaveView.rangeIndexFor(2, _ranges), expected: 2 },
            { tag: "current: 8 A", result: WaveView.rangeIndexFor(8, _ranges), expected: 3 },
            { tag: "current: negative", result: WaveView.rangeIndexFor(-1, _ranges), expected: 0 },
            { tag: "current: not a number", result: WaveView.rangeIndexFor(NaN, _ranges), expected: 0 },
            { tag: "time axis", result: WaveView.timeAxis(10, 60), expected: { "min": 10, "max": 69 } },
            { tag: "time axis of one sample", result: WaveView.timeAxis(10, 1), expected: { "min": 10, "max": 11 } },
            { tag: "overview: all", result: WaveView.previewStride(320, 320), expected: 1 },
            { tag: "overview: a few more", result: WaveView.previewStride(321, 320), expected: 2 },
            { tag: "overview: 1000", result: WaveView.previewStride(1000, 320), expected: 4 },
            { tag: "labels: middle", result: WaveView.responsiveTickCount(512, 6, 3, 8), expected: 5 },
            { tag: "labels: narrow", result: WaveView.responsiveTickCount(10, 6, 3, 8), expected: 3 },
            { tag: "labels: wide", result: WaveView.responsiveTickCount(5000, 6, 3, 8), expected: 6 },
            { tag: "labels: no font", result: WaveView.responsiveTickCount(100, 6, 3, 0), expected: 6 },
            { tag: "label texts", result: WaveView.timeTicks(3, 3599, 4),
              expected: [{ "ratio": 0, "label": "00:59:59" }, { "ratio": 0.5, "label": "01:00:01" },
                         { "ratio": 1, "label": "01:00:03" }] },
            { tag: "overview: left of it", result: WaveView.sampleAtPreview(-50, 20, 200, 1001), expected: 0 },
            { tag: "overview: middle", result: WaveView.sampleAtPreview(120, 20, 200, 1001), expected: 500 },
            { tag: "overview: right of it", result: WaveView.sampleAtPreview(900, 20, 200, 1001), expected: 1000 },
            { tag: "overview without width", result: WaveView.sampleAtPreview(5, 0, 0, 1001), expected: 0 },
            { tag: "drag to the right", result: WaveView.draggedStart(100, 50, 600, 60), expected: 95 },
            { tag: "drag to the left", result: WaveView.draggedStart(100, -50, 600, 60), expected: 105 },
            { tag: "drag without width", result: WaveView.draggedStart(100, 50, 0, 60), expected: 100 },
            { tag: "time before the start", result: WaveView.sampleTimeSec(0, 1001, 10, 0.08, []), expected: 0 },
            { tag: "time in the first run", result: WaveView.sampleTimeSec(4, 20, 500, 1, runs), expected: 40 },
            { tag: "time in the second run", result: WaveView.sampleTimeSec(5, 20, 500, 1, runs), expected: 95 },
            { tag: "time in the running connection", result: WaveView.sampleTimeSec(10, 20, 500, 1, runs), expected: 491 },
            { tag: "interrupted without samples", result: WaveView.interruptedAt(runs, 10, 0), expected: runs },
            { tag: "interruptions after a trim", result: WaveView.trimmedInterruptions(runs, 5),
              expected: [{ "end": 5, "lastSec": 99 }] },
            { tag: "path: unix", result: WaveView.localPath("file:///home/a%20b/c.json"), expected: "/home/a b/c.json" },
            { tag: "path: drive", result: WaveView.localPath("file:///C:/Users/a.json"), expected: "C:/Users/a.json" },
            { tag: "path: share", result: WaveView.localPath("file://server/share/a.json"),
              expected: "//server/share/a.json" }
        ]
    }

    function test_values(row) {
        compare(row.result, row.expected)
    }

    function test_fractions() {
        fuzzyCompare(WaveView.spanSec(60, 0.08), 4.72, 1e-9)
        fuzzyCompare(WaveView.spanSec(0, 0.08), 0.08, 1e-9)
        var curve = WaveView.generatedCurve(60)
        fuzzyCompare(curve[59], 4.6, 1e-9)
        fuzzyCompare(curve[20], 4.6 + 0.35 * Math.sin(40 * Math.PI / 59) + 0.08 * Math.sin(100 * Math.PI / 59), 1e-9)
    }

    function test_zoomStepsKeepTheCentre() {
        var counts = [60, 49, 40, 33, 27, 22, 18, 15]
        for (var i = 1, start = 100; i < counts.length; ++i) {
            compare(WaveView.zoomedCount(counts[i - 1], 1, 15, 60), counts[i])
            compare(WaveView.zoomedCount(counts[i], -1, 15, 60), counts[i - 1])
            start = WaveView.startAround(WaveView.centreOf(start, counts[i - 1]), counts[i])
            compare(WaveView.centreOf(start, counts[i]), 130)
        }
        compare(WaveView.zoomedCount(15, 1, 15, 60), 15)
        compare(WaveView.zoomedCount(60, -1, 15, 60), 60)
    }

    function test_viewStaysInTheRecording_data() {
        return [{ tag: "empty", start: 5, samples: 0, clamped: 0, visible: 0 },
                { tag: "fewer than the view", start: 5, samples: 30, clamped: 0, visible: 30 },
                { tag: "before the start", start: -7, samples: 200, clamped: 0, visible: 60 },
                { tag: "beyond the end", start: 190, samples: 200, clamped: 140, visible: 60 }]
    }

    function test_viewStaysInTheRecording(row) {
        var start = WaveView.clampStart(row.start, row.samples, 60)
        compare(start, row.clamped)
        compare(WaveView.visibleCount(start, row.samples, 60), row.visible)
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
}
