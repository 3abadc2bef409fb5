// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.15

import "../../customize"
import "../../customize/Format.js" as Format
import "DialPainter.js" as DialPainter
import "GaugeScale.js" as Scale

/// The needle gauge: a dial that is painted once, with needle, glow and readout moving over it.
Item {
    id: _root

    /// Full-scale value in amperes.
    property real rangeMax: Scale.largestRange
    /// Currents in amperes that the needle and the end of the lit band stand at.
    property real needleCurrent: 0
    property real glowCurrent: 0
    property string valueText
    property string unitText
    /// While true the painted dial is only scaled to the size of this item.
    property bool frozen: false
    /// Opacity of the window's background, 0 to 1; the fills are multiplied with it.
    property real backgroundOpacity: 1

    readonly property real needleAngle: Scale.degrees(Scale.angleOfRatio(Scale.ratio(needleCurrent, rangeMax)))
    readonly property real glowAngle: Scale.degrees(Scale.angleOfRatio(_glowRatio))
    readonly property alias repaintCount: _face.repaintCount

    readonly property real _glowRatio: Scale.ratio(glowCurrent, rangeMax)
    readonly property var _dial: Scale.fittedGeometry(_stage.width, _stage.height)

    onWidthChanged: _adoptSize()
    onHeightChanged: _adoptSize()
    onFrozenChanged: _adoptSize()

    function _adoptSize() {
        if (frozen && _stage.width > 0)
            return
        _stage.width = Math.floor(width)
        _stage.height = Math.floor(height)
    }

    Item {
        id: _stage

        anchors.centerIn: parent
        scale: width > 0 && height > 0 ? Math.min(_root.width / width, _root.height / height) : 1

        Canvas {
            id: _face

            readonly property var _inputs: [_root._dial, _root.rangeMax, GenFontManager.mainFontFamily]
            property int repaintCount: 0

            anchors.fill: parent
            // Painted pixel by pixel for its size: only the frozen dial is scaled.
            smooth: _stage.scale !== 1

            on_InputsChanged: requestPaint()
            onPaint: {
                var context = getContext("2d")
                context.reset()
                if (_root._dial.radius <= 0)
                    return
                DialPainter.paintFace(context, _root._dial)
                DialPainter.paintLabels(context, _root._dial, _root.rangeMax, GenFontManager.mainFontFamily)
                ++repaintCount
            }
        }

        GlowBand {
            dial: _root._dial
            angle: _root.glowAngle
            visible: _root._glowRatio > 0.001
        }

        Item {
            id: _needle

            x: _root._dial.centerX
            y: _root._dial.centerY
            rotation: _root.needleAngle

            Needle { dial: _root._dial }
        }

        NeedleHub {
            x: _root._dial.centerX
            y: _root._dial.centerY
            unit: _root._dial.unit
        }

        // Dims the needle where it passes behind the value.
        Rectangle {
            anchors.centerIn: _value
            width: Math.max(_value.width + 36 * _root._dial.unit, 152 * _root._dial.unit)
            height: 54 * _root._dial.unit
            radius: height / 2
            color: Format.faded(PageStyle.dialReadout, _root.backgroundOpacity)
            border.width: 1
            border.color: PageStyle.dialReadoutBorder
        }

        Text {
            id: _value

            x: Math.round(_root._dial.centerX - width / 2)
            y: Math.round(_root._dial.centerY - Math.max(54 * _root._dial.unit, _root._dial.radius * 0.27)
                          - height / 2)
            text: _root.valueText
            color: PageStyle.dialValue
            font.family: GenFontManager.mainFontFamily
            font.pixelSize: Math.max(1, Math.round(44 * _root._dial.unit))
            font.bold: true
        }

        Text {
            x: Math.round(_root._dial.centerX - width / 2)
            y: Math.round(_root._dial.centerY + 37 * _root._dial.unit - height / 2)
            text: _root.unitText
            color: PageStyle.dialUnit
            font.family: GenFontManager.mainFontFamily
            font.pixelSize: Math.max(1, Math.round(18 * _root._dial.unit))
        }
    }
}
