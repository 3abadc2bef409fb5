// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.15

import "../../customize"
import "DialPainter.js" as DialPainter

/// The needle, from a little behind the centre to the arc, before rotation: a line over its halo. It is painted once:
/// the software scene graph would draw a rectangle of a part of a pixel as a whole one.
Canvas {
    property var dial

    // Around the halo, so that its edges stay smooth when it turns.
    readonly property real _margin: 4
    readonly property real _tail: Math.ceil(24 * dial.unit)

    x: -_tail - _margin
    y: -height / 2
    width: Math.ceil(Math.max(0, dial.radius)) + _tail + 2 * _margin
    height: 2 * Math.ceil(2.25 * dial.unit + _margin)
    onDialChanged: requestPaint()
    onPaint: {
        var context = getContext("2d")
        context.reset()
        if (dial.radius <= 0)
            return
        context.translate(-x, height / 2)
        DialPainter.paintNeedle(context, dial, PageStyle.needleHalo, PageStyle.needle)
    }
}
