// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import GenToolbox 1.0

import "../../customize"
import "../common"

/// Address and ports of the server.
SettingsCard {
    id: _root

    /// The fields as last loaded or as edited to the end.
    property string hostText: _manager.serverHost
    property string docsPortText: String(_manager.docsPort)
    property string apiPortText: String(_manager.apiPort)
    /// What was done with the settings that the fields show: "", "saved" or "restored".
    property string done: ""
    readonly property string status: done === "saved" ? qsTranslate("SysSettings", "Server settings saved.")
        : done === "restored" ? qsTranslate("SysSettings", "Default server settings restored.") : ""

    readonly property QtObject _manager: GenToolbox.systemManager

    title: qsTranslate("SysSettings", "Server Host")
    hint: qsTranslate("SysSettings", "Configure host, docs port, and API port separately.")

    function loadFields() {
        _host.text = hostText = _manager.serverHost
        _docsPort.text = docsPortText = String(_manager.docsPort)
        _apiPort.text = apiPortText = String(_manager.apiPort)
    }

    // An empty host stands for the default server, and what is no number becomes 0, for the default port.
    function _apply(host, docsPort, apiPort) {
        _manager.setServerHost(host)
        _manager.setDocsPort(Number(docsPort))
        _manager.setApiPort(Number(apiPort))
        loadFields()
    }

    InfoRow {
        look: _root.look
        label: qsTranslate("SysSettings", "Host")

        GenTextField {
            id: _host

            objectName: "hostField"
            width: parent.width
            showClearButton: true
            placeholderText: qsTranslate("SysSettings", "Example: http://127.0.0.1")
            font.pointSize: _root.look.point(10.5)
            Accessible.name: qsTranslate("SysSettings", "Host")
            onTextChanged: _root.done = ""
            onEditingFinished: _root.hostText = text
        }
    }
    InfoRow {
        look: _root.look
        label: qsTranslate("SysSettings", "Docs Port")

        PortField {
            id: _docsPort

            objectName: "docsPortField"
            placeholderText: qsTranslate("SysSettings", "8000")
            font.pointSize: _root.look.point(10.5)
            Accessible.name: qsTranslate("SysSettings", "Docs Port")
            onTextChanged: _root.done = ""
            onEditingFinished: _root.docsPortText = text
        }
    }
    InfoRow {
        look: _root.look
        label: qsTranslate("SysSettings", "API Port")

        PortField {
            id: _apiPort

            objectName: "apiPortField"
            placeholderText: qsTranslate("SysSettings", "8078")
            font.pointSize: _root.look.point(10.5)
            Accessible.name: qsTranslate("SysSettings", "API Port")
            onTextChanged: _root.done = ""
            onEditingFinished: _root.apiPortText = text
        }
    }
    Text {
        objectName: "serverStatus"
        width: parent.width
        visible: text.length > 0
        text: _root.status
        color: PageStyle.settingsOk
        font.family: GenFontManager.mainFontFamily
        font.pointSize: _root.look.point(10.5)
        wrapMode: Text.Wrap
        Accessible.role: Accessible.AlertMessage
        Accessible.name: text
    }
    ButtonRow {
        GenTextButton {
            objectName: "applyButton"
            minHeight: 36
            text: qsTranslate("SysSettings", "Apply")
            onClicked: {
                _root._apply(_host.text, _docsPort.text, _apiPort.text)
                _root.done = "saved"
            }
        }
        PillButton {
            objectName: "resetButton"
            width: Math.max(120, implicitWidth)
            height: 36
            pointSize: 10
            text: qsTranslate("SysSettings", "Reset Default")
            onClicked: {
                _root._apply("", "8000", "8078")
                _root.done = "restored"
            }
        }
    }

    Connections {
        target: _root._manager
        function onServerHostChanged() { _root.loadFields() }
        function onDocsPortChanged() { _root.loadFields() }
        function onApiPortChanged() { _root.loadFields() }
    }
    Component.onCompleted: loadFields()
}
