// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import QtQuick.Window 2.12
import GenControl.ScreenTools 1.0
import GenToolbox 1.0

import "../../customize/Format.js" as Format
import "../common"
import "WaveView.js" as WaveView

/// What the wave page knows: the samples, the part of them in view, what the instrument said last, its settings and
/// the state of cursor and drag. Nothing here draws.
PageBase {
    id: _state

    property var _voltageSamples: []
    property var _currentSamples: []
    property var _standardSamples: []
    property real _sampleIntervalSec: 0.08
    property int _maxHistorySamples: 3000
    property int _maxSamples: 60
    property int _defaultViewSamples: 60
    property int _minViewSamples: 15
    property int _viewSampleCount: 60
    property int _viewStartIndex: 0
    property int _maxPreviewPoints: 320
    property int _sampleSerial: 0
    // Where the connection was lost, as WaveView.sampleTimeSec() takes it.
    property var _interruptions: []
    property bool _chartRunning: true

    property bool _showVoltageCurve: true
    property bool _showStandardCurve: false
    property bool _autoScaleAxis: false
    property bool _controlPanelCollapsed: false
    property var _currentRangeOptions: [0.7, 1.4, 3.5, 7]
    property int _currentRangeIndex: 3
    property real _voltageAxisMin: WaveView.voltageFloor
    property real _voltageAxisMax: WaveView.voltageCeiling
    property real _currentAxisMin: 0
    property real _currentAxisMax: 8

    property bool _hoverActive: false
    property int _hoverSampleIndex: -1
    property real _hoverChartX: 0
    property real _hoverMouseX: 0
    property real _hoverMouseY: 0
    property real _hoverVoltageChartY: 0
    property real _hoverCurrentChartY: 0
    property real _hoverVoltageValue: 0
    property real _hoverCurrentValue: 0
    property real _hoverTimeSec: 0

    property bool _draggingChart: false
    property real _dragStartX: 0
    property int _dragStartViewIndex: 0
    property int _lastDragViewIndex: -1

    property real _mainRuntimeSec: Number(hidLink.mainTimeSec)
    property var _mainTimeTicks: []
    property var _previewTimeTicks: []
    property string _archiveStatusText: ""
    property string _loadedArchivePath: ""
    property bool _pendingResizeRebuild: false
    property real _frozenMainChartWidth: 0
    property real _frozenMainChartHeight: 0
    property real _frozenPreviewWidth: 0
    property real _frozenPreviewHeight: 0
    property int _valueSize: 18

    // What the head of the page shows; taken over with the samples, so that both are drawn in one go.
    property real _shownVoltage: 0
    property real _shownCurrent: 0
    property real _shownMah: 0
    // The arrays do not tell when they change; this follows their length for what is bound to it.
    property int _sampleCount: 0
    readonly property real _dfw: ScreenTools.defaultFontPixelWidth
    readonly property bool _onScreen: visible && Window.visibility !== Window.Hidden
                                      && Window.visibility !== Window.Minimized
    readonly property bool _drawing: _onScreen && !resizingWindow
    readonly property string _settingsGroup: "powerWaveAnalysis"
    readonly property int _ticksPerPreview: 5
    readonly property bool _connected: hidLink.connected

    // The link announces that the instrument is gone before it resets the measured values.
    on_ConnectedChanged: {
        if (!_connected)
            _interruptions = WaveView.interruptedAt(_interruptions, _voltageSamples.length, Number(hidLink.mainTimeSec))
    }

    function loadViewSettings() {
        var settings = GenToolbox.genSettings
        _showVoltageCurve = settings.bValue("showVoltageCurve", true, _settingsGroup)
        _showStandardCurve = settings.bValue("showStandardCurve", false, _settingsGroup)
        _autoScaleAxis = settings.bValue("autoScaleAxis", false, _settingsGroup)
        _controlPanelCollapsed = settings.bValue("controlPanelCollapsed", true, _settingsGroup)
        _currentRangeIndex = Format.clamp(settings.iValue("currentRangeIndex", 3, _settingsGroup), 0,
                                          _currentRangeOptions.length - 1)
        _currentAxisMax = _currentRangeOptions[_currentRangeIndex]
    }

    function saveViewSetting(key, value) {
        GenToolbox.genSettings.setValue(key, value, _settingsGroup)
    }

    function updateCurrentRangeFromValue(value) {
        _currentRangeIndex = WaveView.rangeIndexFor(value, _currentRangeOptions)
        _currentAxisMax = _currentRangeOptions[_currentRangeIndex]
    }

    function formatSeconds(value) { return Format.formatSeconds(value, WaveView.unknownTime) }
    function formatHoverSeconds(value) { return Format.formatSeconds(value, WaveView.unknownTime) }
    function formatPreviewSeconds(value) { return Format.formatSeconds(value) }

    function responsiveTickCount(pixelWidth, maxCount, minCount) {
        return WaveView.responsiveTickCount(pixelWidth, maxCount, minCount, _dfw)
    }

    function appendSample(buffer, value) {
        buffer.push(Number(value))
    }

    // Whether old samples left: the others then have new indices.
    function trimHistoryIfNeeded() {
        var count = WaveView.trimCount(Math.max(_voltageSamples.length, _currentSamples.length), _maxHistorySamples)
        if (count === 0)
            return false
        if (_voltageSamples.length > count)
            _voltageSamples.splice(0, count)
        if (_currentSamples.length > count)
            _currentSamples.splice(0, count)
        _interruptions = WaveView.trimmedInterruptions(_interruptions, count)
        _viewStartIndex = Math.max(0, _viewStartIndex - count)
        // What is under the cursor or the mouse button has moved with the samples.
        _dragStartViewIndex -= count
        if (_hoverActive)
            _hoverSampleIndex -= count
        return true
    }

    function maxViewStart() { return WaveView.maxStart(_voltageSamples.length, _viewSampleCount) }

    function clampViewStart() {
        _viewStartIndex = WaveView.clampStart(_viewStartIndex, _voltageSamples.length, _viewSampleCount)
    }

    function followLatestView() { _viewStartIndex = maxViewStart() }

    function visibleSampleCount() {
        return WaveView.visibleCount(_viewStartIndex, _voltageSamples.length, _viewSampleCount)
    }

    function beginChartDrag(mouseX) {
        if (resizingWindow || _voltageSamples.length <= _viewSampleCount)
            return
        _chartRunning = false
        _hoverActive = false
        _draggingChart = true
        _dragStartX = mouseX
        _dragStartViewIndex = _viewStartIndex
        _lastDragViewIndex = _viewStartIndex
    }

    function endChartDrag() {
        _draggingChart = false
        _lastDragViewIndex = -1
    }

    function updateHoverAt(mouseX, mouseY, chart) {
        if (_chartRunning || _voltageSamples.length === 0 || resizingWindow
                || !WaveView.contains(chart.plotArea, mouseX, mouseY)) {
            _hoverActive = false
            return
        }
        updateHoverForIndex(WaveView.sampleAt(mouseX, chart.plotArea, _viewStartIndex, _viewSampleCount), chart)
        _hoverMouseX = mouseX
        _hoverMouseY = mouseY
    }

    function updateHoverForIndex(localIndex, chart) {
        var visible = visibleSampleCount()
        if (visible === 0) {
            _hoverActive = false
            return
        }
        var index = Format.clamp(localIndex, _viewStartIndex, _viewStartIndex + visible - 1)
        _hoverSampleIndex = index
        _hoverVoltageValue = _voltageSamples[index]
        _hoverCurrentValue = _currentSamples[index]
        _hoverTimeSec = WaveView.sampleTimeSec(index, _voltageSamples.length, Number(hidLink.mainTimeSec),
                                               _sampleIntervalSec, _interruptions)
        _hoverActive = true
        _placeHover(chart.plotArea)
    }

    // Puts the cursor where its sample is drawn.
    function _placeHover(plot) {
        _hoverChartX = WaveView.pixelX(_hoverSampleIndex, plot, _viewStartIndex, _viewSampleCount)
        _hoverVoltageChartY = WaveView.pixelY(_hoverVoltageValue, plot, _voltageAxisMin, _voltageAxisMax)
        _hoverCurrentChartY = WaveView.pixelY(Math.max(0, _hoverCurrentValue), plot, _currentAxisMin, _currentAxisMax)
        _hoverMouseX = _hoverChartX
        _hoverMouseY = Math.min(_hoverVoltageChartY, _hoverCurrentChartY)
    }

    function readLink() {
        _shownVoltage = Number(hidLink.mainInputVoltage)
        _shownCurrent = Number(hidLink.mainOutputCurrent)
        _shownMah = Number(hidLink.mainMah)
    }

    function ensureStandardSamples() {
        if (_standardSamples.length !== _maxSamples)
            _standardSamples = WaveView.generatedCurve(_maxSamples)
    }

    function _updateAxisLimits() {
        var voltages = WaveView.fixedVoltageRange()
        if (_autoScaleAxis) {
            voltages = WaveView.rangeOf(_voltageSamples, _viewStartIndex, _viewSampleCount, voltages)
            voltages = WaveView.automaticVoltageAxis(WaveView.rangeOf(_standardSamples, 0, _standardSamples.length,
                                                                      voltages))
            updateCurrentRangeFromValue(WaveView.rangeOf(_currentSamples, _viewStartIndex, _viewSampleCount,
                                                         { "min": 0, "max": 0 }).max)
        } else {
            _currentAxisMax = _currentRangeOptions[_currentRangeIndex]
        }
        _voltageAxisMin = voltages.min
        _voltageAxisMax = voltages.max
    }

    Timer {
        id: _runtimeTimer

        interval: 250
        repeat: true
        running: true
        onTriggered: _state._mainRuntimeSec = Number(_state.hidLink.mainTimeSec)
    }

    Connections {
        target: _state.hidLink
        function onMeasurementChanged() {
            _state._mainRuntimeSec = Number(_state.hidLink.mainTimeSec)
            _runtimeTimer.restart()
        }
    }
}
