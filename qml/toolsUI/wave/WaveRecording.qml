// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.15

import "../common"
import "WaveView.js" as WaveView

/// Base of the wave page: the recorded samples, the comparison curve, and the part of them in view. Nothing here draws.
MeasurementPage {
    id: _recording

    // Volts and amperes, oldest first.
    property var _voltageSamples: []
    property var _currentSamples: []
    property var _standardSamples: []
    property real _sampleIntervalSec: 0.08
    property int _maxHistorySamples: 3000
    property int _maxSamples: 60
    property int _sampleSerial: 0
    // Number of samples, for bindings. The arrays do not signal a change of their content.
    property int _sampleCount: 0
    // Losses of the connection, as WaveView.sampleTimeSec() takes them.
    property var _interruptions: []

    property int _defaultViewSamples: 60
    property int _minViewSamples: 15
    property int _viewSampleCount: 60
    property int _viewStartIndex: 0
    property bool _chartRunning: true

    // Latest readings of the link. The first three change with the samples, so that one frame draws both.
    property real _shownVoltage: 0
    property real _shownCurrent: 0
    property real _shownMah: 0
    property real _mainRuntimeSec: Number(hidLink.mainTimeSec)

    /// A sample was appended; droppedOld after a trimmed().
    signal sampleTaken(bool droppedOld)
    /// The oldest samples were dropped: all indices have shifted down by `count`.
    signal trimmed(int count)

    // The link drops `connected` before it resets the measured values.
    onConnectedChanged: {
        if (!connected)
            _interruptions = WaveView.interruptedAt(_interruptions, _voltageSamples.length, Number(hidLink.mainTimeSec))
    }

    function readLink() {
        _shownVoltage = Number(hidLink.mainInputVoltage)
        _shownCurrent = Number(hidLink.mainOutputCurrent)
        _shownMah = Number(hidLink.mainMah)
    }

    function takeSample() {
        if (!hidLink.connected)
            return
        readLink()
        appendSample(_voltageSamples, _shownVoltage)
        appendSample(_currentSamples, _shownCurrent)
        var droppedOld = trimHistoryIfNeeded()
        _sampleSerial += 1
        clampViewStart()
        sampleTaken(droppedOld)
    }

    function appendSample(buffer, value) {
        buffer.push(Number(value))
    }

    // Returns true when old samples were dropped.
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
        trimmed(count)
        return true
    }

    function forgetSamples() {
        _voltageSamples = []
        _currentSamples = []
        _interruptions = []
        _viewStartIndex = 0
        _sampleSerial = 0
    }

    function ensureStandardSamples() {
        if (_standardSamples.length !== _maxSamples)
            _standardSamples = WaveView.generatedCurve(_maxSamples)
    }

    // Compares with the voltages of a loaded archive from now on.
    function useStandardSamples(samples) {
        _maxSamples = samples.length
        _standardSamples = samples
    }

    // Time of a sample in the instrument's seconds.
    function sampleTimeSec(index) {
        return WaveView.sampleTimeSec(index, _voltageSamples.length, Number(hidLink.mainTimeSec), _sampleIntervalSec,
                                      _interruptions)
    }

    function maxViewStart() { return WaveView.maxStart(_voltageSamples.length, _viewSampleCount) }

    function clampViewStart() {
        _viewStartIndex = WaveView.clampStart(_viewStartIndex, _voltageSamples.length, _viewSampleCount)
    }

    function followLatestView() { _viewStartIndex = maxViewStart() }

    function visibleSampleCount() {
        return WaveView.visibleCount(_viewStartIndex, _voltageSamples.length, _viewSampleCount)
    }

    function _readRuntime() { _mainRuntimeSec = Number(hidLink.mainTimeSec) }

    Timer {
        interval: 80
        repeat: true
        running: true
        onTriggered: _recording.takeSample()
    }
    Timer {
        id: _runtimeTimer

        interval: 250
        repeat: true
        running: true
        onTriggered: _recording._readRuntime()
    }
    Connections {
        target: _recording.hidLink
        function onMeasurementChanged() {
            _recording._readRuntime()
            _runtimeTimer.restart()
        }
    }
}
