// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import GenToolbox 1.0

import "../../customize"
import "../common"

/// Address and ports of the server.
SettingsCard {
    id: _root

    readonly property var _manager: GenToolbox.systemManager

    title: qsTranslate("SysSettings", "Server Host")
    hint: qsTranslate("SysSettings", "Configure host, docs port, and API port separately.")

    function loadFields() {
        page.loadServerTexts()
        _host.text = page._serverHostText
        _docsPort.text = page._docsPortText
        _apiPort.text = page._apiPortText
    }

    // An empty host stands for the default server, and what is no number becomes 0, for the default port.
    function _apply(host, docsPort, apiPort) {
        _manager.setServerHost(host)
        _manager.setDocsPort(Number(docsPort))
        _manager.setApiPort(Number(apiPort))
        loadFields()
    }

    InfoRow {
        page: _root.page
        label: qsTranslate("SysSettings", "Host")

        GenTextField {
            id: _host

            objectName: "hostField"
            width: parent.width
            showClearButton: true
            placeholderText: qsTranslate("SysSettings", "Example: http://127.0.0.1")
            font.pointSize: _root.page.scaledPoint(10.5)
            Accessible.name: qsTranslate("SysSettings", "Host")
            onTextChanged: _root.page.serverConfigDone = ""
            onEditingFinished: _root.page._serverHostText = text
        }
    }
    InfoRow {
        page: _root.page
        label: qsTranslate("SysSettings", "Docs Port")

        PortField {
            id: _docsPort

            objectName: "docsPortField"
            placeholderText: qsTranslate("SysSettings", "8000")
            font.pointSize: _root.page.scaledPoint(10.5)
            Accessible.name: qsTranslate("SysSettings", "Docs Port")
            onTextChanged: _root.page.serverConfigDone = ""
            onEditingFinished: _root.page._docsPortText = text
        }
    }
    InfoRow {
        page: _root.page
        label: qsTranslate("SysSettings", "API Port")

        PortField {
            id: _apiPort

            objectName: "apiPortField"
            placeholderText: qsTranslate("SysSettings", "8078")
            font.pointSize: _root.page.scaledPoint(10.5)
            Accessible.name: qsTranslate("SysSettings", "API Port")
            onTextChanged: _root.page.serverConfigDone = ""
            onEditingFinished: _root.page._apiPortText = text
        }
    }
    Text {
        objectName: "serverStatus"
        width: parent.width
        visible: text.length > 0
        text: _root.page._serverConfigStatus
        color: _root.page.okColor
        font.family: GenFontManager.mainFontFamily
        font.pointSize: _root.page.scaledPoint(10.5)
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
                _root.page.serverConfigDone = "saved"
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
                _root.page.serverConfigDone = "restored"
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
