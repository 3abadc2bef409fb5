// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import QtQuick.Controls 2.12
import QtQuick.Layouts 1.12
import GenControl 1.0
import GenToolbox 1.0

import "../../customize"
import "../common"

/// What is known of an update, and whether to install it.
FocusScope {
    id: _root

    property real pointSize: 10
    property string headline
    property string details
    property bool checking: false
    property bool canUpgrade: false
    property bool canIgnore: false
    property alias ignored: _ignore.checked
    property string ignoreText
    property string cancelText
    property string upgradeText

    signal accepted()
    signal canceled()

    // The dialog may open by itself: a key that was meant for something else must not press a button.
    onVisibleChanged: _scroll.focus = true

    ColumnLayout {
        anchors.fill: parent
        spacing: 8

        Text {
            objectName: "headline"
            Layout.fillWidth: true
            text: _root.headline
            color: GenToolbox.genPalette.text
            font.family: GenFontManager.mainFontFamily
            font.pointSize: _root.pointSize * 1.05
            wrapMode: Text.Wrap
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
        FlatProgressBar {
            Layout.fillWidth: true
            visible: _root.checking
            implicitHeight: 4
            indeterminate: true
        }
        ScrollView {
            id: _scroll

            Layout.fillWidth: true
            Layout.fillHeight: true
            visible: GenControl.isChineseLanguage()
            clip: true
            ScrollBar.horizontal.policy: ScrollBar.AlwaysOff
            ScrollBar.vertical.policy: contentHeight > height ? ScrollBar.AlwaysOn : ScrollBar.AlwaysOff

            background: Rectangle {
                radius: 4
                color: Qt.darker(GenToolbox.genPalette.window, 1.25)
                border.width: 1
                border.color: _details.activeFocus ? PageStyle.focus : PageStyle.panelBorder
            }

            TextArea {
                id: _details

                objectName: "details"
                focus: true
                readOnly: true
                selectByMouse: true
                text: _root.details
                // A server's text is shown, never interpreted.
                textFormat: TextEdit.PlainText
                wrapMode: TextEdit.Wrap
                color: GenToolbox.genPalette.text
                selectionColor: GenToolbox.genPalette.selectButtonColor
                font.family: GenFontManager.mainFontFamily
                font.pointSize: _root.pointSize
                topPadding: 4
                bottomPadding: 4
                leftPadding: 8
                rightPadding: 12
                activeFocusOnTab: true
                KeyNavigation.priority: KeyNavigation.BeforeItem
                KeyNavigation.tab: _ignore.visible ? _ignore : _cancel
                Accessible.name: _root.headline
            }
        }
        Item {
            Layout.fillHeight: true
            visible: !GenControl.isChineseLanguage()
        }
        RowLayout {
            Layout.fillWidth: true
            spacing: 12

            GenCheckbox {
                id: _ignore

                objectName: "ignoreBox"
                Layout.fillWidth: true
                Layout.preferredHeight: 32
                checked: false
                visible: _root.canIgnore
                text: _root.ignoreText
                font.pointSize: _root.pointSize
            }
            Item {
                Layout.fillWidth: true
                visible: !_root.canIgnore
            }
            PillButton {
                id: _cancel

                objectName: "cancelButton"
                implicitWidth: 104
                implicitHeight: 32
                pointSize: 10
                text: _root.cancelText
                onClicked: _root.canceled()
            }
            GenTextButton {
                objectName: "upgradeButton"
                minWidth: 104
                minHeight: 32
                visible: _root.canUpgrade
                text: _root.upgradeText
                onClicked: _root.accepted()
            }
        }
    }
}
