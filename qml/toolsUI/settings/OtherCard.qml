// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import GenToolbox 1.0

import "../../customize"
import "../../customize/Format.js" as Format
import "../common"

/// Identity of the instrument, interface language and manuals.
SettingsCard {
    id: _root

    property var languageOptions: []

    readonly property color _identityColor: GenToolbox.hidLink.connected ? PageStyle.settingsAccent : PageStyle.settingsWarning

    title: qsTranslate("SysSettings", "Other Settings")
    hint: qsTranslate("SysSettings", "Review device identity information, switch the interface language, "
                      + "and open online manuals.")

    InfoRow {
        look: _root.look
        label: qsTranslate("SysSettings", "Host ID")
        value: GenToolbox.hidLink.deviceId || Format.noValue
        valueColor: _root._identityColor
    }
    InfoRow {
        look: _root.look
        label: qsTranslate("SysSettings", "Host Version")
        value: GenToolbox.hidLink.deviceVersion || Format.noValue
        valueColor: _root._identityColor
    }
    InfoRow {
        look: _root.look
        label: qsTranslate("SysSettings", "Language")

        GenCombobox {
            id: _languages

            objectName: "languageCombobox"
            width: Math.min(parent.width, 200)
            implicitHeight: 36
            model: _root.languageOptions
            currentIndex: GenApp.currentLanguage
            Accessible.name: qsTranslate("SysSettings", "Language") + " " + displayText
            // A new model takes the index along.
            onModelChanged: currentIndex = GenApp.currentLanguage
            onActivated: {
                if (index !== GenApp.currentLanguage)
                    GenApp.setLanguage(index)
            }
        }
    }
    InfoRow {
        look: _root.look
        label: qsTranslate("SysSettings", "Online Docs")

        Flow {
            width: parent.width
            spacing: 20

            TextLink {
                objectName: "chineseManual"
                text: qsTranslate("SysSettings", "Chinese Manual")
                color: PageStyle.settingsAccent
                font.pointSize: _root.look.point(10.5)
                onClicked: Qt.openUrlExternally(GenToolbox.systemManager.docsZhUrl())
            }
            TextLink {
                objectName: "englishManual"
                text: qsTranslate("SysSettings", "English Manual")
                color: PageStyle.settingsAccent
                font.pointSize: _root.look.point(10.5)
                onClicked: Qt.openUrlExternally(GenToolbox.systemManager.docsEnUrl())
            }
        }
    }

    Connections {
        target: GenApp
        function onCurrentLanguageChanged() { _languages.currentIndex = GenApp.currentLanguage }
    }
}
