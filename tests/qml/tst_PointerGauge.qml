// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import QtTest 1.12
import GenToolbox 1.0

Item {
    id: _root

    width: 1100
    height: 640

    PageTestCase {
        name: "PointerGauge"

        function storeRange(index) {
            GenToolbox.genSettings.setValue("currentRangeIndex", index, "pointerGauge")
        }

        function storedRange() {
            return GenToolbox.genSettings.iValue("currentRangeIndex", -1, "pointerGauge")
        }

        function dial() {
            return find(page, function(item) { return item.repaintCount !== undefined && item.needleAngle !== undefined })
        }

        function cardValues() {
            return page._cards.map(function(card) { return card.value }).join("|")
        }

        function init() {
            storeRange(4)
            TestInstrument.plugIn()
        }

        function test_storedRangeIsClamped() {
            [[9, 4], [-3, 0], [2, 2]].forEach(function(pair) {
                storeRange(pair[0])
                openPage("PointerGauge.qml")
                compare(page._rangeIndex, pair[1])
                page.destroy()
            })
        }

        function test_chosenRangeIsStoredAndStays() {
            openPage("PointerGauge.qml")
            wait(0)
            mouseClick(button("6.0A"))
            compare([page._displayRangeMax, storedRange()], [6, 2])
            button("300mA").forceActiveFocus()
            keyClick(Qt.Key_Return)
            compare([page._displayRangeMax, storedRange()], [0.3, 0])
            compare(TestInstrument.lastRequest().length, 0)
        }

        // Layouts round widths to whole pixels.
        function test_roundingShortensNoLabel() {
            openPage("PointerGauge.qml")
            page._rangeOptions.forEach(function(option) {
                var pill = button(option.label)
                pill.width = pill.contentItem.contentWidth + pill.leftPadding + pill.rightPadding - 0.4
                compare([pill.contentItem.truncated, option.label], [false, option.label])
            })
        }

        function test_values() {
            openPage("PointerGauge.qml")
            TestInstrument.measure({ mainInputVoltage: 5.0625, mainOutputCurrent: 1.25, mainMah: 10.5, mainTimeSec: 3725.9 })
            tryVerify(function() { return cardValues() === "5.063 V|1.250 A|01:02:05|10.500 mAh" })
            tryVerify(function() { return page.gaugeDisplayValue() + page.gaugeDisplayUnit() === "1.250A" })
        }

        // The instrument sends 32-bit floats: none is equal to 0.3 or 2.4. A page that opens shows the value at once.
        function test_automaticRange_data() {
            return [{ tag: "tiny negative", current: -1e-6, range: 0.3, readout: "0.0 mA" },
                    { tag: "at 300 mA", current: 0.3, range: 0.3, readout: "300.0 mA" },
                    { tag: "above 300 mA", current: 0.31, range: 2.4, readout: "0.310 A" },
                    { tag: "at 2.4 A", current: 2.4, range: 2.4, readout: "2.400 A" },
                    { tag: "at 6 A", current: 6, range: 6, readout: "6.000 A" },
                    { tag: "over range", current: 99, range: 8, readout: "99.000 A" }]
        }

        function test_automaticRange(data) {
            TestInstrument.measure({ mainOutputCurrent: data.current })
            openPage("PointerGauge.qml")
            compare([page._displayRangeMax, page.gaugeDisplayValue() + " " + page.gaugeDisplayUnit()], [data.range, data.readout])
            compare(page._glowCurrent, page._needleCurrent)
        }

        // Not a number keeps needle and scale; without an instrument the needle rests.
        function test_unknownValues() {
            openPage("PointerGauge.qml")
            TestInstrument.measure({ mainInputVoltage: 5, mainOutputCurrent: 5, mainMah: 1, mainTimeSec: 100 })
            tryCompare(page, "_needleCurrent", 5)
            TestInstrument.measure({ mainInputVoltage: NaN, mainOutputCurrent: NaN, mainMah: NaN, mainTimeSec: NaN })
            tryVerify(function() { return cardValues() === "--|--|00:00:00|--" })
            compare([page.gaugeDisplayValue(), page._displayRangeMax, page._needleCurrent], ["--", 6, 5])
            TestInstrument.measure({ mainInputVoltage: 5, mainOutputCurrent: 1, mainMah: 1, mainTimeSec: 100 })
            tryCompare(page, "_needleCurrent", 1)
            TestInstrument.unplug()
            compare([cardValues(), page.gaugeDisplayValue()], ["--|--|00:00:00|--", "--"])
            tryCompare(page, "_needleCurrent", 0)
        }

        function test_glowFallsBackSlowly() {
            openPage("PointerGauge.qml")
            TestInstrument.measure({ mainOutputCurrent: 2 })
            tryCompare(page, "_glowCurrent", 2)
            TestInstrument.measure({ mainOutputCurrent: 0 })
            tryCompare(page, "_pendingGlowCurrent", 0)
            compare(page._glowCurrent, 2)
            tryCompare(page, "_glowAnimationDuration", 980)
            tryCompare(page, "_glowCurrent", 0)
            TestInstrument.measure({ mainOutputCurrent: 1 })
            tryCompare(page, "_glowAnimationDuration", 260)
            tryCompare(page, "_glowCurrent", 1)
        }

        function test_movingNeedlePaintsNothing() {
            openPage("PointerGauge.qml")
            TestInstrument.measure({ mainOutputCurrent: 0.5 })
            tryCompare(page, "_needleCurrent", 0.5)
            tryVerify(function() { return dial().repaintCount > 0 })
            var painted = dial().repaintCount
            var angle = dial().needleAngle
            for (var i = 0; i < 1000; ++i)
                TestInstrument.measure({ mainOutputCurrent: 0.5 + i / 1000 })
            tryVerify(function() { return page.gaugeDisplayValue() === "1.499" })
            verify(dial().needleAngle > angle)
            compare(dial().repaintCount, painted)
            TestInstrument.measure({ mainOutputCurrent: 5 })
            tryCompare(dial(), "repaintCount", painted + 1)
        }

        function test_resizingFreezesTheDial() {
            openPage("PointerGauge.qml")
            tryVerify(function() { return dial().repaintCount > 0 })
            wait(0)
            var painted = dial().repaintCount
            page.resizingWindow = true
            page.width = 800
            wait(50)
            compare(dial().repaintCount, painted)
            page.resizingWindow = false
            tryVerify(function() { return dial().repaintCount > painted })
        }
    }
}
