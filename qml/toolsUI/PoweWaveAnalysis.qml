// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Window 2.15
import GenControl.ScreenTools 1.0
import GenToolbox 1.0

import "../customize"
import "../customize/Format.js" as Format
import "common"
import "wave"
import "wave/WaveView.js" as WaveView

/// Recorder of the main supply: voltage and current over time, live or paused, zoomed, dragged and read out.
WavePlayback {
    id: powerAnalys

    property bool _showVoltageCurve: true
    property bool _showStandardCurve: false
    property bool _controlPanelCollapsed: false
    property int _maxPreviewPoints: 320
    property var _mainTimeTicks: []
    property var _previewTimeTicks: []
    property alias _archiveStatusText: _archive.statusText
    property alias _loadedArchivePath: _archive.filePath
    property bool _pendingResizeRebuild: false
    property alias _frozenMainChartWidth: _mainChart.frozenWidth
    property alias _frozenMainChartHeight: _mainChart.frozenHeight
    property alias _frozenPreviewWidth: _overview.frozenWidth
    property alias _frozenPreviewHeight: _overview.frozenHeight
    property int _valueSize: 18

    readonly property real _dfw: ScreenTools.defaultFontPixelWidth
    readonly property bool _drawing: visible && !resizingWindow && Window.visibility !== Window.Hidden
                                     && Window.visibility !== Window.Minimized
    readonly property string _settingsGroup: "powerWaveAnalysis"
    readonly property int _ticksPerPreview: 5

    // The chart's keys work wherever on the page the focus is, unless a control there needs them itself.
    Keys.forwardTo: [_input]

    plotArea: _mainChart.plotArea
    onSampleTaken: function(droppedOld) {
        if (!_drawing) {
            _pendingResizeRebuild = true
            return
        }
        _sampleCount = _voltageSamples.length
        // A paused view changes only while new samples still come into it, or when the old ones move.
        if (_chartRunning || _sampleCount <= _viewStartIndex + _viewSampleCount || droppedOld)
            rebuildSeries()
        if (_sampleSerial % _ticksPerPreview === 0)
            rebuildPreviewSeries()
    }
    onViewChanged: {
        // What lies beyond the widest view is never seen, however long a loaded curve is.
        var comparison = _standardSamples.slice(0, _showStandardCurve ? _defaultViewSamples : 0)
        _mainChart.drawView(_voltageSamples, _currentSamples, comparison, _viewStartIndex, _viewSampleCount)
        updateMainTimeTicks()
    }
    onPlotAreaChanged: {
        if (_drawing)
            updateMainTimeTicks()
    }
    on_DrawingChanged: {
        if (!_drawing)
            return
        updateMainTimeTicks()
        updatePreviewTimeTicks()
        if (_pendingResizeRebuild)
            _rebuildTimer.restart()
    }

    function loadViewSettings() {
        var settings = GenToolbox.genSettings
        _showVoltageCurve = settings.bValue("showVoltageCurve", true, _settingsGroup)
        _showStandardCurve = settings.bValue("showStandardCurve", false, _settingsGroup)
        _autoScaleAxis = settings.bValue("autoScaleAxis", false, _settingsGroup)
        _controlPanelCollapsed = settings.bValue("controlPanelCollapsed", true, _settingsGroup)
        axes.useRange(settings.iValue("currentRangeIndex", 3, _settingsGroup))
    }

    function saveViewSetting(key, value) { GenToolbox.genSettings.setValue(key, value, _settingsGroup) }
    function formatSeconds(value) { return Format.formatSeconds(value, WaveView.unknownTime) }
    function formatHoverSeconds(value) { return Format.formatSeconds(value, WaveView.unknownTime) }
    function formatPreviewSeconds(value) { return Format.formatSeconds(value) }

    function responsiveTickCount(pixelWidth, maxCount, minCount) {
        return WaveView.responsiveTickCount(pixelWidth, maxCount, minCount, _dfw)
    }

    function updateMainTimeTicks() {
        _mainTimeTicks = WaveView.timeTicks(responsiveTickCount(plotArea.width, 6, 3),
                                            _viewStartIndex * _sampleIntervalSec,
                                            WaveView.spanSec(_viewSampleCount, _sampleIntervalSec))
    }

    function updatePreviewTimeTicks() {
        var recordedSec = Math.max(0, _voltageSamples.length - 1) * _sampleIntervalSec
        _previewTimeTicks = recordedSec > 0 ? WaveView.timeTicks(responsiveTickCount(_overview.plotWidth, 8, 3), 0,
                                                                 recordedSec) : []
    }

    function setViewCenterFromPreview(mouseX) {
        if (_voltageSamples.length > 0)
            showAround(WaveView.sampleAtPreview(mouseX, _overview.plotX, _overview.plotWidth, _voltageSamples.length))
    }

    function previewSelectionWidth() {
        return WaveView.selectionWidth(_overview.plotWidth, _viewSampleCount, _sampleCount)
    }

    function previewSelectionX() {
        return WaveView.selectionX(_overview.plotX, _overview.plotWidth, previewSelectionWidth(), _viewStartIndex,
                                   WaveView.maxStart(_sampleCount, _viewSampleCount))
    }

    function rebuildPreviewSeries() {
        _sampleCount = _voltageSamples.length
        _overview.drawRecording(_voltageSamples, _currentSamples, _maxPreviewPoints, _sampleIntervalSec)
        updatePreviewTimeTicks()
    }

    function clearSamples() {
        forgetSamples()
        cursor.active = false
        endChartDrag()
        rebuildSeries()
        rebuildPreviewSeries()
    }

    Timer {
        id: _rebuildTimer

        interval: 40
        onTriggered: {
            powerAnalys._pendingResizeRebuild = false
            powerAnalys.rebuildSeries()
            powerAnalys.rebuildPreviewSeries()
        }
    }
    Flickable {
        id: _scroll

        objectName: "waveScroll"
        anchors.fill: parent
        anchors.margins: powerAnalys._dfw
        contentWidth: width
        contentHeight: _column.height
        boundsBehavior: Flickable.StopAtBounds
        interactive: contentHeight > height
        clip: true

        ScrollBar.vertical: ScrollBar {}
        WheelScroll {}

        Column {
            id: _column

            // What the main chart does not get.
            readonly property real _othersHeight: _header.height + (_controls.visible ? _controls.height + spacing : 0)
                                                  + _overview.height + (_archive.visible ? _archive.height + spacing : 0)
                                                  + 2 * spacing

            width: _scroll.width
            spacing: powerAnalys._dfw

            WaveHeader {
                id: _header

                width: _column.width
                connected: powerAnalys.connected
                voltage: powerAnalys._shownVoltage
                current: powerAnalys._shownCurrent
                mah: powerAnalys._shownMah
                runtimeSec: powerAnalys._mainRuntimeSec
                controlsCollapsed: powerAnalys._controlPanelCollapsed
                valueSize: powerAnalys._valueSize
                low: powerAnalys.height < powerAnalys._dfw * 62
                backgroundOpacity: powerAnalys.pageBackgroundOpacity
                onControlsToggled: {
                    powerAnalys._controlPanelCollapsed = !powerAnalys._controlPanelCollapsed
                    powerAnalys.saveViewSetting("controlPanelCollapsed", powerAnalys._controlPanelCollapsed)
                }
            }
            WaveControls {
                id: _controls

                visible: !powerAnalys._controlPanelCollapsed
                width: _column.width
                backgroundOpacity: powerAnalys.pageBackgroundOpacity
                running: powerAnalys._chartRunning
                hasSamples: powerAnalys._sampleCount > 0
                stepSamples: WaveView.cursorStep(powerAnalys._viewSampleCount)
                showVoltage: powerAnalys._showVoltageCurve
                showStandard: powerAnalys._showStandardCurve
                autoScale: powerAnalys._autoScaleAxis
                rangeIndex: powerAnalys._currentRangeIndex
                onPlaybackToggled: powerAnalys.togglePlayback()
                onViewMoveRequested: function(direction) { powerAnalys.movePausedCursor(direction) }
                onClearRequested: powerAnalys.clearSamples()
                onVoltageToggled: function(shown) {
                    powerAnalys._showVoltageCurve = shown
                    powerAnalys.saveViewSetting("showVoltageCurve", shown)
                }
                onStandardToggled: function(shown) {
                    powerAnalys._showStandardCurve = shown
                    powerAnalys.saveViewSetting("showStandardCurve", shown)
                    powerAnalys.rebuildSeries()
                }
                onAutoScaleToggled: function(enabled) {
                    powerAnalys._autoScaleAxis = enabled
                    powerAnalys.saveViewSetting("autoScaleAxis", enabled)
                    powerAnalys.rebuildSeries()
                }
                onRangeChosen: function(index) {
                    powerAnalys.axes.useRange(index)
                    powerAnalys.saveViewSetting("currentRangeIndex", index)
                    powerAnalys.rebuildSeries()
                }
            }
            WaveMainChart {
                id: _mainChart

                width: _column.width
                height: Math.max(powerAnalys._dfw * 18, Math.floor(_scroll.height - _column._othersHeight))
                backgroundOpacity: powerAnalys.pageBackgroundOpacity
                axes: powerAnalys.axes
                frozen: powerAnalys.resizingWindow
                showVoltage: powerAnalys._showVoltageCurve
                showStandard: powerAnalys._showStandardCurve
                timeTicks: powerAnalys._mainTimeTicks

                WaveHover {
                    anchors.fill: parent
                    cursor: powerAnalys.cursor
                    plotArea: powerAnalys.plotArea
                    showVoltage: powerAnalys._showVoltageCurve
                    backgroundOpacity: powerAnalys.pageBackgroundOpacity
                }
                WaveChartInput {
                    id: _input

                    anchors.fill: parent
                    running: powerAnalys._chartRunning
                    dragging: powerAnalys._draggingChart
                    onZoomRequested: function(steps) { powerAnalys.zoomMainChart(steps) }
                    onDragStarted: function(x) { powerAnalys.beginChartDrag(x) }
                    onDragMoved: function(x) { powerAnalys.dragChartTo(x) }
                    onDragEnded: powerAnalys.endChartDrag()
                    onHoverMoved: function(x, y) { powerAnalys.updateHoverAt(x, y, _mainChart.chart) }
                    onHoverLeft: powerAnalys.cursor.active = false
                    onPlaybackToggled: powerAnalys.togglePlayback()
                    onViewMoveRequested: function(direction) { powerAnalys.movePausedCursor(direction) }
                    onCursorMoveRequested: function(direction) { powerAnalys.stepCursor(direction) }
                    onStartRequested: powerAnalys.showPausedView(0)
                    onEndRequested: powerAnalys.showPausedView(powerAnalys.maxViewStart())
                }
            }
            WaveOverview {
                id: _overview

                width: _column.width
                height: Math.round(Format.clamp(_scroll.height * 0.17, powerAnalys._dfw * 9, powerAnalys._dfw * 16))
                backgroundOpacity: powerAnalys.pageBackgroundOpacity
                axes: powerAnalys.axes
                frozen: powerAnalys.resizingWindow
                timeTicks: powerAnalys._previewTimeTicks
                selectionShown: powerAnalys._sampleCount > 0
                selectionX: powerAnalys.previewSelectionX()
                selectionWidth: powerAnalys.previewSelectionWidth()
                onPlotWidthChanged: {
                    if (powerAnalys._drawing)
                        powerAnalys.updatePreviewTimeTicks()
                }
                onPlaceChosen: function(x) { powerAnalys.setViewCenterFromPreview(x) }
            }
            WaveArchive {
                id: _archive

                width: _column.width
                link: powerAnalys.hidLink
                onSaveRequested: save(powerAnalys._voltageSamples, powerAnalys._currentSamples,
                                      powerAnalys._sampleIntervalSec)
                onImported: function(voltageSamples) {
                    powerAnalys.useStandardSamples(voltageSamples)
                    powerAnalys.rebuildSeries()
                }
            }
        }
    }

    Component.onCompleted: {
        loadViewSettings()
        readLink()
        ensureStandardSamples()
        rebuildSeries()
    }
}
