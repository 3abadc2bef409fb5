// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.15

import "DialPainter.js" as DialPainter
import "GaugeScale.js" as Scale

/// The lit band of the gauge from the start of the scale to an angle. The whole band is painted once; a
/// turning half plane uncovers it, so that a moving value costs no painting.
Item {
    id: _root

    property var dial
    /// Angle, in degrees, at which the band ends.
    property real angle: Scale.degrees(Scale.startAngle)

    readonly property real _reach: Math.ceil(dial.radius + 8)
    readonly property real _bandRadius: dial.radius - 12 * dial.unit
    readonly property real _radians: angle * Math.PI / 180

    Item {
        id: _halfPlane

        x: _root.dial.centerX - _root._reach
        y: _root.dial.centerY - _root._reach
        width: 2 * _root._reach
        height: _root._reach
        transformOrigin: Item.Bottom
        rotation: _root.angle
        clip: true

        Item {
            width: parent.width
            height: parent.height
            transformOrigin: Item.Bottom
            rotation: -_root.angle

            Canvas {
                id: _band

                readonly property var _dial: _root.dial

                width: parent.width
                // The scale ends well above the centre: what lies below it stays empty.
                height: Math.ceil(parent.height * 0.86)
                on_DialChanged: requestPaint()
                onPaint: {
                    var context = getContext("2d")
                    context.reset()
                    if (_root.dial.radius <= 0)
                        return
                    context.translate(_halfPlane.x * -1, _halfPlane.y * -1)
                    DialPainter.paintGlow(context, _root.dial)
                }
            }
        }
    }

    Canvas {
        id: _dot

        readonly property real _side: Math.ceil(52 * _root.dial.unit)

        x: _root.dial.centerX + Math.cos(_root._radians) * _root._bandRadius - width / 2
        y: _root.dial.centerY + Math.sin(_root._radians) * _root._bandRadius - height / 2
        width: Math.max(1, _side)
        height: width
        on_SideChanged: requestPaint()
        onPaint: {
            var context = getContext("2d")
            context.reset()
            DialPainter.paintGlowDot(context, width)
        }
    }
}
