// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import QtQuick.Layouts 1.12
import GenToolbox 1.0

import "../../customize"
import "../common"

/// The progress of the download. One button leaves it, at any time; another one starts what it brought.
FocusScope {
    id: _root

    property real pointSize: 10
    property string message
    /// 0 to 100; negative without a known end.
    property real progress: 0
    property bool failed: false
    /// The package is there and can be installed.
    property bool finished: false
    property string dismissText
    property string installText

    signal dismissed()
    signal installRequested()

    // A key that was meant for the download must not start the installer.
    onVisibleChanged: _dismiss.focus = true
    onFinishedChanged: _dismiss.focus = true

    ColumnLayout {
        anchors.fill: parent
        spacing: 14

        Item { Layout.fillHeight: true }
        RowLayout {
            Layout.fillWidth: true
            spacing: 12

            Text {
                objectName: "progressMessage"
                Layout.fillWidth: true
                text: _root.message
                color: _root.failed ? GenToolbox.genPalette.warningText : GenToolbox.genPalette.text
                font.family: GenFontManager.mainFontFamily
                font.pointSize: _root.pointSize * 1.05
                wrapMode: Text.Wrap
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
            Text {
                visible: _root.progress > 0 && !_root.failed
                text: Math.round(_root.progress) + "%"
                color: GenToolbox.genPalette.text
                font.family: GenFontManager.mainFontFamily
                font.pointSize: _root.pointSize * 1.05
                font.bold: true
            }
        }
        FlatProgressBar {
            objectName: "downloadBar"
            Layout.fillWidth: true
            value: Math.max(0, _root.progress)
            // A file that arrived whole and was refused is no success.
            visible: !_root.failed
            indeterminate: _root.progress < 0
        }
        Item { Layout.fillHeight: true }
        Item {
            Layout.fillWidth: true
            implicitHeight: 38

            PillButton {
                id: _dismiss

                objectName: "dismissButton"
                anchors.centerIn: parent
                width: 150
                height: parent.height
                pointSize: 10
                text: _root.dismissText
                onClicked: _root.dismissed()
            }
            // Beside the other button, so that a click that was meant to cancel never installs.
            GenTextButton {
                objectName: "installButton"
                anchors.right: parent.right
                height: parent.height
                visible: _root.finished
                text: _root.installText
                onClicked: _root.installRequested()
            }
        }
    }
}
