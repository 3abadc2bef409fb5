// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import GenToolbox 1.0

import "../../customize"
import "../common"

/// Upgrades the controller's firmware, and on request installs the driver of its boot mode.
SettingsCard {
    id: _root

    readonly property QtObject _manager: GenToolbox.systemManager
    /// 0 to 100.
    property int progress: 0
    /// What the state label tells: "", "running", "complete", "failed", "installing", "uninstalling" or
    /// "driverResult".
    property string upgradeState: ""
    /// What became of the last driver installation, for "driverResult".
    property string driverStatus: ""
    property bool driverToolsShown: false

    property color _stateColor: PageStyle.settingsText

    title: qsTranslate("SysSettings", "MCU Firmware Upgrade")
    hint: qsTranslate("SysSettings", "Upgrade the controller firmware with a monitored progress flow.")
    corner: StatusBadge {
        text: _root._manager.felReady ? qsTranslate("SysSettings", "FEL Ready")
                                      : qsTranslate("SysSettings", "Waiting")
        tone: _root._manager.felReady ? PageStyle.settingsOk : PageStyle.settingsWarning
        color: _root.look.fill(tone, 0.14)
        pointSize: _root.look.point(10)
    }

    function resetUpgradeStatusUi() {
        progress = 0
        _setState("", PageStyle.settingsText)
        driverStatus = ""
    }

    function _setState(state, color) {
        upgradeState = state
        _stateColor = color
    }

    function _startUpgrade() {
        var type = typesCombobox.currentText
        _setState("running", PageStyle.settingsText)
        _manager.startUpgrade(type)
        // These two refusals are not told by any signal.
        if (!_manager.felReady || _manager.mcuTypes.indexOf(type) < 0)
            _setState("failed", PageStyle.settingsFailure)
        else if (upgradeState === "") // cleared by a controller that was noticed only now
            _setState("running", PageStyle.settingsText)
    }

    function _driverJob(state, job) {
        _setState(state, PageStyle.settingsText)
        driverStatus = _stateText()
        job()
    }

    function _stateText() {
        switch (upgradeState) {
        case "running":
            return qsTranslate("SysSettings", "Upgrade..., please wait.")
        case "complete":
            return qsTranslate("SysSettings", "Upgrade complete")
        case "failed":
            return qsTranslate("SysSettings", "Upgrade Faild")
        case "installing":
            return qsTranslate("SysSettings",
                               "Installing FEL driver, please approve the Windows permission prompt.")
        case "uninstalling":
            return qsTranslate("SysSettings",
                               "Uninstalling FEL driver, please approve the Windows permission prompt.")
        case "driverResult":
            return driverStatus
        default:
            return ""
        }
    }

    Grid {
        id: _facts

        readonly property real _cellWidth: (width - columnSpacing * (columns - 1)) / columns
        // Room for the longest value in one line beside its label.
        readonly property real _narrowestCell: _root.look.labelWidth + 132

        width: parent.width
        columns: width >= 2 * _narrowestCell + columnSpacing ? 2 : 1
        columnSpacing: 24
        rowSpacing: 8

        InfoRow {
            width: _facts._cellWidth
            look: _root.look
            label: qsTranslate("SysSettings", "Connection Status")
            value: _root._manager.usbConnected ? qsTranslate("SysSettings", "Connected")
                                               : qsTranslate("SysSettings", "Not Connected")
            valueColor: _root._manager.usbConnected ? PageStyle.settingsOk : PageStyle.settingsWarning
        }
        InfoRow {
            width: _facts._cellWidth
            look: _root.look
            label: qsTranslate("SysSettings", "FEL Status")
            value: _root._manager.felReady ? qsTranslate("SysSettings", "Ready")
                                           : qsTranslate("SysSettings", "Not Ready")
            valueColor: _root._manager.felReady ? PageStyle.settingsOk : PageStyle.settingsWarning
        }
        InfoRow {
            width: _facts._cellWidth
            look: _root.look
            label: qsTranslate("SysSettings", "Current Version")
            value: "1.0.0"
        }
        InfoRow {
            width: _facts._cellWidth
            look: _root.look
            label: qsTranslate("SysSettings", "Latest Version")
            value: "1.0.0"
        }
    }
    InfoRow {
        look: _root.look
        label: qsTranslate("SysSettings", "Firmware Type")

        GenCombobox {
            id: typesCombobox

            objectName: "typesCombobox"
            width: Math.min(parent.width, 320)
            implicitHeight: 36
            model: _root._manager.mcuTypes
            Accessible.name: qsTranslate("SysSettings", "Firmware Type") + " " + displayText
        }
    }
    Item {
        width: parent.width
        height: _percentage.height

        Text {
            text: qsTranslate("SysSettings", "Upgrade Progress")
            color: PageStyle.settingsDim
            font.family: GenFontManager.mainFontFamily
            font.pointSize: _root.look.point(10.5)
        }
        Text {
            id: _percentage

            objectName: "progressText"
            anchors.right: parent.right
            text: _root.progress === 0 ? qsTranslate("SysSettings", "0%") : _root.progress + "%"
            color: PageStyle.settingsAccent
            font.family: GenFontManager.mainFontFamily
            font.pointSize: _root.look.point(10.5)
            font.bold: true
        }
    }
    FlatProgressBar {
        objectName: "progressBar"
        width: parent.width
        barColor: PageStyle.settingsAccent
        grooveColor: _root.look.fill(PageStyle.settingsGroove, 1)
        value: _root.progress
    }
    Text {
        objectName: "stateText"
        width: parent.width
        visible: text.length > 0
        text: _root._stateText()
        textFormat: Text.PlainText
        color: _root._stateColor
        font.family: GenFontManager.mainFontFamily
        font.pointSize: _root.look.point(10.5)
        wrapMode: Text.Wrap
        Accessible.role: Accessible.AlertMessage
        Accessible.name: text
    }
    ButtonRow {
        GenTextButton {
            objectName: "upgradeButton"
            minHeight: 36
            text: qsTranslate("SysSettings", "Upgrade")
            enabled: _root._manager.felReady
            onClicked: _root._startUpgrade()
        }
        PillButton {
            objectName: "uninstallDriverButton"
            height: 36
            pointSize: 10
            visible: _root.driverToolsShown
            enabled: !_root._manager.felDriverInstallBusy
            opacity: enabled ? 1 : 0.5
            text: enabled ? qsTranslate("SysSettings", "Uninstall FEL Driver")
                          : qsTranslate("SysSettings", "Processing...")
            onClicked: _root._driverJob("uninstalling", _root._manager.uninstallFelDriver)
        }
        PillButton {
            objectName: "installDriverButton"
            height: 36
            pointSize: 10
            visible: _root.driverToolsShown
            enabled: !_root._manager.felDriverInstallBusy
            opacity: enabled ? 1 : 0.5
            text: enabled ? qsTranslate("SysSettings", "Install FEL Driver")
                          : qsTranslate("SysSettings", "Installing...")
            onClicked: _root._driverJob("installing", _root._manager.installFelDriver)
        }
    }

    Connections {
        target: _root._manager
        function onProgressChanged(value) {
            _root.progress = value
            if (value === 100)
                _root._setState("complete", PageStyle.settingsOk)
            else
                _root._stateColor = _root._manager.felReady ? PageStyle.settingsText : PageStyle.settingsFailure
        }
        function onUpgradeFinished(ok) {
            if (!ok) {
                _root._setState("failed", PageStyle.settingsFailure)
            } else if (_root.progress === 100 || _root.upgradeState === "running") {
                // Also after a press that came too early for another upgrade, and on a page opened meanwhile.
                _root.progress = 100
                _root._setState("complete", PageStyle.settingsOk)
            }
        }
        function onFelReadyChanged() {
            if (!_root._manager.felReady && _root.progress !== 0 && _root.progress !== 100)
                _root._setState("failed", PageStyle.settingsFailure)
        }
        function onUsbConnectedChanged() {
            var atEnd = _root.progress === 100 || _root.upgradeState === "complete"
            var idle = atEnd || _root.progress === 0 || _root.upgradeState === "failed"
            if (_root._manager.usbConnected ? idle : atEnd)
                _root.resetUpgradeStatusUi()
        }
        function onFelDriverInstallFinished(ok, message) {
            _root.driverStatus = message
            _root._setState("driverResult", ok ? PageStyle.settingsOk : PageStyle.settingsWarning)
        }
    }
}
