// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import QtTest 1.12

import "qrc:/qml/toolsUI/gauge/GaugeScale.js" as Scale

TestCase {
    name: "GaugeScale"

    function test_autoRange_data() {
        return [
            { tag: "negative", current: -1, range: 0.3 },
            { tag: "at 300 mA", current: 0.3, range: 0.3 },
            { tag: "above 300 mA", current: 0.31, range: 2.4 },
            { tag: "at 2.4 A", current: 2.4, range: 2.4 },
            { tag: "above 2.4 A", current: 2.41, range: 6 },
            { tag: "at 6 A", current: 6, range: 6 },
            { tag: "over range", current: 99, range: 8 }
        ]
    }

    function test_autoRange(data) {
        compare(Scale.autoRangeForCurrent(data.current), data.range)
        compare(Scale.rangeMax(4, data.current), data.range)
        compare(Scale.rangeMax(2, data.current), 6)
        compare(Scale.rangeMax(7, data.current), 8)
    }

    function test_labels_data() {
        return [
            { tag: "milliamperes", range: 0.3, labels: "0 30 60 90 120 150 180 210 240 270 300" },
            { tag: "two decimals", range: 2.4, labels: "0 0.24 0.48 0.72 0.96 1.20 1.44 1.68 1.92 2.16 2.40" },
            { tag: "6 A", range: 6, labels: "0 0.6 1.2 1.8 2.4 3 3.6 4.2 4.8 5.4 6" },
            { tag: "8 A", range: 8, labels: "0 0.8 1.6 2.4 3.2 4 4.8 5.6 6.4 7.2 8" }
        ]
    }

    function test_labels(data) {
        var labels = []
        for (var i = 0; i <= 10; ++i)
            labels.push(Scale.labelText(i / 10, data.range))
        compare(labels.join(" "), data.labels)
    }

    function test_arc_data() {
        return [
            { tag: "rest", value: 0, angle: 1.09 * Math.PI },
            { tag: "below", value: -3, angle: 1.09 * Math.PI },
            { tag: "middle", value: 3, angle: 1.5 * Math.PI },
            { tag: "full", value: 6, angle: 1.91 * Math.PI },
            { tag: "over range", value: 7.5, angle: 1.91 * Math.PI }
        ]
    }

    function test_arc(data) {
        fuzzyCompare(Scale.angleOfRatio(Scale.ratio(data.value, 6)), data.angle, 1e-9)
    }

    function test_ticks() {
        var red = []
        var longTicks = 0
        for (var i = 0; i < Scale.tickCount; ++i) {
            var tick = Scale.tick(i)
            if (tick.color === "#FF3242")
                red.push(i)
            if (tick.inner === -20)
                ++longTicks
        }
        compare(red.join(" "), "10 30 50 70 90")
        compare(longTicks, 11)
        compare(Scale.tick(5).outer + " " + Scale.tick(5).inner, "3 -17")
        compare(Scale.tick(7).outer + " " + Scale.tick(7).inner, "0 -11")
    }

    function test_geometryStaysInside_data() {
        return [
            { tag: "small", width: 560, height: 200 }, { tag: "wide", width: 1800, height: 300 },
            { tag: "usual", width: 1140, height: 450 }, { tag: "tall", width: 500, height: 900 }
        ]
    }

    // Neither panel nor labels, whose outer edge is 38 px from the arc, leave the given size.
    function test_geometryStaysInside(data) {
        var dial = Scale.fittedGeometry(data.width, data.height)
        verify(dial.x >= -1e-6 && dial.x + dial.width <= data.width + 1e-6)
        verify(dial.y >= 0 && dial.y + dial.height <= data.height + 1e-6)
        verify(dial.centerY - dial.radius - 38 * dial.unit >= dial.y)
        verify(dial.centerX - dial.radius - 38 * dial.unit >= dial.x)
    }

    function test_readout_data() {
        return [
            { tag: "milliamperes", current: 0.3, range: 0.3, text: "300.0 mA" },
            { tag: "amperes", current: 0.31, range: 2.4, text: "0.310 A" },
            { tag: "no number", current: NaN, range: 8, text: "-- A" },
            { tag: "endless", current: Infinity, range: 0.3, text: "-- mA" }
        ]
    }

    function test_readout(data) {
        compare(Scale.displayValue(data.current, data.range) + " " + Scale.displayUnit(data.range), data.text)
    }
}
