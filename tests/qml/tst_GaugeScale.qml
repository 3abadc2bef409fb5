// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import QtTest 1.12

import "qrc:/qml/toolsUI/gauge/GaugeScale.js" as Scale

TestCase {
    name: "GaugeScale"

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

    function test_arc() {
        [[0, 1.09], [-3, 1.09], [3, 1.5], [6, 1.91], [7.5, 1.91]].forEach(function(pair) {
            fuzzyCompare(Scale.angleOfRatio(Scale.ratio(pair[0], 6)), pair[1] * Math.PI, 1e-9)
        })
    }

    function test_ticks() {
        var ticks = Array.from({ length: Scale.tickCount }, function(_, i) { return Scale.tick(i) })
        compare(ticks.map(function(tick, i) { return tick.color === "#FF3242" ? i : "" }).join(""), "1030507090")
        compare(ticks.filter(function(tick) { return tick.inner === -20 }).length, 11)
        compare([ticks[5].outer, ticks[5].inner, ticks[7].outer, ticks[7].inner], [3, -17, 0, -11])
    }

    function test_geometryStaysInside_data() {
        return [{ tag: "small", width: 560, height: 200 }, { tag: "wide", width: 1800, height: 300 },
                { tag: "usual", width: 1140, height: 450 }, { tag: "tall", width: 500, height: 900 }]
    }

    // Neither panel nor labels, whose outer edge is 38 px from the arc, leave the given size.
    function test_geometryStaysInside(data) {
        var dial = Scale.fittedGeometry(data.width, data.height)
        verify(dial.x >= -1e-6 && dial.x + dial.width <= data.width + 1e-6)
        verify(dial.y >= 0 && dial.y + dial.height <= data.height + 1e-6)
        verify(dial.centerY - dial.radius - 38 * dial.unit >= dial.y)
        verify(dial.centerX - dial.radius - 38 * dial.unit >= dial.x)
    }
}
