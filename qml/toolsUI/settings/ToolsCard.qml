// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import GenToolbox 1.0

import "../../customize"
import "../common"

/// Log export, and the switches of USB log and multimeter history.
SettingsCard {
    id: _root

    /// Path of the archive that was exported last; empty when there is none.
    property string archivePath
    property string archiveStatus
    property bool usbDebug: false
    property bool saveHistory: false

    signal exportRequested()
    signal usbDebugChosen(bool enabled)
    signal saveHistoryChosen(bool enabled)

    title: qsTranslate("SysSettings", "Export Logs to Desktop")
    corner: PillButton {
        objectName: "exportButton"
        width: Math.max(96, implicitWidth)
        height: 36
        pointSize: 10
        text: qsTranslate("SysSettings", "Export")
        onClicked: _root.exportRequested()
    }

    TextLink {
        objectName: "archiveStatus"
        width: parent.width
        visible: text.length > 0
        active: _root.archivePath.length > 0
        text: _root.archiveStatus
        color: active ? PageStyle.settingsAccent : PageStyle.settingsWarning
        font.pointSize: _root.look.point(10)
        wrapMode: Text.WrapAnywhere
        onClicked: GenToolbox.hidLink.revealPath(_root.archivePath)
    }
    Rectangle {
        width: parent.width
        height: 1
        color: _root.look.fill(PageStyle.settingsCardBorder, 1)
    }
    SwitchRow {
        objectName: "usbDebug"
        look: _root.look
        label: qsTranslate("SysSettings", "USB Debug")
        line: checked ? qsTranslate("SysSettings", "Detailed USB logs are enabled.")
                      : qsTranslate("SysSettings", "Detailed USB logs are disabled.")
        checked: _root.usbDebug
        onToggled: _root.usbDebugChosen(checked)
    }
    SwitchRow {
        objectName: "saveHistory"
        look: _root.look
        label: qsTranslate("SysSettings", "Save Meter History")
        line: checked ? qsTranslate("SysSettings", "Multimeter history will be saved to file.")
                      : qsTranslate("SysSettings", "Multimeter history is kept for this session only.")
        checked: _root.saveHistory
        onToggled: _root.saveHistoryChosen(checked)
    }
}
