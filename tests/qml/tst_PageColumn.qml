// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import QtTest 1.12

import "qrc:/qml/ui"

Item {
    id: _root

    width: 300
    height: 500

    Component {
        id: _columnComponent

        ToolsIndicators {
            width: 300
            height: 500
            model: [
                { title: "A", url: "qrc:/a.qml", icon: "qrc:/res/Pointer.svg" },
                { title: "B", url: "qrc:/b.qml", icon: "qrc:/res/powerImg.svg" },
                { title: " C", url: "qrc:/c.qml", icon: "qrc:/res/play.svg" }
            ]
        }
    }

    SignalSpy { id: _byTitle; signalName: "sClick" }
    SignalSpy { id: _byIndex; signalName: "sClick2" }

    TestCase {
        name: "PageColumn"
        when: windowShown

        property var _column: null

        function init() {
            _column = createTemporaryObject(_columnComponent, _root)
            _byTitle.target = _column
            _byIndex.target = _column
            _byTitle.clear()
            _byIndex.clear()
        }

        function buttons(item, found) {
            found = found || []
            for (var i = 0; i < item.children.length; ++i) {
                if (item.children[i].exclusiveGroup !== undefined)
                    found.push(item.children[i])
                else
                    buttons(item.children[i], found)
            }
            return found
        }

        function checkedButtons() {
            return buttons(_column).map(function(button) { return button.checked })
        }

        function test_selectReportsThePageOnce() {
            _column.selectIndex(1)
            compare([_byTitle.count, _byTitle.signalArguments[0][0]], [1, "B"])
            compare([_byIndex.count, _byIndex.signalArguments[0][0], _byIndex.signalArguments[0][2]],
                    [1, 1, "qrc:/b.qml"])
            compare(checkedButtons(), [false, true, false])
            compare(buttons(_column)[2].Accessible.name, "C")
            _column.selectIndex(2, false)
            compare(_column.currentIndex, 2)
            compare(checkedButtons(), [false, false, true])
            compare(_byIndex.count, 1)
        }

        function test_outOfRangeChangesNothing() {
            _column.selectIndex(1, false)
            _column.selectIndex(-1, true)
            _column.selectIndex(3, true)
            compare(_column.currentIndex, 1)
            _column.model = []
            _column.init(true)
            _column.selectIndex(0, true)
            compare(_byIndex.count, 0)
        }

        function test_initSelectsTheCurrentPage() {
            _column.init(true)
            _column.init(false)
            compare(_byIndex.signalArguments.map(function(row) { return row[0] }), [0])
        }

        function test_newPagesKeepTheSelection() {
            _column.selectIndex(2, false)
            _column.model = _column.model.slice()
            tryVerify(function() { return checkedButtons()[2] === true })
            compare(_byIndex.count, 0)
        }

        function test_clickAndArrowKeysMoveTheSelection() {
            mouseClick(buttons(_column)[1])
            compare(checkedButtons(), [false, true, false])
            mouseClick(buttons(_column)[0])
            for (var step of [[Qt.Key_Down, 1], [Qt.Key_Down, 2], [Qt.Key_Down, 2], [Qt.Key_Up, 1]]) {
                keyClick(step[0])
                compare(_column.currentIndex, step[1])
            }
            compare(_byIndex.count, 5)
            verify(buttons(_column)[1].activeFocus)
        }

        function test_arrowKeysScrollTheButtonIntoView() {
            _column.height = 100
            buttons(_column)[0].forceActiveFocus()
            keyClick(Qt.Key_Down)
            keyClick(Qt.Key_Down)
            var top = buttons(_column)[2].mapToItem(_column, 0, 0).y
            verify(top >= 0 && top + 54 <= 100, top)
            keyClick(Qt.Key_Up)
            keyClick(Qt.Key_Up)
            compare(_column.contentY, 0)
        }

        function test_collapsedWidthAndHeight() {
            compare(buttons(_column)[0].width, 280)
            compare(buttons(_column)[0].height, 54)
            _column.collapsed = true
            tryCompare(buttons(_column)[0], "width", 288)
            tryCompare(buttons(_column)[0], "height", 42)
        }
    }
}
