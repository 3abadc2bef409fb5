// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import QtTest 1.12

import "qrc:/qml/ui/WindowGeometry.js" as WindowGeometry

TestCase {
    name: "WindowGeometry"

    readonly property var _screens: [{ virtualX: 0, virtualY: 0, width: 1920, height: 1080 },
                                     { virtualX: 1920, virtualY: 0, width: 1280, height: 1024 }]

    function test_restored_data() {
        return [
            { tag: "as stored", stored: [10, 20, 900, 700], expected: [10, 20, 900, 700] },
            { tag: "second screen", stored: [2000, 20, 900, 700], expected: [2000, 20, 900, 700] },
            { tag: "title bar still in reach", stored: [-700, -20, 900, 700], expected: [-700, -20, 900, 700] },
            { tag: "title bar above the screen", stored: [-200, -30, 900, 700], expected: [0, 0, 900, 700] },
            { tag: "title bar below the screen", stored: [100, 1050, 900, 700], expected: [0, 0, 900, 700] },
            { tag: "a corner on the screen", stored: [-1100, 20, 1200, 700], expected: [0, 0, 1200, 700] },
            { tag: "screen is gone", stored: [5000, 20, 900, 700], expected: [0, 0, 900, 700] },
            { tag: "too large", stored: [0, 0, 5000, 5000], expected: [0, 0, 1843, 994] },
            { tag: "too small", stored: [0, 0, 10, 10], expected: [0, 0, 720, 496] },
            { tag: "nothing", stored: null, expected: null },
            { tag: "no width", stored: [10, 20, 0, 700], expected: null },
            { tag: "negative height", stored: [10, 20, 900, -1], expected: null }
        ]
    }

    function test_restored(data) {
        var s = data.stored
        var geometry = WindowGeometry.restored(s && Qt.rect(s[0], s[1], s[2], s[3]), Qt.size(720, 496),
                                               Qt.size(1920, 1080), _screens, 56)
        compare(geometry && [geometry.x, geometry.y, geometry.width, geometry.height], data.expected)
    }

    // Start: 100, 100, 1000 x 800; minimum 600 x 500.
    function test_resized_data() {
        return [
            { tag: "right", edges: "r", cursor: [1300, 0], expected: [100, 100, 1200, 800] },
            { tag: "right to the minimum", edges: "r", cursor: [0, 0], expected: [100, 100, 600, 800] },
            { tag: "bottom", edges: "b", cursor: [0, 1000], expected: [100, 100, 1000, 900] },
            { tag: "left", edges: "l", cursor: [50, 0], expected: [50, 100, 1050, 800] },
            { tag: "left keeps the right edge", edges: "l", cursor: [3000, 0], expected: [500, 100, 600, 800] },
            { tag: "top", edges: "t", cursor: [0, 150], expected: [100, 150, 1000, 750] },
            { tag: "top keeps the bottom edge", edges: "t", cursor: [0, 3000], expected: [100, 400, 1000, 500] },
            { tag: "top left", edges: "tl", cursor: [90, 80], expected: [90, 80, 1010, 820] },
            { tag: "bottom right", edges: "br", cursor: [1110.4, 920.6], expected: [100, 100, 1010, 821] }
        ]
    }

    function test_resized(data) {
        var has = function(edge) { return data.edges.indexOf(edge) >= 0 }
        var geometry = WindowGeometry.resized(Qt.rect(100, 100, 1000, 800), Qt.point(1100, 900), Qt.size(600, 500),
                                              Qt.point(data.cursor[0], data.cursor[1]), has("l"), has("t"), has("r"),
                                              has("b"))
        compare([geometry.x, geometry.y, geometry.width, geometry.height], data.expected)
    }
}
