// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12

import "Format.js" as Format

/// The shadow around `targetItem`, a rectangle with corners of `radiusValue`. Fill the target with it.
///
/// It is put together from four strips and four corners. A blur effect would need textures of the window's
/// size (47 MB at 1280 x 720), blend them in every frame, and paint nothing without OpenGL.
Item {
    id: _root

    property Item targetItem: null
    property real radiusValue: 10
    property bool shadowVisible: true
    property Item source: targetItem
    property real radius: radiusValue
    property real horizontalOffset: 1
    property real verticalOffset: 1
    property color color: PageStyle.shadow

    visible: shadowVisible && source !== null

    Behavior on radius {
        NumberAnimation { duration: 100 }
    }

    Item {
        id: _shape

        // So far inside the target that no gap opens on the sides away from the offset.
        readonly property real _inset: Math.max(Math.abs(_root.horizontalOffset), Math.abs(_root.verticalOffset))

        anchors.fill: parent
        anchors.leftMargin: _inset + _root.horizontalOffset
        anchors.rightMargin: _inset - _root.horizontalOffset
        anchors.topMargin: _inset + _root.verticalOffset
        anchors.bottomMargin: _inset - _root.verticalOffset

        Repeater {
            // Counter-clockwise from the top edge; each strip is drawn as a top edge and turned into place.
            model: [0, -90, 180, 90]

            Rectangle {
                id: _strip

                readonly property bool _upright: modelData % 180 !== 0
                readonly property real _length: (_upright ? _shape.height : _shape.width) - 2 * _root.radius

                // Exactly in the middle: an anchor rounds to whole pixels, which leaves a gap at odd sizes.
                x: (_shape.width - width) / 2
                y: (_shape.height - height) / 2
                width: Math.max(0, _length)
                height: _root.radius
                transform: [
                    Translate {
                        y: -((_strip._upright ? _shape.width : _shape.height) + _root.radius) / 2
                    },
                    Rotation {
                        origin { x: _strip.width / 2; y: _strip.height / 2 }
                        angle: modelData
                    }
                ]
                gradient: Gradient {
                    GradientStop { position: 0; color: _root._shade(0) }
                    GradientStop { position: 0.25; color: _root._shade(0.026) }
                    GradientStop { position: 0.5; color: _root._shade(0.105) }
                    GradientStop { position: 0.75; color: _root._shade(0.236) }
                    GradientStop { position: 1; color: _root._shade(0.42) }
                }
            }
        }
        Repeater {
            model: 4

            GenColoredImage {
                readonly property bool _right: index % 2 === 1
                readonly property bool _bottom: index >= 2

                x: _right ? _shape.width - _root.radius : -_root.radius
                y: _bottom ? _shape.height - _root.radius : -_root.radius
                width: 2 * _root.radius
                height: width
                rotation: _bottom ? (_right ? 180 : 270) : (_right ? 90 : 0)
                color: _root.color
                source: "qrc:/basic/shadow-corner.svg"
            }
        }
    }

    function _shade(alpha) {
        return Format.faded(color, alpha)
    }
}
