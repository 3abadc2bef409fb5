// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import QtQuick.Controls 2.12
import QtQuick.Layouts 1.12
import QtQuick.Window 2.12
import GenControl.ScreenTools 1.0
import GenToolbox 1.0

import "../customize"
import "../customize/Format.js" as Format
import "common"
import "settings"

/// The page "System Settings": server, window, firmware, identity, language, manuals, logs and switches.
SettingsPage {
    id: syssetRoot

    property string _logsArchivePath: ""
    readonly property string _logsArchiveStatus: !_exported ? ""
                                                 : _logsArchivePath.length === 0 ? qsTr("Log export failed.")
                                                                                 : qsTr("Saved to: ") + _logsArchivePath
    property bool _usbDebugEnabled: GenToolbox.genSettings.bValue("usbDebugEnabled", false, "sysSettings")
    property bool _saveMultimeterHistoryToFile: GenToolbox.genSettings.bValue("saveMultimeterHistoryToFile", false,
                                                                              "sysSettings")
    property alias _serverHostText: _serverHostCard.hostText
    property alias _docsPortText: _serverHostCard.docsPortText
    property alias _apiPortText: _serverHostCard.apiPortText
    readonly property string _serverConfigStatus: _serverHostCard.status
    property alias _felDriverStatus: _firmwareCard.driverStatus
    property string _hiddenKeyBuffer: ""
    property bool _showHiddenDriverTools: false
    property real _windowBackgroundOpacity: Format.clamp(
            GenToolbox.genSettings.dValue("windowBackgroundOpacity", 0.92, "sysSettings"), 0, 1)
    property var _languageOptions: languageOptions()
    readonly property bool showLeftPanel: _frame.width >= _dfw * 96 && _frame.height >= _dfw * 58

    property bool _exported: false
    readonly property real _dfw: ScreenTools.defaultFontPixelWidth
    readonly property real _margin: _dfw * 2
    readonly property string _hiddenSequence: "qzt"

    focus: true
    topColor: PageStyle.settingsTop
    bottomColor: PageStyle.settingsBottom

    Keys.onPressed: {
        if (event.text.length === 1)
            event.accepted = _noteHiddenKey(event.text.toLowerCase())
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

    function _exportLogs() {
        _logsArchivePath = GenToolbox.systemManager.exportLogsArchive()
        _exported = true
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
        color: syssetRoot.bgColor(PageStyle.settingsFrame, 1)
        border.width: 1
        border.color: syssetRoot.bgColor(PageStyle.settingsFrameBorder, 1)

        RowLayout {
            anchors.fill: parent
            anchors.margins: syssetRoot._margin
            spacing: syssetRoot._margin

            SettingsHero {
                Layout.fillHeight: true
                Layout.preferredWidth: Math.min(syssetRoot._dfw * 40, _frame.width * 0.28)
                visible: syssetRoot.showLeftPanel
                look: syssetRoot.look
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

                        ServerLinkCard { look: syssetRoot.look }
                        OpacityCard {
                            look: syssetRoot.look
                            backgroundOpacity: syssetRoot._windowBackgroundOpacity
                            onOpacityChosen: syssetRoot.applyWindowBackgroundOpacity(value)
                        }
                        FirmwareCard {
                            id: _firmwareCard

                            look: syssetRoot.look
                            driverToolsShown: syssetRoot._showHiddenDriverTools
                        }
                    }
                    Column {
                        id: _right

                        x: _cards._wide ? _cards._columnWidth + _cards._spacing : 0
                        y: _cards._wide ? 0 : _left.height + _cards._spacing
                        width: _cards._columnWidth
                        spacing: _cards._spacing

                        OtherCard {
                            look: syssetRoot.look
                            languageOptions: syssetRoot._languageOptions
                        }
                        ToolsCard {
                            look: syssetRoot.look
                            archivePath: syssetRoot._logsArchivePath
                            archiveStatus: syssetRoot._logsArchiveStatus
                            usbDebug: syssetRoot._usbDebugEnabled
                            saveHistory: syssetRoot._saveMultimeterHistoryToFile
                            onExportRequested: syssetRoot._exportLogs()
                            onUsbDebugChosen: {
                                syssetRoot._usbDebugEnabled = enabled
                                GenToolbox.genSettings.setValue("usbDebugEnabled", enabled, "sysSettings")
                            }
                            onSaveHistoryChosen: {
                                syssetRoot._saveMultimeterHistoryToFile = enabled
                                GenToolbox.genSettings.setValue("saveMultimeterHistoryToFile", enabled, "sysSettings")
                            }
                        }
                        ServerHostCard {
                            id: _serverHostCard

                            look: syssetRoot.look
                        }
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
