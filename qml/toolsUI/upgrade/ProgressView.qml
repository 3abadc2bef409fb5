// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import QtQuick.Layouts 1.12
import GenToolbox 1.0

import "../../customize"
import "../common"

/// The progress of the download, with the button that cancels it or starts its result.
FocusScope {
    id: _root

    property real pointSize: 10
    property string message
    /// 0 to 100; negative without a known end.
    property real progress: 0
    property bool failed: false
    property string buttonText

    signal pressed()

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
        GenTextButton {
            objectName: "progressButton"
            Layout.alignment: Qt.AlignHCenter
            focus: true
            minWidth: 150
            minHeight: 38
            text: _root.buttonText
            onClicked: _root.pressed()
        }
    }
}
