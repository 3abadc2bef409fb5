// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.15

/// One stroke of the needle, from a little behind the centre to the arc, before rotation.
Rectangle {
    property var dial
    property real thickness: 1

    readonly property real _tail: 24 * dial.unit

    x: -_tail
    y: -height / 2
    width: dial.radius + _tail
    height: Math.max(1, thickness * dial.unit)
    radius: height / 2
    antialiasing: true
}
