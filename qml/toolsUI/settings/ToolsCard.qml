// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import GenToolbox 1.0

import "../../customize"
import "../common"

/// Log export, and the switches of USB log and multimeter history.
SettingsCard {
    id: _root

    title: qsTranslate("SysSettings", "Export Logs to Desktop")
    corner: PillButton {
        objectName: "exportButton"
        width: Math.max(96, implicitWidth)
        height: 36
        pointSize: 10
        text: qsTranslate("SysSettings", "Export")
        onClicked: _root.page.exportLogs()
    }

    TextLink {
        objectName: "archiveStatus"
        width: parent.width
        visible: text.length > 0
        active: _root.page._logsArchivePath.length > 0
        text: _root.page._logsArchiveStatus
        color: active ? _root.page.accentColor : _root.page.warningColor
        font.pointSize: _root.page.scaledPoint(10)
        wrapMode: Text.WrapAnywhere
        onClicked: GenToolbox.hidLink.revealPath(_root.page._logsArchivePath)
    }
    Rectangle {
        width: parent.width
        height: 1
        color: _root.page.bgColor(_root.page.cardBorder, 1)
    }
    SwitchRow {
        objectName: "usbDebug"
        page: _root.page
        label: qsTranslate("SysSettings", "USB Debug")
        line: checked ? qsTranslate("SysSettings", "Detailed USB logs are enabled.")
                      : qsTranslate("SysSettings", "Detailed USB logs are disabled.")
        checked: _root.page._usbDebugEnabled
        onToggled: {
            _root.page._usbDebugEnabled = checked
            GenToolbox.genSettings.setValue("usbDebugEnabled", checked, "sysSettings")
        }
    }
    SwitchRow {
        objectName: "saveHistory"
        page: _root.page
        label: qsTranslate("SysSettings", "Save Meter History")
        line: checked ? qsTranslate("SysSettings", "Multimeter history will be saved to file.")
                      : qsTranslate("SysSettings", "Multimeter history is kept for this session only.")
        checked: _root.page._saveMultimeterHistoryToFile
        onToggled: {
            _root.page._saveMultimeterHistoryToFile = checked
            GenToolbox.genSettings.setValue("saveMultimeterHistoryToFile", checked, "sysSettings")
        }
    }
}
