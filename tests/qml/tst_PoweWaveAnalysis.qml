// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.15
import QtTest 1.15
import GenControl.ScreenTools 1.0
import GenToolbox 1.0

Item {
    id: _root

    width: 1040
    height: 640

    // A link with the readings and files that a test sets.
    QtObject {
        id: _link

        property bool connected: false
        property real mainInputVoltage: 5
        property real mainOutputCurrent: 1
        property real mainMah: 12.5
        property real mainTimeSec: 3725
        property string archivePath: ""
        property var loaded: ({})
        property string revealed: ""

        signal measurementChanged()

        function archiveCurrentCurve(voltageSamples, currentSamples, intervalSec) { return archivePath }
        function loadCurveArchive(filePath) { return loaded }
        function revealPath(filePath) { revealed = filePath; return true }
    }

    PageTestCase {
        name: "PoweWaveAnalysis"

        function init() {
            _link.connected = false
            _link.mainTimeSec = 3725
            setting("controlPanelCollapsed", false)
            setting("autoScaleAxis", false)
            setting("currentRangeIndex", 3)
            openPage("PoweWaveAnalysis.qml", { hidLink: _link })
            // Until the layouts have run, the mouse finds nothing.
            verify(waitForRendering(page))
        }

        function setting(key, value) { GenToolbox.genSettings.setValue(key, value, "powerWaveAnalysis") }
        function part(name) { return findChild(page, name) }
        function chart() { return part("waveChart") }
        // Series of the main chart: 0 the comparison, 1 the voltage, 2 the current.
        function curve(index) { return chart().series(index) }

        // Makes a recording of this many samples without a timer tick for each.
        function record(count) {
            page._voltageSamples = new Array(count).fill(5)
            page._currentSamples = new Array(count).fill(1)
            page.rebuildSeries()
            page.rebuildPreviewSeries()
        }

        function feed(count, voltage, current) {
            _link.connected = true
            _link.mainInputVoltage = voltage === undefined ? 5 : voltage
            _link.mainOutputCurrent = current === undefined ? 1 : current
            for (var i = 0; i < count; ++i)
                page.takeSample()
        }

        function cardValue(title) {
            return find(page, function(item) { return item.title === title && item.accent !== undefined }).value
        }

        function test_samplingFollowsTheConnection() {
            page.takeSample()
            compare(page._voltageSamples.length, 0)
            _link.connected = true
            tryVerify(function() { return page._currentSamples.length >= 2 })
        }

        function test_droppedSamplesMoveWhatIsShown() {
            record(3000)
            page._voltageSamples[300] = 3
            page.showPausedView(0)
            compare(curve(1).at(0).y, 5)
            feed(1)
            compare(curve(1).at(0).y, 3)
            compare([page._voltageSamples.length, page._currentSamples.length], [2701, 2701])
            record(3000)
            page.showPausedView(2000)
            page.beginChartDrag(400)
            page.dragChartTo(500)
            var start = page._viewStartIndex
            feed(1)
            page.dragChartTo(500)
            compare(page._viewStartIndex, start - 300)
        }

        function test_zoomPausesAndResumes() {
            page.zoomMainChart(1)
            compare(page._viewSampleCount, 60)
            record(3)
            page.zoomMainChart(1)
            compare([page._viewSampleCount, page._viewStartIndex], [49, 0])
            record(200)
            page.zoomMainChart(1)
            compare([page._chartRunning, page._hoverActive], [false, true])
            var start = page._viewStartIndex
            feed(50)
            compare(page._viewStartIndex, start)
            page.zoomMainChart(-1)
            page.beginChartDrag(400)
            page.zoomMainChart(-1)
            compare([page._draggingChart, page._chartRunning, page._hoverActive], [false, true, false])
            compare(page._viewStartIndex, page.maxViewStart())
        }

        function test_wheelAndKeysOnTheChart() {
            record(300)
            var input = part("chartInput")
            mouseWheel(input, 300, 100, 0, 120)
            compare(page._viewSampleCount, 49)
            mouseWheel(input, 300, 100, 0, -120)
            compare(page._viewSampleCount, 60)
            input.forceActiveFocus()
            keyClick(Qt.Key_Space)
            compare([page._chartRunning, page._hoverSampleIndex], [false, 299])
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
            keyClick(Qt.Key_End)
            compare(page._viewStartIndex, 251)
            keyClick(Qt.Key_Space)
            compare(page._chartRunning, true)
            part("playback").forceActiveFocus()
            keyClick(Qt.Key_Up)
            compare(page._viewSampleCount, 40)
        }

        function test_dragMovesTheView() {
            var input = part("chartInput")
            mousePress(input, 400, 100)
            compare(page._draggingChart, false)
            mouseRelease(input, 400, 100)
            record(300)
            mousePress(input, 400, 100)
            compare([page._draggingChart, page._chartRunning], [true, false])
            mouseMove(input, 500, 100)
            var start = page._viewStartIndex
            verify(start < page.maxViewStart())
            feed(5)
            compare(page._viewStartIndex, start)
            mouseMove(input, 100000, 100)
            compare(page._viewStartIndex, 0)
            mouseRelease(input, 600, 100)
            compare(page._draggingChart, false)
        }

        function test_hoverReadsTheSample() {
            feed(70, 5, 0.25)
            feed(1, 9, -0.5)
            feed(20, 5, 0.25)
            var input = part("chartInput")
            mouseMove(input, 300, 100)
            compare(page._hoverActive, false)
            page.togglePlayback()
            page.updateHoverForIndex(page._voltageSamples.indexOf(9), chart())
            var index = page._hoverSampleIndex
            compare([page._hoverVoltageValue, page._hoverCurrentValue], [9, -0.5])
            fuzzyCompare(page._hoverTimeSec, 3725 - (page._voltageSamples.length - 1 - index) * 0.08, 1e-6)
            verify(find(part("hoverTip"), function(item) { return item.text === "Current: -0.500 A" }))
            mouseMove(input, page._hoverChartX, 100)
            compare(page._hoverSampleIndex, index)
            mouseMove(_root, 2, 200)
            compare(page._hoverActive, false)
            page.updateHoverForIndex(-10, chart())
            compare(page._hoverSampleIndex, page._viewStartIndex)
        }

        function test_cursorStaysOnItsSample() {
            record(100)
            page.showPausedView(20)
            var before = page._hoverChartX
            mouseClick(part("waveToggle"))
            page.width = 700
            tryVerify(function() {
                var place = chart().mapToPosition(Qt.point(page._hoverSampleIndex, 5), curve(1))
                return Math.abs(page._hoverChartX - place.x) < 0.5 && Math.abs(page._hoverVoltageChartY - place.y) < 0.5
            })
            verify(page._hoverActive && page._hoverChartX < before)
        }

        function hoverTime(index) {
            page.updateHoverForIndex(index, chart())
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
            compare([hoverTime(19), hoverTime(39)], [100, 500])
        }

        function test_overview() {
            record(1001)
            page._voltageSamples[4] = 3
            page._voltageSamples[8] = NaN
            page.rebuildPreviewSeries()
            var series = part("overviewChart").series(0)
            compare([series.count, series.at(0).y, series.at(1).y, series.at(2).y], [251, 5, 3, 0])
            fuzzyCompare(series.at(250).x, 80, 1e-9)
            var strip = part("overviewInput")
            mouseClick(strip, strip.width / 2, 10)
            compare(page._chartRunning, false)
            fuzzyCompare(page._viewStartIndex, 470, 3)
            mouseClick(strip, 1, 10)
            compare(page._viewStartIndex, 0)
        }

        function test_automaticAxes_data() {
            return [{ tag: "within", volts: 5, amperes: 2, limits: [0, 7, 0, 3.5] },
                    { tag: "above", volts: 9.3, amperes: 8, limits: [0, 10, 0, 7] }]
        }

        function test_automaticAxes(row) {
            page._autoScaleAxis = true
            feed(1, row.volts, row.amperes)
            compare([page._voltageAxisMin, page._voltageAxisMax, page._currentAxisMin, page._currentAxisMax], row.limits)
            page._autoScaleAxis = false
            page.rebuildSeries()
            compare([page._voltageAxisMax, part("overviewChart").series(0).axisY.max], [6, 6])
        }

        // As high as the window's minimum leaves it: everything from the head to the overview's time labels shows.
        function test_lowPageNeedsNoScrolling() {
            page._controlPanelCollapsed = true
            page.width = 67 * ScreenTools.defaultFontPixelWidth
            page.height = 45 * ScreenTools.defaultFontPixelWidth
            var scroll = part("waveScroll")
            tryVerify(function() { return scroll.width < page.width && scroll.contentHeight <= scroll.height })
        }

        function test_seriesHoldTheViewUntilCleared() {
            feed(100, 5, -2)
            page.togglePlayback()
            page._showStandardCurve = true
            page.rebuildSeries()
            compare([chart().count, curve(0).count, curve(1).count], [3, 60, 60])
            compare([curve(1).at(0).x, curve(1).at(59).y, curve(2).at(59).y], [page._viewStartIndex, 5, 0])
            _link.connected = false
            mouseClick(button("Clear"))
            compare([page._voltageSamples.length, page._currentSamples.length, page._viewStartIndex], [0, 0, 0])
            compare([page._hoverActive, page._previewTimeTicks.length, curve(1).count], [false, 0, 0])
        }

        function test_controlsSaveTheirSettings() {
            var settings = GenToolbox.genSettings
            mouseClick(part("waveToggle"))
            compare(page._controlPanelCollapsed, true)
            compare(settings.bValue("controlPanelCollapsed", false, "powerWaveAnalysis"), true)
            mouseClick(part("waveToggle"))
            var range = part("currentRange")
            compare(range.currentIndex, 3)
            range.forceActiveFocus()
            keyClick(Qt.Key_Up)
            compare([page._currentRangeIndex, page._currentAxisMax], [2, 3.5])
            compare(settings.iValue("currentRangeIndex", 0, "powerWaveAnalysis"), 2)
            var autoScale = part("autoScaleSwitch")
            mouseClick(autoScale.children[0])
            compare([page._autoScaleAxis, range.visible], [true, false])
            compare(settings.bValue("autoScaleAxis", false, "powerWaveAnalysis"), true)
            // The switch follows the page also after a click.
            page._autoScaleAxis = false
            compare(autoScale.children[0].checked, false)
            page.destroy()
            openPage("PoweWaveAnalysis.qml")
            compare(page._autoScaleAxis, true)
        }

        function test_nothingIsDrawnWhileResizingOrHidden_data() {
            return [{ tag: "resizing", property: "resizingWindow", off: true }, { tag: "hidden", property: "visible", off: false }]
        }

        function test_nothingIsDrawnWhileResizingOrHidden(row) {
            feed(100)
            page[row.property] = row.off
            var drawn = curve(1).at(59).x
            feed(10)
            compare([curve(1).at(59).x, page._pendingResizeRebuild], [drawn, true])
            page[row.property] = !row.off
            tryCompare(page, "_pendingResizeRebuild", false)
            verify(curve(1).at(59).x >= drawn + 10)
        }

        // Without an instrument, nothing but the new size asks for other time labels.
        function test_chartIsScaledWhileResizing() {
            var width = chart().width
            record(100)
            page.resizingWindow = true
            page.width = 500
            compare([chart().width, page._frozenMainChartWidth], [width, width])
            verify(page._frozenPreviewWidth > 0)
            page.resizingWindow = false
            verify(chart().width < width)
            compare([page._mainTimeTicks.length, page._previewTimeTicks.length], [3, 4])
        }

        function test_archive() {
            var status = part("archiveStatus")
            part("archiveButton").clicked()
            compare(status.text, "Archive failed")
            _link.archivePath = "/curves/curve.json"
            part("archiveButton").clicked()
            compare([status.text, page._loadedArchivePath], ["Saved: /curves/curve.json", "/curves/curve.json"])
            tryVerify(function() { return status.mapToItem(page, 0, 0).y > page.height / 2 })
            mouseClick(status)
            compare(_link.revealed, "/curves/curve.json")
            _link.archivePath = ""
        }

        function test_importReplacesTheComparison_data() {
            return [{ tag: "long curve", voltages: new Array(100000).fill(4), length: 100000, status: "Imported: /a.json" },
                    { tag: "failed", length: 60, status: "Import failed" },
                    { tag: "without voltages", voltages: [], length: 60, status: "Import failed" }]
        }

        function test_importReplacesTheComparison(row) {
            _link.loaded = { filePath: "/a.json", voltageSamples: row.voltages }
            page._showStandardCurve = true
            part("waveArchive").load("/a.json")
            page.rebuildSeries()
            compare([page._archiveStatusText, page._standardSamples.length, curve(0).count], [row.status, row.length, 60])
        }

        function test_archiveComesBackThroughTheRealLink() {
            page.hidLink = GenToolbox.hidLink
            page._voltageSamples = [4.5, 5, 5.5]
            page._currentSamples = [1, 1.5, -2]
            part("archiveButton").clicked()
            var path = page._loadedArchivePath
            verify(/\/Quorvel\/Curves\/curve_\d{8}_\d{6}\.json$/.test(path))
            page._showStandardCurve = true
            part("waveArchive").load(path)
            compare(page._archiveStatusText, "Imported: " + path)
            compare([page._standardSamples, curve(0).count], [[4.5, 5, 5.5], 3])
            part("waveArchive").load(path.replace(".json", ".csv"))
            compare([page._archiveStatusText, page._standardSamples.length], ["Import failed", 3])
        }

        function test_unknownValues() {
            compare(["Output Current", "Input Voltage", "Capacity"].map(cardValue), ["-- A", "-- V", "-- mAh"])
            _link.mainTimeSec = 0
            _link.measurementChanged()
            compare(cardValue("Elapsed Time"), "00:00:00")
            compare([page.formatSeconds(NaN), page.formatHoverSeconds(NaN), page.formatPreviewSeconds(NaN)],
                    ["--:--:--", "--:--:--", "00:00:00"])
            feed(60, NaN, NaN)
            page.togglePlayback()
            compare(curve(1).at(0).y, 0)
        }
    }
}
