// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import Recording 1.0

import "../customize"
import "../toolsUI/common"

/// What there is to say of a recording that ended or was interrupted, with what can be done. Leaves the page usable.
FocusScope {
    id: _root

    readonly property real _padding: 14

    implicitWidth: 380
    implicitHeight: _content.height + 2 * _padding

    Accessible.role: Accessible.AlertMessage
    Accessible.name: Recording.noticeTitle
    Accessible.description: Recording.noticeText

    Keys.onEscapePressed: Recording.dismissNotice()

    Rectangle {
        anchors.fill: parent
        radius: 8
        color: PageStyle.idleFill
        border.width: 1
        border.color: PageStyle.menuBorder
    }
    // Clicks and wheel beside the buttons are not the page's.
    MouseArea {
        anchors.fill: parent
        hoverEnabled: true
        acceptedButtons: Qt.AllButtons
        onWheel: wheel.accepted = true
    }
    Column {
        id: _content

        x: _root._padding
        y: _root._padding
        width: _root.width - 2 * _root._padding
        spacing: 8

        Text {
            width: parent.width - _close.width
            text: Recording.noticeTitle
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
            color: PageStyle.titleText
            font.family: GenFontManager.mainFontFamily
            font.pointSize: 11
            font.bold: true
        }
        Text {
            width: parent.width
            text: Recording.noticeText
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
            lineHeight: 1.15
            color: PageStyle.dimText
            font.family: GenFontManager.mainFontFamily
            font.pointSize: 10
        }
        Flow {
            width: parent.width
            topPadding: 4
            spacing: 8
            visible: _report.visible || _finish.visible
            enabled: !Recording.busy
            opacity: enabled ? 1 : 0.5

            PillButton {
                id: _finish

                visible: Recording.notice === Recording.Interrupted
                text: qsTr("Finish it")
                active: true
                onClicked: Recording.finishInterrupted()
            }
            PillButton {
                visible: Recording.notice === Recording.Interrupted
                text: qsTr("Leave it as it is")
                onClicked: Recording.declineInterrupted()
            }
            PillButton {
                id: _report

                visible: Recording.hasFile
                text: qsTr("Show report")
                active: true
                onClicked: Recording.showReport()
            }
            PillButton {
                visible: Recording.hasFile
                text: qsTr("Show in folder")
                onClicked: Recording.showInFolder()
            }
        }
    }
    TitleBarButton {
        id: _close

        anchors { top: parent.top; right: parent.right; margins: 10 }
        width: 18
        height: 18
        picture: "qrc:/basic/close.svg"
        name: qsTr("Close this notice")
        onClicked: Recording.dismissNotice()
    }
}
