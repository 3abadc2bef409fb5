// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import QtTest 1.12
import GenControl.ScreenTools 1.0
import GenToolbox 1.0

Item {
    id: _root

    width: 1000
    height: 640

    PageTestCase {
        name: "MultimeterGauge"

        readonly property var _link: GenToolbox.hidLink

        function open() {
            openPage("MultimeterGauge.qml")
            waitForRendering(page)
        }

        function table() { return having(page, "menuRequested") }
        function menu() { return having(page, "dismissed") }
        function readingPanel() { return having(page, "heading") }

        function rowTexts() {
            return _link.multimeterCurrentTable.map(function(row) { return row.ResistanceValue }).join(" ")
        }

        function record(texts) {
            texts.split(" ").forEach(function(text) { TestInstrument.read(2, text, 5) })
        }

        function rightClickRow(row) {
            var item = table().listView.itemAtIndex(row)
            mouseClick(item, 40, item.height / 2, Qt.RightButton)
        }

        function init() {
            GenToolbox.genSettings.setValue("historyTableVisible", true, "multimeterGauge")
            TestInstrument.plugIn()
        }

        function test_functionButtonsAskTheInstrument() {
            open();
            // The second click changes nothing.
            ["Voltage", "Resistance", "Capacitance", "Diode", "Buzzer", "Buzzer"].forEach(function(name, index) {
                mouseClick(button(name))
                compare(TestInstrument.lastRequest(), [0x10, 1, 4, Math.min(4, index), 255, 255])
                compare([button(name).active, button(name).checked], [true, true])
                compare(readingPanel().heading, name + " Gear")
            })
            button("Diode").forceActiveFocus(Qt.TabFocusReason)
            keyClick(Qt.Key_Return)
            compare(TestInstrument.lastRequest()[3], 3)
        }

        function test_followsTheInstrument() {
            open()
            compare(readingPanel().heading, "Disable")
            TestInstrument.read(3, "1.5nF")
            compare(readingPanel().heading, "Capacitance Gear")
            TestInstrument.choose(4, 4)
            compare(button("Buzzer").active, true)
            // An unknown function and another screen change nothing.
            TestInstrument.choose(4, 7)
            TestInstrument.choose(3, 1)
            compare(button("Buzzer").active, true)
        }

        // The instrument reports its buzzer function as diode. A reading of the former function may still come
        // after the click.
        function test_buzzerStaysLit_data() {
            return [{ tag: "at once", late: 0 }, { tag: "after a late reading", late: 1 }]
        }

        function test_buzzerStaysLit(data) {
            open()
            TestInstrument.read(1, "1.000V")
            mouseClick(button("Buzzer"))
            TestInstrument.read(1, "1.000V", data.late)
            TestInstrument.read(4, "0.512V")
            compare(button("Buzzer").active, true)
            TestInstrument.read(1, "5.000V")
            compare(button("Voltage").active, true)
            compare([button("Voltage").checked, button("Buzzer").checked], [true, false])
            TestInstrument.read(4, "0.512V")
            compare(button("Diode").active, true)
        }

        function test_readingIsSplit_data() {
            return [{ tag: "number", text: "4.7kOhm", value: "4.7", unit: "kΩ" },
                    { tag: "over range", text: "OL", value: "OL", unit: " " },
                    { tag: "nothing", text: "", value: "--", unit: " " }]
        }

        function test_readingIsSplit(data) {
            open()
            TestInstrument.read(2, data.text)
            tryVerify(function() { return readingPanel().value + readingPanel().unit === data.value + data.unit })
            TestInstrument.unplug()
            compare([readingPanel().value, readingPanel().unit, readingPanel().connectionText], ["--", " ", "Not Connected"])
        }

        // A reading that arrives above the row does not change what the open menu deletes.
        function test_deleteByMenu() {
            open()
            record("1.0kOhm 2.0kOhm")
            tryVerify(function() { return table().listView.itemAtIndex(1) !== null })
            rightClickRow(1)
            compare([page._contextMenuVisible, page._contextMenuRow], [true, 1])
            record("3.0kOhm")
            mouseClick(menu())
            compare(rowTexts(), "3.0kΩ 2.0kΩ")
            compare([page._contextMenuVisible, page._contextMenuRow], [false, -1])
            rightClickRow(0)
            _link.clearMultimeterCurrentTable()
            compare(page._contextMenuVisible, false)
        }

        function test_deleteByKeyboard() {
            open()
            record("1.0kOhm 2.0kOhm 3.0kOhm")
            tryCompare(table().listView, "count", 3)
            table().listView.forceActiveFocus()
            keyClick(Qt.Key_Down)
            keyClick(Qt.Key_Delete)
            keyClick(Qt.Key_Menu)
            compare(page._contextMenuVisible, true)
            keyClick(Qt.Key_Escape)
            compare([page._contextMenuVisible, rowTexts()], [false, "3.0kΩ 1.0kΩ"])
            keyClick(Qt.Key_F10, Qt.ShiftModifier)
            keyClick(Qt.Key_Return)
            compare(_link.multimeterCurrentTable.length, 1)
        }

        function test_menuStaysInThePage_data() {
            return [{ tag: "upper left", x: -50, y: 0 }, { tag: "lower right", x: 2000, y: 2000 },
                    { tag: "inside", x: 300, y: 200 }]
        }

        function test_menuStaysInThePage(data) {
            open()
            page.width = 900
            page.showTableContextMenu(-1, data.x, data.y)
            compare(page._contextMenuVisible, false)
            page.showTableContextMenu(0, data.x, data.y)
            verify(menu().x >= 8 && menu().x + menu().width <= page.width - 8)
            verify(menu().y >= 8 && menu().y + menu().height <= page.height - 8)
            compare([menu().x, menu().y].join() === [data.x, data.y].join(), data.tag === "inside")
            // Beside the menu, and beside the page.
            mouseClick(_root, data.tag === "upper left" ? 950 : 20, 300)
            compare(page._contextMenuVisible, false)
        }

        function test_tableVisibilityIsKept() {
            open()
            compare(table().height, page.historyTableExpandedHeight)
            mouseClick(button("Hide Records"))
            tryCompare(table(), "visible", false)
            compare(GenToolbox.genSettings.bValue("historyTableVisible", true, "multimeterGauge"), false)
            page.destroy()
            open()
            compare(page._historyTableVisible, false)
            fuzzyCompare(readingPanel().height, page.height * 0.52, 1)
            mouseClick(button("Show Records"))
            tryCompare(table(), "opacity", 1)
            tryVerify(function() { return Math.abs(readingPanel().height - page.height * 0.32) < 1 })
        }

        // As high as the window's minimum leaves it.
        function test_lowPageShowsTheWholeTable() {
            open()
            page.height = 45 * ScreenTools.defaultFontPixelWidth
            tryVerify(function() { return table().height === page.historyTableExpandedHeight })
            tryVerify(function() { return table().y + table().height <= page.height - 2 * table().parent.y })
        }

        function test_clear() {
            open()
            record("1.0kOhm 2.0kOhm")
            tryVerify(function() { return table().listView.itemAtIndex(1) !== null })
            mouseClick(table().listView.itemAtIndex(1))
            mouseClick(button("Clear"))
            compare([table().listView.count, _link.multimeterCurrentTable.length], [0, 0])
            // The next reading is not selected.
            record("3.0kOhm")
            tryCompare(table().listView, "count", 1)
            compare(table().currentIndex, -1)
        }
    }
}
