// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import QtTest 1.12
import GenControl.ScreenTools 1.0
import GenToolbox 1.0

import "qrc:/qml/toolsUI"

Item {
    id: _root

    width: 1040
    height: 640

    // A link that says what a test wants.
    QtObject {
        id: _link

        property bool connected: true
        property real mainInputVoltage: 5
        property real mainOutputCurrent: 1
        property real mainMah: 12.5
        property real mainTimeSec: 3725
        property string archivePath: "/curves/curve.json"
        property var loaded: ({})
        property string revealed: ""
        property var archivedVoltages: []

        signal measurementChanged()

        function archiveCurrentCurve(voltageSamples, currentSamples, intervalSec) {
            archivedVoltages = voltageSamples
            return archivePath
        }
        function loadCurveArchive(filePath) { return loaded }
        function revealPath(filePath) { revealed = filePath; return true }
    }

    Component {
        id: _pageComponent

        PoweWaveAnalysis { anchors.fill: parent; hidLink: _link }
    }

    TestCase {
        id: _test

        property var page: null

        name: "PoweWaveAnalysis"
        when: windowShown

        function initTestCase() {
            GenToolbox.genSettings.setValue("language", 1)
        }

        function init() {
            _link.connected = true
            _link.mainInputVoltage = 5
            _link.mainOutputCurrent = 1
            _link.mainTimeSec = 3725
            GenToolbox.genSettings.setValue("controlPanelCollapsed", false, "powerWaveAnalysis")
            GenToolbox.genSettings.setValue("autoScaleAxis", false, "powerWaveAnalysis")
            GenToolbox.genSettings.setValue("currentRangeIndex", 3, "powerWaveAnalysis")
            page = createTemporaryObject(_pageComponent, _root)
            verify(page)
            // Until the layouts have run, the mouse finds nothing.
            verify(waitForRendering(page))
        }

        // A recording of so many samples, without a tick for each.
        function record(count) {
            page._voltageSamples = new Array(count).fill(5)
            page._currentSamples = new Array(count).fill(1)
            page.rebuildSeries()
        }

        function feed(count, voltage, current) {
            _link.mainInputVoltage = voltage === undefined ? 5 : voltage
            _link.mainOutputCurrent = current === undefined ? 1 : current
            for (var i = 0; i < count; ++i)
                page.takeSample()
        }

        function test_samplingStopsWithTheConnection() {
            var before = page._voltageSamples.length
            tryVerify(function() { return page._voltageSamples.length >= before + 2 })
            _link.connected = false
            before = page._voltageSamples.length
            page.takeSample()
            compare(page._voltageSamples.length, before)
            _link.connected = true
            page.takeSample()
            compare(page._voltageSamples.length, before + 1)
            compare(page._currentSamples.length, before + 1)
        }

        function test_trimMovesAPausedView() {
            record(3000)
            page.togglePlayback()
            page._viewStartIndex = 2000
            feed(3001 - page._voltageSamples.length)
            compare(page._voltageSamples.length, 2701)
            compare(page._currentSamples.length, 2701)
            compare(page._viewStartIndex, 1700)
        }

        function test_trimRedrawsAPausedViewOfTheOldest() {
            record(3000)
            page._voltageSamples[300] = 3
            page.showPausedView(0)
            var series = findChild(page, "waveChart").series(1)
            compare(series.at(0).y, 5)
            feed(3001 - page._voltageSamples.length)
            compare(series.at(0).y, 3)
        }

        function test_zoomPausesAndResumes() {
            page.zoomMainChart(1)
            compare(page._viewSampleCount, 60)
            feed(200)
            page.zoomMainChart(1)
            compare(page._viewSampleCount, 49)
            compare(page._chartRunning, false)
            verify(page._hoverActive)
            var start = page._viewStartIndex
            feed(50)
            compare(page._viewStartIndex, start)
            page.beginChartDrag(400)
            page.zoomMainChart(-1)
            compare(page._draggingChart, false)
            compare(page._chartRunning, true)
            compare(page._hoverActive, false)
            compare(page._viewStartIndex, page.maxViewStart())
        }

        function test_zoomWithFewSamplesStaysAtTheStart() {
            page._voltageSamples = [1, 2, 3]
            page._currentSamples = [1, 2, 3]
            page.zoomMainChart(1)
            compare(page._viewStartIndex, 0)
        }

        function test_wheelAndKeysOnTheChart() {
            record(300)
            var input = findChild(page, "chartInput")
            mouseWheel(input, 300, 100, 0, 120)
            compare(page._viewSampleCount, 49)
            mouseWheel(input, 300, 100, 0, -120)
            compare(page._viewSampleCount, 60)
            input.forceActiveFocus()
            keyClick(Qt.Key_Space)
            compare(page._chartRunning, false)
            compare(page._hoverSampleIndex, page._viewStartIndex + page.visibleSampleCount() - 1)
            keyClick(Qt.Key_Up)
            compare(page._viewSampleCount, 49)
            var start = page._viewStartIndex
            keyClick(Qt.Key_Left)
            compare(page._viewStartIndex, start - 16)
            var index = page._hoverSampleIndex
            keyClick(Qt.Key_Right, Qt.ShiftModifier)
            compare(page._hoverSampleIndex, index + 1)
            keyClick(Qt.Key_Home)
            compare(page._viewStartIndex, 0)
            keyClick(Qt.Key_Space)
            compare(page._chartRunning, true)
            findChild(page, "playback").forceActiveFocus()
            keyClick(Qt.Key_Up)
            compare(page._viewSampleCount, 40)
        }

        function test_dragMovesTheView() {
            var input = findChild(page, "chartInput")
            page.clearSamples()
            mousePress(input, 400, 100)
            compare(page._draggingChart, false)
            mouseRelease(input, 400, 100)
            feed(300)
            var start = page.maxViewStart()
            mousePress(input, 400, 100)
            compare(page._draggingChart, true)
            compare(page._chartRunning, false)
            mouseMove(input, 500, 100)
            verify(page._viewStartIndex < start)
            _link.connected = false
            mouseMove(input, 600, 100)
            _link.connected = true
            start = page._viewStartIndex
            feed(5)
            compare(page._viewStartIndex, start)
            mouseMove(input, 100000, 100)
            compare(page._viewStartIndex, 0)
            mouseRelease(input, 600, 100)
            compare(page._draggingChart, false)
        }

        function test_trimWhileDraggingKeepsTheSamplesUnderTheMouse() {
            record(3000)
            page.beginChartDrag(400)
            page.dragChartTo(500)
            var start = page._viewStartIndex
            feed(3001 - page._voltageSamples.length)
            page.dragChartTo(500)
            compare(page._viewStartIndex, start - 300)
        }

        function test_hoverReadsTheSample() {
            feed(100, 5, 0.25)
            feed(1, 9, -0.5)
            feed(20, 5, 0.25)
            var input = findChild(page, "chartInput")
            mouseMove(input, 300, 100)
            compare(page._hoverActive, false)
            page.togglePlayback()
            var count = page._voltageSamples.length
            for (var index = count - 60; index < count && page._voltageSamples[index] !== 9;)
                ++index
            page.updateHoverForIndex(index, findChild(page, "waveChart"))
            compare(page._hoverVoltageValue, 9)
            compare(page._hoverCurrentValue, -0.5)
            fuzzyCompare(page._hoverTimeSec, 3725 - (count - 1 - index) * 0.08, 1e-6)
            mouseMove(input, page._hoverChartX, 100)
            compare(page._hoverSampleIndex, index)
            mouseMove(_root, 2, 200)
            compare(page._hoverActive, false)
            page.updateHoverForIndex(-10, findChild(page, "waveChart"))
            compare(page._hoverSampleIndex, page._viewStartIndex)
        }

        function test_cursorStaysOnItsSample() {
            var chart = findChild(page, "waveChart")
            _link.connected = false
            record(100)
            page.showPausedView(20)
            var before = page._hoverChartX
            mouseClick(findChild(page, "waveToggle"))
            _root.width = 700
            tryVerify(function() {
                var place = chart.mapToPosition(Qt.point(page._hoverSampleIndex, 5), chart.series(1))
                return Math.abs(page._hoverChartX - place.x) < 0.5 && Math.abs(page._hoverVoltageChartY - place.y) < 0.5
            })
            verify(page._hoverActive && page._hoverChartX < before)
            _root.width = 1040
        }

        function hoverTime(index) {
            page.updateHoverForIndex(index, findChild(page, "waveChart"))
            return page._hoverTimeSec
        }

        function test_samplesKeepTheirTimeWhenTheConnectionEnds() {
            page.hidLink = GenToolbox.hidLink
            TestInstrument.plugIn()
            TestInstrument.measure({ mainInputVoltage: 5, mainTimeSec: 100 })
            page.clearSamples()
            feed(20)
            compare(hoverTime(19), 100)
            TestInstrument.unplug()
            compare(hoverTime(19), 100)
            TestInstrument.plugIn()
            TestInstrument.measure({ mainInputVoltage: 5, mainTimeSec: 500 })
            feed(20)
            compare(hoverTime(19), 100)
            compare(hoverTime(39), 500)
            TestInstrument.unplug()
        }

        function test_overviewShowsEveryFewSamples() {
            record(1001)
            page._voltageSamples[4] = 3
            page._voltageSamples[8] = NaN
            page.rebuildPreviewSeries()
            var series = findChild(page, "overviewChart").series(0)
            compare(series.count, 251)
            compare([series.at(0).y, series.at(1).y, series.at(2).y], [5, 3, 0])
            fuzzyCompare(series.at(250).x, 80, 1e-9)
        }

        function test_overviewCentresTheView() {
            record(1000)
            page.rebuildPreviewSeries()
            var strip = findChild(page, "overviewInput")
            mouseClick(strip, strip.width / 2, 10)
            compare(page._chartRunning, false)
            fuzzyCompare(page._viewStartIndex, page._voltageSamples.length / 2 - 30, 3)
            mouseClick(strip, 1, 10)
            compare(page._viewStartIndex, 0)
        }

        function test_automaticAxes_data() {
            return [{ tag: "within", volts: 5, amperes: 2, top: 7, range: 3.5 },
                    { tag: "above", volts: 9.3, amperes: 8, top: 10, range: 7 }]
        }

        function test_automaticAxes(row) {
            page._autoScaleAxis = true
            feed(60, row.volts, row.amperes)
            compare(page._voltageAxisMin, 0)
            compare(page._voltageAxisMax, row.top)
            compare(page._currentAxisMax, row.range)
            _link.connected = false
            page._autoScaleAxis = false
            page.rebuildSeries()
            compare(page._voltageAxisMax, 6)
            compare(findChild(page, "overviewChart").series(0).axisY.max, 6)
        }

        // As high as the window's minimum leaves it: everything from the head to the overview's time labels shows.
        function test_lowPageNeedsNoScrolling() {
            page._controlPanelCollapsed = true
            page.anchors.fill = undefined
            page.width = 67 * ScreenTools.defaultFontPixelWidth
            page.height = 45 * ScreenTools.defaultFontPixelWidth
            var scroll = findChild(page, "waveScroll")
            tryVerify(function() { return scroll.width < page.width && scroll.contentHeight <= scroll.height })
        }

        function test_seriesHoldTheView() {
            feed(100, 5, -2)
            page.rebuildPreviewSeries()
            var chart = findChild(page, "waveChart")
            compare(chart.count, 3)
            page._showStandardCurve = true
            page.rebuildSeries()
            compare(chart.series(0).count, 60)
            compare(chart.series(1).at(0).x, page._viewStartIndex)
            compare(chart.series(1).at(59).y, 5)
            compare(chart.series(2).at(59).y, 0)
        }

        function test_clearEmptiesEverything() {
            feed(200)
            page.togglePlayback()
            page.clearSamples()
            compare(page._voltageSamples.length + page._currentSamples.length, 0)
            compare(page._viewStartIndex, 0)
            compare(page._hoverActive, false)
            compare(page._previewTimeTicks.length, 0)
            compare(findChild(page, "waveChart").series(1).count, 0)
        }

        function test_controlsSaveTheirSettings() {
            mouseClick(findChild(page, "waveToggle"))
            compare(page._controlPanelCollapsed, true)
            compare(GenToolbox.genSettings.bValue("controlPanelCollapsed", false, "powerWaveAnalysis"), true)
            mouseClick(findChild(page, "waveToggle"))
            var range = findChild(page, "currentRange")
            compare(range.currentIndex, 3)
            range.forceActiveFocus()
            keyClick(Qt.Key_Up)
            compare(page._currentRangeIndex, 2)
            compare(page._currentAxisMax, 3.5)
            compare(GenToolbox.genSettings.iValue("currentRangeIndex", 0, "powerWaveAnalysis"), 2)
            findChild(page, "autoScaleSwitch").toggled(true)
            compare(GenToolbox.genSettings.bValue("autoScaleAxis", false, "powerWaveAnalysis"), true)
            compare(range.visible, false)
            var again = createTemporaryObject(_pageComponent, _root)
            compare(again._autoScaleAxis, true)
        }

        function test_nothingIsDrawnWhileResizingOrHidden_data() {
            return [{ tag: "resizing", property: "resizingWindow", drawingOff: true, drawingOn: false },
                    { tag: "hidden", property: "visible", drawingOff: false, drawingOn: true }]
        }

        function test_nothingIsDrawnWhileResizingOrHidden(row) {
            feed(100)
            var series = findChild(page, "waveChart").series(1)
            page[row.property] = row.drawingOff
            var drawn = series.at(59).x
            var recorded = page._voltageSamples.length
            feed(10)
            verify(page._voltageSamples.length >= recorded + 10)
            compare(series.at(59).x, drawn)
            compare(page._pendingResizeRebuild, true)
            page[row.property] = row.drawingOn
            tryCompare(page, "_pendingResizeRebuild", false)
            verify(series.at(59).x >= drawn + 10)
        }

        function test_chartIsScaledWhileResizing() {
            var chart = findChild(page, "waveChart")
            var width = chart.width
            // Without an instrument, nothing but the new size asks for other time labels.
            _link.connected = false
            record(100)
            page.rebuildPreviewSeries()
            page.resizingWindow = true
            _root.width = 500
            compare(chart.width, width)
            verify(page._frozenMainChartWidth === width && page._frozenPreviewWidth > 0)
            page.resizingWindow = false
            verify(chart.width < width)
            compare([page._mainTimeTicks.length, page._previewTimeTicks.length], [3, 4])
            _root.width = 1040
        }

        function test_archiveIsSavedAndShown() {
            var archive = findChild(page, "waveArchive")
            feed(3, 5)
            archive.archiveCurve()
            verify(_link.archivedVoltages.length >= 3)
            compare(page._archiveStatusText, "Saved: /curves/curve.json")
            var status = findChild(page, "archiveStatus")
            tryVerify(function() { return status.mapToItem(page, 0, 0).y > page.height / 2 })
            mouseClick(status)
            compare(_link.revealed, "/curves/curve.json")
            _link.archivePath = ""
            archive.archiveCurve()
            compare(page._archiveStatusText, "Archive failed")
            _link.archivePath = "/curves/curve.json"
        }

        function test_importReplacesTheComparison_data() {
            return [{ tag: "curve", loaded: { "filePath": "/a.json", "voltageSamples": [1, 2, 3] }, length: 3,
                      status: "Imported: /a.json" },
                    { tag: "long curve", loaded: { "filePath": "/a.json", "voltageSamples": new Array(100000).fill(4) },
                      length: 100000, status: "Imported: /a.json" },
                    { tag: "failed", loaded: {}, length: 60, status: "Import failed" },
                    { tag: "without voltages", loaded: { "filePath": "/a.json", "voltageSamples": [] }, length: 60,
                      status: "Import failed" }]
        }

        function test_importReplacesTheComparison(row) {
            _link.loaded = row.loaded
            page._showStandardCurve = true
            findChild(page, "waveArchive").importCurve("/a.json")
            compare(page._archiveStatusText, row.status)
            feed(10)
            compare(page._standardSamples.length, row.length)
            compare(findChild(page, "waveChart").series(0).count, Math.min(row.length, 60))
        }

        function test_archiveComesBackThroughTheRealLink() {
            page.hidLink = GenToolbox.hidLink
            var archive = findChild(page, "waveArchive")
            page._voltageSamples = [4.5, 5, 5.5]
            page._currentSamples = [1, 1.5, -2]
            archive.archiveCurve()
            var path = page._loadedArchivePath
            verify(/\/Quorvel\/Curves\/curve_\d{8}_\d{6}\.json$/.test(path))
            page._showStandardCurve = true
            archive.importCurve(path)
            compare(page._archiveStatusText, "Imported: " + path)
            compare(page._standardSamples, [4.5, 5, 5.5])
            compare(findChild(page, "waveChart").series(0).count, 3)
            archive.importCurve(path.replace(".json", ".csv"))
            compare(page._archiveStatusText, "Import failed")
            compare(page._standardSamples.length, 3)
        }

        function test_unknownValues() {
            _link.connected = false
            compare(findChild(page, "outputCurrent").value, "-- A")
            compare(findChild(page, "inputVoltage").value, "-- V")
            compare(findChild(page, "capacity").value, "-- mAh")
            _link.mainTimeSec = 0
            _link.measurementChanged()
            compare(findChild(page, "elapsedTime").value, "00:00:00")
            compare(page.formatSeconds(NaN), "--:--:--")
            compare(page.formatHoverSeconds(NaN), "--:--:--")
            compare(page.formatPreviewSeconds(NaN), "00:00:00")
            _link.connected = true
            feed(60, NaN, NaN)
            page.togglePlayback()
            compare(findChild(page, "waveChart").series(1).at(0).y, 0)
        }
    }
}
