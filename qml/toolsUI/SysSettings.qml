// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import QtQuick.Controls 2.12
import QtQuick.Layouts 1.12
import QtQuick.Window 2.12
import GenControl.ScreenTools 1.0
import GenToolbox 1.0

import "../customize"
import "../customize/Format.js" as Format
import "settings"

/// The page "System Settings": server, window, firmware, identity, language, manuals, logs and switches.
Rectangle {
    id: syssetRoot

    property bool resizingWindow: false

    property string _logsArchivePath: ""
    readonly property string _logsArchiveStatus: !_exported ? ""
                                                 : _logsArchivePath.length === 0 ? qsTr("Log export failed.")
                                                                                 : qsTr("Saved to: ") + _logsArchivePath
    property bool _usbDebugEnabled: GenToolbox.genSettings.bValue("usbDebugEnabled", false, "sysSettings")
    property bool _saveMultimeterHistoryToFile: GenToolbox.genSettings.bValue("saveMultimeterHistoryToFile", false,
                                                                              "sysSettings")
    property string _serverHostText: GenToolbox.systemManager.serverHost
    property string _docsPortText: String(GenToolbox.systemManager.docsPort)
    property string _apiPortText: String(GenToolbox.systemManager.apiPort)
    readonly property string _serverConfigStatus: serverConfigDone === "saved" ? qsTr("Server settings saved.")
                                                  : serverConfigDone === "restored" ? qsTr("Default server settings restored.")
                                                                                    : ""
    property string _felDriverStatus: ""
    property string _hiddenKeyBuffer: ""
    property bool _showHiddenDriverTools: false
    property real _windowBackgroundOpacity: Format.clamp(
            GenToolbox.genSettings.dValue("windowBackgroundOpacity", 0.92, "sysSettings"), 0, 1)
    property var _languageOptions: languageOptions()
    readonly property real contentScale: Math.max(0.82, Math.min(1, width / 1180, height / 680))
    readonly property bool showLeftPanel: _frame.width >= _dfw * 96 && _frame.height >= _dfw * 58

    /// What was done with the server settings that the fields show: "", "saved" or "restored".
    property string serverConfigDone: ""
    property bool _exported: false
    readonly property real _dfw: ScreenTools.defaultFontPixelWidth
    readonly property real _margin: _dfw * 2
    readonly property string _hiddenSequence: "qzt"
    // The longest label in one line at the smallest font.
    readonly property real labelWidth: Math.max(136, _dfw * 18 * contentScale)

    readonly property color heroColor: "#183244"
    readonly property color heroAccent: "#4DD4E4"
    readonly property color cardColor: "#1A1E24"
    readonly property color cardBorder: "#353C46"
    readonly property color titleColor: "#F2F6F8"
    readonly property color textColor: "#D9E0E6"
    readonly property color dimColor: "#90A0AD"
    readonly property color okColor: "#44D37E"
    readonly property color warningColor: "#B8BDC4"
    readonly property color accentColor: "#3EC7DA"

    focus: true
    gradient: Gradient {
        GradientStop { position: 0; color: syssetRoot.bgColor("#0C1521", 1) }
        GradientStop { position: 1; color: syssetRoot.bgColor("#101114", 1) }
    }

    Keys.onPressed: {
        if (event.text.length === 1)
            event.accepted = _noteHiddenKey(event.text.toLowerCase())
    }

    function scaledPoint(size) {
        return Math.max(10, size * contentScale)
    }

    function bgColor(colorValue, opacity) {
        var shared = Window.window ? Window.window.windowBackgroundOpacity : undefined
        return Format.withAlpha(colorValue, opacity * (shared === undefined ? 1 : shared))
    }

    function languageOptions() {
        return GenApp.currentLanguage === 0 ? ["中文", "English"] : ["Chinese", "English"]
    }

    function resetUpgradeStatusUi() {
        _firmwareCard.resetUpgradeStatusUi()
    }

    function applyWindowBackgroundOpacity(value) {
        _windowBackgroundOpacity = value
        GenToolbox.genSettings.setValue("windowBackgroundOpacity", value, "sysSettings")
        var window = Window.window
        if (window && window.setWindowBackgroundOpacity)
            window.setWindowBackgroundOpacity(value)
    }

    function exportLogs() {
        _logsArchivePath = GenToolbox.systemManager.exportLogsArchive()
        _exported = true
    }

    function loadServerTexts() {
        _serverHostText = GenToolbox.systemManager.serverHost
        _docsPortText = String(GenToolbox.systemManager.docsPort)
        _apiPortText = String(GenToolbox.systemManager.apiPort)
    }

    // True when the key completes the sequence that shows or hides the driver tools.
    function _noteHiddenKey(key) {
        _hiddenKeyBuffer = (_hiddenKeyBuffer + key).slice(-_hiddenSequence.length)
        if (_hiddenKeyBuffer !== _hiddenSequence)
            return false
        _showHiddenDriverTools = !_showHiddenDriverTools
        _hiddenKeyBuffer = ""
        return true
    }

    // Scrolls the control that got the keyboard focus into view.
    function _reveal(item) {
        for (var ancestor = item; ancestor !== _cards; ancestor = ancestor.parent) {
            if (!ancestor)
                return
        }
        var top = item.mapToItem(_cards, 0, 0).y - _margin
        var bottom = top + item.height + 2 * _margin
        if (top < _scroll.contentY)
            _scroll.contentY = Math.max(0, top)
        else if (bottom > _scroll.contentY + _scroll.height)
            _scroll.contentY = Math.min(_scroll.contentHeight, bottom) - _scroll.height
    }

    // A line that appears above the control just used must not push it out of view. One that the user has
    // scrolled away from stays away.
    function _keepInView() {
        var item = Window.window ? Window.window.activeFocusItem : null
        if (!item)
            return
        var top = item.mapToItem(_scroll, 0, 0).y
        if (top < _scroll.height && top + item.height > 0)
            _reveal(item)
    }

    Rectangle {
        id: _frame

        anchors.fill: parent
        anchors.margins: syssetRoot._margin
        radius: 14
        color: syssetRoot.bgColor("#151A20", 1)
        border.width: 1
        border.color: syssetRoot.bgColor("#2A313A", 1)

        RowLayout {
            anchors.fill: parent
            anchors.margins: syssetRoot._margin
            spacing: syssetRoot._margin

            SettingsHero {
                Layout.fillHeight: true
                Layout.preferredWidth: Math.min(syssetRoot._dfw * 40, _frame.width * 0.28)
                visible: syssetRoot.showLeftPanel
                page: syssetRoot
            }
            Flickable {
                id: _scroll

                Layout.fillWidth: true
                Layout.fillHeight: true
                clip: true
                contentHeight: _cards.height
                boundsBehavior: Flickable.StopAtBounds
                onContentHeightChanged: syssetRoot._keepInView()
                WheelScroll {}
                ScrollBar.vertical: ScrollBar { policy: _scroll.contentHeight > _scroll.height ? ScrollBar.AlwaysOn : ScrollBar.AlwaysOff }

                Item {
                    id: _cards

                    readonly property real _spacing: 14 * syssetRoot.contentScale
                    readonly property bool _wide: width >= syssetRoot._dfw * 120
                    readonly property real _columnWidth: _wide ? (width - _spacing) / 2 : width

                    width: _scroll.width - 14
                    height: Math.max(_left.height, _right.y + _right.height)

                    Column {
                        id: _left

                        width: _cards._columnWidth
                        spacing: _cards._spacing

                        ServerLinkCard { page: syssetRoot }
                        OpacityCard { page: syssetRoot }
                        FirmwareCard {
                            id: _firmwareCard

                            page: syssetRoot
                        }
                    }
                    Column {
                        id: _right

                        x: _cards._wide ? _cards._columnWidth + _cards._spacing : 0
                        y: _cards._wide ? 0 : _left.height + _cards._spacing
                        width: _cards._columnWidth
                        spacing: _cards._spacing

                        OtherCard { page: syssetRoot }
                        ToolsCard { page: syssetRoot }
                        ServerHostCard { page: syssetRoot }
                    }
                }
            }
        }
    }

    Connections {
        target: GenApp
        function onLanguageChanged() { syssetRoot._languageOptions = syssetRoot.languageOptions() }
    }
    Connections {
        target: syssetRoot.Window.window
        function onActiveFocusItemChanged() {
            var item = syssetRoot.Window.window.activeFocusItem
            if (item)
                syssetRoot._reveal(item)
        }
    }
    Component.onCompleted: {
        // Whoever walks through the pages by keyboard keeps the focus in the page list, which passes keys on.
        var focused = Window.window ? Window.window.activeFocusItem : null
        if (!focused || !focused.visualFocus)
            forceActiveFocus()
    }
}
