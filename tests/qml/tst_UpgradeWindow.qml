// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import QtQuick.Window 2.12
import QtTest 1.12
import CUpgradeControl 1.0
import GenToolbox 1.0

import "qrc:/qml/toolsUI"

Item {
    id: _root

    property int behindClicks: 0

    width: 800
    height: 600

    MouseArea {
        anchors.fill: parent
        acceptedButtons: Qt.AllButtons
        onClicked: ++_root.behindClicks
    }
    TextInput { id: _behind; width: 10; height: 10 }
    Loader { id: _loader; anchors.fill: parent }
    SignalSpy { id: _reports; target: CUpgradeControl; signalName: "updateStatus" }

    Component { id: _dialogComponent; UpgradeWindow {} }

    TestCase {
        name: "UpgradeWindow"
        when: windowShown

        readonly property var dialog: _loader.item

        function initTestCase() {
            GenApp.setLanguage(1)
        }

        function init() {
            GenToolbox.genSettings.setValue("ignoredVersion", "", "upgrade")
            _loader.sourceComponent = undefined
            _loader.sourceComponent = _dialogComponent
            _root.behindClicks = 0
        }

        function part(name) {
            var found = findChild(dialog, name)
            verify(found, name)
            return found
        }

        function startDownload() {
            dialog.show2("1.2.0", "news")
            dialog._status = 1
            compare(part("progressMessage").text, "Connect to Server...")
            compare(part("downloadBar").value, 0)
        }

        function ignored() {
            return GenToolbox.genSettings.sValue("ignoredVersion", "", "upgrade")
        }

        // The server's text is shown unchanged and is not markup.
        function test_offers() {
            verify(!dialog.visible)
            dialog.show2(" 1.2.0 ", "<b>news</b>")
            verify(dialog.visible)
            compare(part("headline").text, "A new software version has been detected. Do you want to upgrade now?")
            compare(part("details").text, "最新版本: 1.2.0 \n更新内容:<b>news</b>\n")
            verify(part("upgradeButton").visible && part("ignoreBox").visible)
            compare([part("ignoreBox").checked, ignored()], [false, ""])

            dialog.show("http://h/p.exe", "news")
            compare(part("details").text, "更新内容:\nnews")
        }

        function test_manualResults_data() {
            return [
                { tag: "newer", need: true, latest: "1.2", desc: "d", message: "", ignore: true,
                  details: "A new version is available.\n\nCurrent version: 1.1.4\nLatest version: 1.2\nUpdate content: d\n" },
                { tag: "same", need: false, latest: "1.1.4", desc: "", message: "", ignore: true,
                  details: "You are already using the latest version.\n\nCurrent version: 1.1.4\nLatest version: 1.1.4\n" },
                { tag: "error", need: false, latest: "", desc: "", message: "Refused.", ignore: false,
                  details: "Refused.\n\nCurrent version: 1.1.4\n" }
            ]
        }

        function test_manualResults(data) {
            dialog.showChecking()
            compare(part("headline").text, "Checking for updates, please wait...")
            compare(part("details").text,
                    "Checking for updates, please wait...\n\nCurrent version: " + applicationVersion + "\n")
            verify(!part("upgradeButton").visible && !part("ignoreBox").visible)
            dialog.showManualResult(data.need, "1.1.4", data.latest, data.desc, "http://h/p", data.message)
            compare(part("details").text, data.details)
            compare([part("upgradeButton").visible, part("ignoreBox").visible], [data.need, data.ignore])
            compare(part("headline").text, data.need
                    ? "A new software version has been detected. Do you want to upgrade now?" : "No update is available.")
        }

        function test_ignoredVersionIsRemembered() {
            dialog.show2("1.2.0", "news")
            mouseClick(part("ignoreBox"), 10, 18)
            compare(ignored(), "1.2.0")
            mouseClick(part("cancelButton"))
            verify(!dialog.visible)
            // Known again the next time, and showing it changes nothing.
            for (var version of ["1.2.0", "1.3.0"]) {
                dialog.show2(version, "news")
                compare([part("ignoreBox").checked, ignored()], [version === "1.2.0", "1.2.0"])
            }

            dialog.showManualResult(true, "1.1.4", "1.2.0", "", "", "")
            compare(part("ignoreBox").checked, true)
            part("ignoreBox").forceActiveFocus()
            keyClick(Qt.Key_Space)
            compare(ignored(), "")
        }

        function test_statusTexts_data() {
            var failure = "The update failed, please check whether the network is normal."
            return [
                { tag: "start", status: CUpgradeControl.UPC_Start, text: "Connect to Server..." },
                { tag: "download", status: CUpgradeControl.UPC_Download, text: "download file..." },
                { tag: "finished", status: CUpgradeControl.UPC_Finished, text: "download finished", finished: true },
                { tag: "access", status: CUpgradeControl.UPC_Access, text: failure },
                { tag: "canceled closes", status: CUpgradeControl.UPC_Canceled, closes: true },
                { tag: "error", status: CUpgradeControl.UPC_NetworkError, text: failure }
            ]
        }

        function test_statusTexts(data) {
            startDownload()
            CUpgradeControl.updateStatus(data.status)
            compare(dialog.visible, !data.closes)
            if (data.closes)
                return
            compare(part("progressMessage").text, data.text)
            compare(part("dismissButton").text, data.finished ? "Cancel" : "Cancel upgrade")
            compare(part("installButton").visible, !!data.finished)
        }

        function test_progress() {
            startDownload()
            CUpgradeControl.emitdownloadProgress("0.5")
            compare([part("downloadBar").value, part("downloadBar").indeterminate], [50, false])
            // The server gave no length.
            CUpgradeControl.emitdownloadProgress("-1.04858e+06")
            compare([part("downloadBar").value, part("downloadBar").indeterminate], [0, true])
        }

        // Nothing was downloaded. The install is refused, and the dialog reports that before it closes.
        function test_finishedDownload() {
            for (var key of [Qt.Key_Escape, Qt.Key_Return, 0]) {
                startDownload()
                CUpgradeControl.emitdownloadProgress("1")
                CUpgradeControl.updateStatus(CUpgradeControl.UPC_Finished)
                if (key)
                    keyClick(key)
                else
                    mouseClick(part("dismissButton"))
                verify(!dialog.visible, key)
            }
            startDownload()
            CUpgradeControl.updateStatus(CUpgradeControl.UPC_Finished)
            // A check that fails meanwhile does not change the dialog.
            _reports.clear()
            CUpgradeControl.checkUpdate("http://127.0.0.1:1/")
            _reports.wait()
            compare(part("progressMessage").text, "download finished")
            part("installButton").forceActiveFocus()
            keyClick(Qt.Key_Return)
            verify(dialog.visible)
            compare(part("dismissButton").text, "Cancel upgrade")
            keyClick(Qt.Key_Return)
            verify(!dialog.visible)
        }

        // The dialog opens, or its answer arrives, while the user types in another place.
        function test_keysThatWereMeantForSomethingElse() {
            _behind.forceActiveFocus()
            GenToolbox.genSettings.setValue("ignoredVersion", "1.1.9", "upgrade")
            for (var i = 0; i < 2; ++i) {
                dialog.showChecking()
                dialog.showManualResult(true, "1.1.4", "1.2", "", "", "")
                for (var key of [Qt.Key_Return, Qt.Key_Enter, Qt.Key_Space, Qt.Key_A])
                    keyClick(key)
                verify(part("upgradeButton").visible)
                part("upgradeButton").forceActiveFocus()
                keyClick(Qt.Key_Escape)
                verify(!dialog.visible)
            }
            compare(ignored(), "1.1.9")
            compare(_behind.text, "")
            verify(_behind.activeFocus)
        }

        function test_tabGoesRound() {
            _behind.activeFocusOnTab = true
            _behind.forceActiveFocus()
            dialog.show2("1.2.0", "news")
            var reached = []
            for (var i = 0; i < 8; ++i) {
                keyClick(Qt.Key_Tab)
                reached.push(_root.Window.window.activeFocusItem.objectName)
            }
            var round = ["cancelButton", "details", "ignoreBox", "upgradeButton"]
            compare(reached.slice(0, 4).sort(), round)
            compare(reached.slice(4).sort(), round)
        }

        function test_nothingBehindIsClicked() {
            dialog.show2("1.2.0", "news")
            mouseClick(_root, 20, 20)
            mouseClick(_root, 20, 20, Qt.RightButton)
            compare(_root.behindClicks, 0)
            dialog.close()
            mouseClick(_root, 20, 20)
            compare(_root.behindClicks, 1)
        }

        // In the coordinates of the window, because the box moves along.
        function dragTo(fromX, fromY, toX, toY) {
            mousePress(_root, fromX, fromY)
            for (var i = 1; i <= 10; ++i)
                mouseMove(_root, fromX + (toX - fromX) * i / 10, fromY + (toY - fromY) * i / 10)
            mouseRelease(_root, toX, toY)
        }

        function test_canBeDragged() {
            dialog.show2("1.2.0", "news")
            var box = part("box")
            var x = box.x
            var y = box.y
            dragTo(x + 40, y + 12, x + 100, y + 57)
            verify(Math.abs(box.x - x - 60) <= 20 && Math.abs(box.y - y - 45) <= 20)
            dragTo(box.x + 40, box.y + 12, _root.width - 1, _root.height - 1)
            compare(box.x, dialog.width - box.width)
        }
    }
}
