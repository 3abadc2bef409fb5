// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import QtQuick.Controls 2.12

import "../customize"
import "../customize/Format.js" as Format
import "wave"
import "wave/WaveView.js" as WaveView

/// Recorder of the main supply: voltage and current over time, live or paused, zoomed, dragged and read out.
WaveState {
    id: powerAnalys

    // The chart's keys work wherever on the page the focus is, unless a control there needs them itself.
    Keys.forwardTo: [_mainChart.input]

    onResizingWindowChanged: {
        if (resizingWindow) {
            _hoverActive = false
            endChartDrag()
            _frozenMainChartWidth = _mainChart.chart.width
            _frozenMainChartHeight = _mainChart.chart.height
            _frozenPreviewWidth = _overview.chart.width
            _frozenPreviewHeight = _overview.chart.height
        } else {
            _frozenMainChartWidth = _frozenMainChartHeight = _frozenPreviewWidth = _frozenPreviewHeight = 0
        }
    }
    on_DrawingChanged: {
        if (!_drawing)
            return
        placeOnChart()
        updatePreviewTimeTicks()
        if (_pendingResizeRebuild)
            _rebuildTimer.restart()
    }

    function resetViewToLatest() {
        endChartDrag()
        _viewSampleCount = _defaultViewSamples
        _chartRunning = true
        followLatestView()
        _hoverActive = false
        rebuildSeries()
    }

    function zoomMainChart(deltaSteps) {
        if (_voltageSamples.length === 0)
            return
        var centre = WaveView.centreOf(_viewStartIndex, _viewSampleCount)
        _viewSampleCount = WaveView.zoomedCount(_viewSampleCount, deltaSteps, _minViewSamples, _defaultViewSamples)
        if (_viewSampleCount >= _defaultViewSamples)
            resetViewToLatest()
        else
            showPausedView(WaveView.startAround(centre, _viewSampleCount))
    }

    function setViewCenterFromPreview(mouseX) {
        if (_voltageSamples.length === 0)
            return
        var centre = WaveView.sampleAtPreview(mouseX, _overview.plotX, _overview.plotWidth, _voltageSamples.length)
        showPausedView(WaveView.startAround(centre, _viewSampleCount))
    }

    function movePausedCursor(delta) {
        if (_chartRunning || _voltageSamples.length === 0)
            return
        showPausedView(_viewStartIndex + delta * WaveView.cursorStep(_viewSampleCount))
    }

    // Shows the view from startIndex on, paused, with the cursor on its middle sample.
    function showPausedView(startIndex) {
        endChartDrag()
        _chartRunning = false
        _viewStartIndex = startIndex
        clampViewStart()
        rebuildSeries()
        updateHoverForIndex(WaveView.middleVisible(_viewStartIndex, visibleSampleCount()), _mainChart.chart)
    }

    function togglePlayback() {
        endChartDrag()
        _chartRunning = !_chartRunning
        if (_chartRunning) {
            _hoverActive = false
            rebuildSeries()
        } else if (_voltageSamples.length > 0) {
            updateHoverForIndex(_viewStartIndex + visibleSampleCount() - 1, _mainChart.chart)
        }
    }

    function clearSamples() {
        _voltageSamples = []
        _currentSamples = []
        _interruptions = []
        _viewStartIndex = 0
        _sampleSerial = 0
        _hoverActive = false
        endChartDrag()
        rebuildSeries()
        rebuildPreviewSeries()
    }

    function previewSelectionWidth() {
        return WaveView.selectionWidth(_overview.plotWidth, _viewSampleCount, _sampleCount)
    }

    function previewSelectionX() {
        return WaveView.selectionX(_overview.plotX, _overview.plotWidth, previewSelectionWidth(), _viewStartIndex,
                                   WaveView.maxStart(_sampleCount, _viewSampleCount))
    }

    // Compares with the voltages of a loaded archive from now on.
    function useStandardSamples(samples) {
        _maxSamples = samples.length
        _standardSamples = samples
        rebuildSeries()
    }

    function rebuildSeries() {
        if (_chartRunning)
            followLatestView()
        else
            clampViewStart()
        _sampleCount = _voltageSamples.length
        ensureStandardSamples()
        _updateAxisLimits()
        _mainChart.drawView()
        updateMainTimeTicks()
        if (_hoverActive)
            updateHoverForIndex(_hoverSampleIndex, _mainChart.chart)
    }

    function rebuildPreviewSeries() {
        _sampleCount = _voltageSamples.length
        _overview.drawRecording()
        updatePreviewTimeTicks()
    }

    function updateMainTimeTicks() {
        _mainTimeTicks = WaveView.timeTicks(responsiveTickCount(_mainChart.plotArea.width, 6, 3),
                                            _viewStartIndex * _sampleIntervalSec,
                                            WaveView.spanSec(_viewSampleCount, _sampleIntervalSec))
    }

    function updatePreviewTimeTicks() {
        var recordedSec = Math.max(0, _voltageSamples.length - 1) * _sampleIntervalSec
        _previewTimeTicks = recordedSec > 0 ? WaveView.timeTicks(responsiveTickCount(_overview.plotWidth, 8, 3), 0,
                                                                 recordedSec) : []
    }

    // Called when the chart has another size: the cursor stays on its sample, the labels fill the new width.
    function placeOnChart() {
        if (_drawing)
            updateMainTimeTicks()
        if (_hoverActive)
            _placeHover(_mainChart.plotArea)
    }

    function dragChartTo(mouseX) {
        if (!_draggingChart)
            return
        var start = WaveView.clampStart(WaveView.draggedStart(_dragStartViewIndex, mouseX - _dragStartX,
                                                              _mainChart.plotArea.width, _viewSampleCount),
                                        _voltageSamples.length, _viewSampleCount)
        if (start === _lastDragViewIndex)
            return
        _lastDragViewIndex = start
        _viewStartIndex = start
        rebuildSeries()
    }

    function takeSample() {
        if (!hidLink.connected)
            return
        readLink()
        appendSample(_voltageSamples, _shownVoltage)
        appendSample(_currentSamples, _shownCurrent)
        var trimmed = trimHistoryIfNeeded()
        _sampleSerial += 1
        clampViewStart()
        if (!_drawing) {
            _pendingResizeRebuild = true
            return
        }
        _sampleCount = _voltageSamples.length
        // A paused view changes only while new samples still come into it, or when the old ones move.
        if (_chartRunning || _sampleCount <= _viewStartIndex + _viewSampleCount || trimmed)
            rebuildSeries()
        if (_sampleSerial % _ticksPerPreview === 0)
            rebuildPreviewSeries()
    }

    Timer {
        interval: 80
        repeat: true
        running: true
        onTriggered: powerAnalys.takeSample()
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

                page: powerAnalys
                width: parent.width
            }
            WaveControls {
                id: _controls

                page: powerAnalys
                visible: !powerAnalys._controlPanelCollapsed
                width: parent.width
            }
            WaveMainChart {
                id: _mainChart

                page: powerAnalys
                width: parent.width
                height: Math.max(powerAnalys._dfw * 18, Math.floor(_scroll.height - _column._othersHeight))
            }
            WaveOverview {
                id: _overview

                page: powerAnalys
                width: parent.width
                height: Math.round(Format.clamp(_scroll.height * 0.17, powerAnalys._dfw * 9, powerAnalys._dfw * 16))
            }
            WaveArchive {
                id: _archive

                page: powerAnalys
                width: parent.width
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
