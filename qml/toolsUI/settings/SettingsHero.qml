// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import GenToolbox 1.0

import "../../customize"
import "../../customize/Format.js" as Format
import "../common"

/// The left panel of the settings page: what the page is for and whether the controller is there.
HeroPanel {
    id: _root

    required property PageLook look

    readonly property bool _usbConnected: GenToolbox.systemManager.usbConnected

    color: look.fill(PageStyle.settingsHero, 1)
    accent: PageStyle.settingsHeroAccent
    titleColor: PageStyle.settingsTitle
    textColor: PageStyle.settingsText
    dimColor: PageStyle.settingsDim
    contentScale: look.contentScale
    badge: "SYS"
    badgeFill: look.fill(accent, 0.16)
    title: qsTranslate("SysSettings", "System Console")
    subtitle: qsTranslate("SysSettings",
                          "Manage firmware update, device identity and language preferences from one panel.")
    highlightsTitle: qsTranslate("SysSettings", "Highlights")
    highlights: [
        qsTranslate("SysSettings", "Use the firmware panel to verify connection before starting an upgrade."),
        qsTranslate("SysSettings", "Language switching takes effect immediately and refreshes the interface."),
        qsTranslate("SysSettings", "Keep the cable connected until the upgrade progress reaches 100 percent.")
    ]

    Rectangle {
        width: parent.width
        height: _snapshot.height + 24
        radius: 10
        color: _root.look.fill(PageStyle.settingsInset, 0.22)
        border.width: 1
        border.color: Format.withAlpha(_root.accent, 0.18)

        Column {
            id: _snapshot

            x: 14
            y: 12
            width: parent.width - 28
            spacing: 6

            Text {
                text: qsTranslate("SysSettings", "Device Snapshot")
                color: _root.titleColor
                font.family: GenFontManager.mainFontFamily
                font.pointSize: _root.look.point(11.5)
                font.bold: true
            }
            InfoRow {
                look: _root.look
                labelWidth: _snapshot.width * 0.38
                label: qsTranslate("SysSettings", "Connection")
                value: _root._usbConnected ? qsTranslate("SysSettings", "USB Connected")
                                           : qsTranslate("SysSettings", "USB Not Connected")
                valueColor: _root._usbConnected ? PageStyle.settingsOk : PageStyle.settingsWarning
            }
            InfoRow {
                look: _root.look
                labelWidth: _snapshot.width * 0.38
                label: qsTranslate("SysSettings", "Host ID")
                value: GenToolbox.hidLink.deviceId || Format.noValue
            }
        }
    }
}
