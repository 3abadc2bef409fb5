// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import QtTest 1.12
import GenControl.ScreenTools 1.0

import "qrc:/qml/toolsUI"

Item {
    id: _root

    width: 1200
    height: 800

    ChargeData { id: _page; anchors.fill: parent }

    TestCase {
        name: "ChargeData"
        when: windowShown

        function texts(list) {
            return list.map(function(entry) { return entry.value }).join("|")
        }

        function lineTexts() {
            return _page._lines.map(function(line) { return _page.formatMetric(line.voltage, "V", 2) }).join("|")
        }

        function initTestCase() {
            GenApp.setLanguage(1)
        }

        function init() {
            TestInstrument.plugIn()
        }

        function cleanup() {
            TestInstrument.unplug()
        }

        function test_fastChargeStartsAbove5V5_data() {
            return [{ tag: "exactly", voltage: 5.5, fast: false }, { tag: "above", voltage: 5.501, fast: true },
                    { tag: "no number", voltage: NaN, fast: false }]
        }

        function test_fastChargeStartsAbove5V5(data) {
            TestInstrument.measure({ typeCInputVoltage: data.fast ? 0 : 9 })
            tryCompare(_page, "fastCharge", !data.fast)
            TestInstrument.measure({ typeCInputVoltage: data.voltage })
            tryCompare(_page, "fastCharge", data.fast)
        }

        function test_values() {
            TestInstrument.measure({ typeCInputVoltage: 9.0625, typeCInputCurrent: 1.5, typeCInputPower: 13.59375,
                                     typeCDPlusVoltage: 3.3, typeCDMinusVoltage: 0.6, typeCCC1Voltage: 1.68,
                                     typeCCC2Voltage: 0, typeCMah: 12.25, typeCTimeSec: 360000 })
            tryVerify(function() { return texts(_page._metrics) === "9.063V|1.500A|13.594W" })
            compare(texts(_page._infos), "Connected|100:00:00|12.250mAh")
            compare(lineTexts(), "1.68V|0.00V|3.30V|0.60V")
        }

        function test_disconnectedShowsNoValue() {
            TestInstrument.measure({ typeCInputVoltage: 9, typeCTimeSec: 5 })
            tryCompare(_page, "fastCharge", true)
            TestInstrument.unplug()
            compare([texts(_page._metrics), texts(_page._infos), lineTexts()],
                    ["--|--|--", "Not Connected|00:00:00|--", "--|--|--|--"])
            compare(_page.fastCharge, false)
        }

        function test_compactLayout() {
            var dfw = ScreenTools.defaultFontPixelWidth
            _root.width = dfw * 92
            _root.height = dfw * 64
            compare(_page.compactLayout, false)
            _root.width = dfw * 92 - 1
            compare([_page.compactLayout, _page.pageMargin], [true, dfw * 1.1])
            _root.width = 500
            compare([_page.contentScale, _page.scaledPoint(11)], [0.73, 10])
            _root.width = 1200
            _root.height = 800
            compare(_page.contentScale, 1)
        }
    }
}
