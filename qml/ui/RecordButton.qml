// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import GenToolbox 1.0
import Recording 1.0

import "../customize"
import "../customize/Format.js" as Format

/// Starts and stops recordings. While one runs, a red dot and the running time; the dot is hollow while no readings come.
FlatButton {
    id: _root

    /// Size of the picture, in pixels.
    property real pictureSize: 18

    readonly property bool _running: Recording.recording
    readonly property string _tip: _running ? qsTr("Stop recording (Ctrl+R)") + "\n" + Recording.details
                                            : qsTr("Record (Ctrl+R)")

    implicitWidth: _running ? _dot.width + _time.width + 20 : pictureSize
    implicitHeight: pictureSize
    radius: _running ? height / 2 : 3
    ringRadius: radius + 2
    fill: _running ? Format.withAlpha(PageStyle.accentRed, hovered ? 0.34 : 0.2)
                   : hovered ? Format.withAlpha(PageStyle.windowAccent, 0.22) : "transparent"
    focusPolicy: Qt.TabFocus

    Accessible.name: _running ? qsTr("Stop recording") : qsTr("Record")
    Accessible.description: _running ? Recording.time + "\n" + Recording.details : _tip

    onClicked: Recording.toggle()

    contentItem: Item {
        GenColoredImage {
            anchors.fill: parent
            visible: !_root._running
            color: _root.hovered ? PageStyle.accentCyan : GenToolbox.genPalette.text
            source: "qrc:/res/record.svg"
        }
        Rectangle {
            id: _dot

            anchors { left: parent.left; leftMargin: 7; verticalCenter: parent.verticalCenter }
            visible: _root._running
            width: 10
            height: 10
            radius: 5
            color: Recording.troubled ? "transparent" : PageStyle.accentRed
            border.width: 2
            border.color: PageStyle.accentRed
        }
        Text {
            id: _time

            anchors { left: _dot.right; leftMargin: 6; verticalCenter: parent.verticalCenter }
            visible: _root._running
            // All digits as wide as the widest: the buttons beside it must not move each second.
            width: Math.ceil(_widest.advanceWidth)
            text: Recording.time
            color: PageStyle.titleText
            font.family: GenFontManager.mainFontFamily
            font.pixelSize: 12
        }
    }

    TextMetrics {
        id: _widest

        font: _time.font
        text: String(Recording.time).replace(/\d/g, "0")
    }
    Shortcut {
        sequence: "Ctrl+R"
        onActivated: Recording.toggle()
    }
    HoverTip {
        target: _root
        below: true
        text: _root._tip
        shown: _root.hovered && (_root._running || Recording.notice === Recording.NoNotice)
    }
}
