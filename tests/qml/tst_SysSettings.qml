// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import QtQuick.Window 2.12
import QtTest 1.12
import GenToolbox 1.0

import "qrc:/qml/customize"

Item {
    id: _root

    readonly property var manager: GenToolbox.systemManager

    width: 1200
    height: 800

    GenButton { id: _pageEntry }
    Loader { id: _loader; anchors.fill: parent }

    TestCase {
        name: "SysSettings"
        when: windowShown

        readonly property var page: _loader.item

        function init() {
            GenApp.setLanguage(1)
            _root.width = 1200
            _loader.source = ""
            mouseClick(_pageEntry)
            _loader.source = "qrc:/qml/toolsUI/SysSettings.qml"
            verify(page)
            waitForRendering(page)
        }

        function cleanup() {
            _root.manager.setServerHost("")
            _root.manager.setDocsPort(8000)
            _root.manager.setApiPort(8078)
        }

        function part(name) {
            var found = findChild(page, name)
            verify(found, name)
            return found
        }

        // Brings the control into view as the keyboard does, and gives it the focus.
        function reach(name) {
            var found = part(name)
            found.forceActiveFocus()
            waitForRendering(page)
            return found
        }

        function stored(key) {
            return GenToolbox.genSettings.sValue(key, "", "sysSettings")
        }

        // Replaces the text of a field, or types on the page.
        function type(item, text) {
            if (item.selectAll)
                item.selectAll()
            for (var i = 0; i < text.length; ++i)
                keyClick(text[i])
        }

        function test_serverSettings_data() {
            return [
                { tag: "normalised", host: "  lab.local// ", docs: "9000", api: "9078",
                  shown: ["http://lab.local", "9000", "9078"] },
                { tag: "ports out of range", host: "https://lab", docs: "0", api: "70000",
                  shown: ["https://lab", "8000", "8078"] },
                { tag: "empty", host: "", docs: "", api: "", shown: ["http://127.0.0.1", "8000", "8078"] }
            ]
        }

        function test_serverSettings(data) {
            _root.manager.setDocsPort(9001)
            _root.manager.setApiPort(9079)
            reach("hostField").text = data.host
            reach("docsPortField").text = data.docs
            reach("apiPortField").text = data.api
            reach("applyButton")
            mouseClick(part("applyButton"))
            compare([part("hostField").text, part("docsPortField").text, part("apiPortField").text], data.shown)
            compare([_root.manager.serverHost, String(_root.manager.docsPort), String(_root.manager.apiPort)], data.shown)
            compare(part("serverStatus").text, "Server settings saved.")
            compare(stored("serverHost"), data.shown[0])
        }

        function test_resetServerSettings() {
            _root.manager.setServerHost("lab")
            compare(part("hostField").text, "http://lab")
            _root.manager.setApiPort(1234)
            compare(part("apiPortField").text, "1234")
            reach("resetButton")
            keyClick(Qt.Key_Return)
            compare([part("hostField").text, part("apiPortField").text], ["http://127.0.0.1", "8078"])
            compare(part("serverStatus").text, "Default server settings restored.")
            // An edit of the fields ends the message.
            type(reach("apiPortField"), "1a2-b3456789")
            compare(part("apiPortField").text, "12345")
            compare(part("serverStatus").text, "")
        }

        // Each notch of the wheel scrolls by a fixed length, however fast the notches come.
        function test_quickWheelNotches() {
            var scroll = part("usbDebug")
            while (scroll.flicking === undefined)
                scroll = scroll.parent
            scroll.contentY = 0
            mouseWheel(scroll, scroll.width / 2, scroll.height / 2, 0, -120)
            var notch = scroll.contentY
            mouseWheel(scroll, scroll.width / 2, scroll.height / 2, 0, -120)
            verify(notch > 0 && !scroll.flicking)
            compare(scroll.contentY, Math.min(2 * notch, scroll.contentHeight - scroll.height))
        }

        function test_opacity() {
            var slider = reach("opacitySlider")
            slider.value = 0.5
            keyClick(Qt.Key_Right)
            fuzzyCompare(GenToolbox.genSettings.dValue("windowBackgroundOpacity", 0, "sysSettings"), 0.51, 1e-9)
            GenToolbox.genSettings.setValue("windowBackgroundOpacity", 0.92, "sysSettings")
        }

        function test_switches_data() {
            return [
                { tag: "usbDebug", key: "usbDebugEnabled",
                  lines: ["Detailed USB logs are disabled.", "Detailed USB logs are enabled."] },
                { tag: "saveHistory", key: "saveMultimeterHistoryToFile",
                  lines: ["Multimeter history is kept for this session only.", "Multimeter history will be saved to file."] }
            ]
        }

        function test_switches(data) {
            var row = part(data.tag)
            var control = findChild(row, "switch")
            compare(row.line, data.lines[0])
            control.forceActiveFocus()
            waitForRendering(page)
            mouseClick(control)
            compare([row.line, stored(data.key)], [data.lines[1], "true"])
            keyClick(Qt.Key_Space)
            compare([row.line, stored(data.key)], [data.lines[0], "false"])
        }

        // The page changes its language at once and keeps what it shows.
        function test_language() {
            _root.manager.progressChanged(42)
            part("hostField").text = "being typed"
            var box = reach("languageCombobox")
            compare(box.model, ["Chinese", "English"])
            keyClick(Qt.Key_Up)
            compare(GenApp.currentLanguage, 0)
            compare([box.currentIndex, box.displayText], [0, "中文"])
            compare(part("progressText").text, "42%")
            compare(part("hostField").text, "being typed")
            GenApp.setLanguage(1)
            compare([box.currentIndex, box.displayText], [1, "English"])
        }

        function test_hiddenTools_data() {
            return [
                { tag: "typed", keys: "qzt", shown: true },
                { tag: "typed into a field", field: "hostField", keys: "qzt", shown: false },
                { tag: "capitals", keys: "QZT", shown: true },
                { tag: "others before", keys: "aqqzt", shown: true },
                { tag: "others between", keys: "qzxt", shown: false },
                { tag: "twice", keys: "qztqzt", shown: false },
                { tag: "overlapping", keys: "qztzt", shown: true }
            ]
        }

        function test_hiddenTools(data) {
            verify(page.activeFocus)
            if (data.field)
                reach(data.field)
            type(page, data.keys)
            compare(part("installDriverButton").visible, data.shown)
            compare(part("uninstallDriverButton").visible, data.shown)
        }

        function test_focusStaysWithTheKeyboardInThePageList() {
            _loader.source = ""
            _pageEntry.forceActiveFocus(Qt.TabFocusReason)
            _loader.source = "qrc:/qml/toolsUI/SysSettings.qml"
            verify(_pageEntry.activeFocus)
        }

        function test_firmwareProgress() {
            verify(!part("upgradeButton").enabled)
            compare(part("progressText").text, "0%")
            _root.manager.progressChanged(52)
            compare([part("progressText").text, part("progressBar").value], ["52%", 52])
            compare(part("stateText").color, "#ffff00")

            // The controller is lost during the upgrade. A missing USB connection resets nothing.
            _root.manager.felReadyChanged()
            compare(part("stateText").text, "Upgrade Faild")
            _root.manager.usbConnectedChanged()
            compare([part("stateText").text, part("progressText").text], ["Upgrade Faild", "52%"])

            _root.manager.progressChanged(100)
            compare(part("stateText").text, "Upgrade complete")
            compare(part("stateText").color, PageStyle.settingsOk)
            _root.manager.felReadyChanged()
            compare(part("stateText").text, "Upgrade complete")
            // Unplugged after the end.
            _root.manager.usbConnectedChanged()
            compare([part("stateText").text, part("progressText").text], ["", "0%"])

            _root.manager.progressChanged(30)
            _root.manager.upgradeFinished(false)
            compare(part("stateText").text, "Upgrade Faild")
        }

        // On other systems than Windows the job ends at once, with a message.
        function test_driverJobTellsItsEnd() {
            type(page, "qzt")
            reach("installDriverButton")
            keyClick(Qt.Key_Return)
            tryCompare(part("stateText"), "text", "FEL driver installation is only supported on Windows.")
            compare(part("stateText").color, PageStyle.settingsWarning)
            verify(part("installDriverButton").enabled)
            _root.manager.felDriverInstallFinished(true, "done")
            compare([part("stateText").text, part("stateText").color], ["done", PageStyle.settingsOk])
        }

        function test_logExport() {
            reach("exportButton")
            keyClick(Qt.Key_Return)
            var status = part("archiveStatus")
            tryVerify(function() { return status.text.length > 0 })
            verify(status.active ? status.text.indexOf("Saved to: /") === 0 : status.text === "Log export failed.")
        }

        // Tab moves from control to control. Each control is in view when it has the focus.
        function test_tabReachesEverything() {
            verify(page.showLeftPanel)
            _root.width = 700
            verify(!page.showLeftPanel)
            var missing = ["opacitySlider", "typesCombobox", "languageCombobox", "chineseManual", "englishManual",
                           "exportButton", "hostField", "docsPortField", "apiPortField", "resetButton", "applyButton"]
            for (var i = 0; i < 40 && missing.length > 0; ++i) {
                keyClick(Qt.Key_Tab)
                var item = _root.Window.window.activeFocusItem
                var top = item.mapToItem(page, 0, 0).y
                verify(top >= 0 && top + item.height <= page.height, item.objectName)
                missing = missing.filter(function(name) { return name !== item.objectName })
            }
            compare(missing, [])
        }
    }
}
