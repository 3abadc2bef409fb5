// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.15

import "../../customize/Format.js" as Format
import "../common"
import "WaveView.js" as WaveView

/// Base of the wave page: moves the view over the recording, live or paused, and reads out its samples. The page draws
/// the view after each viewChanged().
WaveRecording {
    id: _playback

    property alias _autoScaleAxis: _axes.autoScale
    property var _currentRangeOptions: [0.7, 1.4, 3.5, 7]
    property alias _currentRangeIndex: _axes.rangeIndex
    property alias _voltageAxisMin: _axes.voltageMin
    property alias _voltageAxisMax: _axes.voltageMax
    property alias _currentAxisMin: _axes.currentMin
    property alias _currentAxisMax: _axes.currentMax

    property alias _hoverActive: _cursor.active
    property alias _hoverSampleIndex: _cursor.sampleIndex
    property alias _hoverChartX: _cursor.chartX
    property alias _hoverMouseX: _cursor.mouseX
    property alias _hoverMouseY: _cursor.mouseY
    property alias _hoverVoltageChartY: _cursor.voltageY
    property alias _hoverCurrentChartY: _cursor.currentY
    property alias _hoverVoltageValue: _cursor.voltage
    property alias _hoverCurrentValue: _cursor.current
    property alias _hoverTimeSec: _cursor.timeSec

    property alias _draggingChart: _drag.active
    property alias _dragStartX: _drag.startX
    property alias _dragStartViewIndex: _drag.startIndex
    property alias _lastDragViewIndex: _drag.lastIndex

    readonly property WaveAxes axes: _axes
    readonly property WaveCursor cursor: _cursor
    /// Plot of the main chart, in the chart's pixels.
    property rect plotArea: Qt.rect(0, 0, 0, 0)

    /// The view shows other samples or has other limits.
    signal viewChanged()

    onResizingWindowChanged: {
        if (resizingWindow) {
            _cursor.active = false
            endChartDrag()
        }
    }
    // The chart has another size: the cursor stays on its sample.
    onPlotAreaChanged: {
        if (_cursor.active)
            _cursor.place(plotArea, _viewStartIndex, _viewSampleCount, _axes)
    }
    // What is under the cursor or the mouse button moves with the samples.
    onTrimmed: function(count) {
        _drag.startIndex -= count
        if (_cursor.active)
            _cursor.sampleIndex -= count
    }

    function updateCurrentRangeFromValue(value) { _axes.useRangeFor(value) }

    function rebuildSeries() {
        if (_chartRunning)
            followLatestView()
        else
            clampViewStart()
        _sampleCount = _voltageSamples.length
        ensureStandardSamples()
        _axes.fit(_voltageSamples, _currentSamples, _standardSamples, _viewStartIndex, _viewSampleCount)
        viewChanged()
        if (_cursor.active)
            _readOut(_cursor.sampleIndex, plotArea)
    }

    function togglePlayback() {
        endChartDrag()
        _chartRunning = !_chartRunning
        if (_chartRunning) {
            _cursor.active = false
            rebuildSeries()
        } else {
            _readOut(_viewStartIndex + visibleSampleCount() - 1, plotArea)
        }
    }

    function resetViewToLatest() {
        endChartDrag()
        _viewSampleCount = _defaultViewSamples
        _chartRunning = true
        _cursor.active = false
        rebuildSeries()
    }

    // Shows the view from startIndex on, paused, with the cursor on its middle sample.
    function showPausedView(startIndex) {
        endChartDrag()
        _chartRunning = false
        _viewStartIndex = startIndex
        rebuildSeries()
        _readOut(WaveView.middleVisible(_viewStartIndex, visibleSampleCount()), plotArea)
    }

    // Shows the view with the sample `centre` in its middle, paused.
    function showAround(centre) {
        showPausedView(WaveView.startAround(centre, _viewSampleCount))
    }

    function zoomMainChart(deltaSteps) {
        if (_voltageSamples.length === 0)
            return
        var centre = WaveView.centreOf(_viewStartIndex, _viewSampleCount)
        _viewSampleCount = WaveView.zoomedCount(_viewSampleCount, deltaSteps, _minViewSamples, _defaultViewSamples)
        if (_viewSampleCount >= _defaultViewSamples)
            resetViewToLatest()
        else
            showAround(centre)
    }

    function movePausedCursor(delta) {
        if (!_chartRunning && _voltageSamples.length > 0)
            showPausedView(_viewStartIndex + delta * WaveView.cursorStep(_viewSampleCount))
    }

    // Moves the cursor by one sample where there is one, else the view.
    function stepCursor(direction) {
        if (!_chartRunning && _cursor.active)
            _readOut(_cursor.sampleIndex + direction, plotArea)
        else
            movePausedCursor(direction)
    }

    function beginChartDrag(mouseX) {
        if (resizingWindow || _voltageSamples.length <= _viewSampleCount)
            return
        _chartRunning = false
        _cursor.active = false
        _drag.begin(mouseX, _viewStartIndex)
    }

    function dragChartTo(mouseX) {
        var start = _drag.moveTo(mouseX, plotArea.width, _voltageSamples.length, _viewSampleCount)
        if (start < 0)
            return
        _viewStartIndex = start
        rebuildSeries()
    }

    function endChartDrag() { _drag.end() }

    function updateHoverAt(mouseX, mouseY, chart) {
        var plot = chart.plotArea
        if (_chartRunning || resizingWindow || !WaveView.contains(plot, mouseX, mouseY)) {
            _cursor.active = false
            return
        }
        _readOut(WaveView.sampleAt(mouseX, plot, _viewStartIndex, _viewSampleCount), plot)
        _cursor.mouseX = mouseX
        _cursor.mouseY = mouseY
    }

    function updateHoverForIndex(localIndex, chart) { _readOut(localIndex, chart.plotArea) }

    // Puts the cursor on the visible sample nearest to `wanted`; hides it where nothing is visible.
    function _readOut(wanted, plot) {
        var visibleSamples = visibleSampleCount()
        _cursor.active = visibleSamples > 0
        if (visibleSamples === 0)
            return
        var index = Format.clamp(wanted, _viewStartIndex, _viewStartIndex + visibleSamples - 1)
        _cursor.sampleIndex = index
        _cursor.voltage = _voltageSamples[index]
        _cursor.current = _currentSamples[index]
        _cursor.timeSec = sampleTimeSec(index)
        _cursor.place(plot, _viewStartIndex, _viewSampleCount, _axes)
    }

    WaveAxes {
        id: _axes

        rangeOptions: _playback._currentRangeOptions
    }
    WaveCursor {
        id: _cursor
    }
    WaveDrag {
        id: _drag
    }
}
