// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.15

import "../../customize"

/// Two segments, of which the one that holds is lit: fast or slow charge. Shows, does not switch.
Rectangle {
    id: _root

    property bool fast: false
    property string fastText
    property string slowText
    property color fastColor: PageStyle.accentGold
    property color slowColor: PageStyle.accentCyan
    property real pointSize: 12

    readonly property real _segmentWidth: Math.max(_fast.implicitWidth, _slow.implicitWidth) + 32

    implicitWidth: 2 * _segmentWidth + 8
    implicitHeight: _fast.implicitHeight + 20
    radius: height / 2
    border.width: 1
    border.color: PageStyle.cardBorder

    Accessible.role: Accessible.StaticText
    Accessible.name: fast ? fastText : slowText

    Rectangle {
        x: _root.fast ? 4 : 4 + _root._segmentWidth
        y: 4
        width: _root._segmentWidth
        height: parent.height - 8
        radius: height / 2
        color: _root.fast ? _root.fastColor : _root.slowColor

        Behavior on x {
            NumberAnimation { duration: 180; easing.type: Easing.OutCubic }
        }
    }
    Text {
        id: _fast

        anchors.verticalCenter: parent.verticalCenter
        x: 4 + (_root._segmentWidth - width) / 2
        text: _root.fastText
        color: _root.fast ? PageStyle.textOnAccent : PageStyle.dimText
        font.family: GenFontManager.mainFontFamily
        font.pointSize: _root.pointSize
        font.bold: _root.fast
    }
    Text {
        id: _slow

        anchors.verticalCenter: parent.verticalCenter
        x: 4 + _root._segmentWidth + (_root._segmentWidth - width) / 2
        text: _root.slowText
        color: _root.fast ? PageStyle.dimText : PageStyle.textOnAccent
        font.family: GenFontManager.mainFontFamily
        font.pointSize: _root.pointSize
        font.bold: !_root.fast
    }
}
