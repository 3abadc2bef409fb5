// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import QtQuick.Window 2.12

import "qrc:/qml/toolsUI"

/// The wave page on readings that change with every tick.
Window {
    id: _window

    property int _tick: 0

    width: 1280
    height: 720
    visible: true
    color: "black"

    QtObject {
        id: _link

        property bool connected: true
        property real mainInputVoltage: 5
        property real mainOutputCurrent: 1
        property real mainMah: 0
        property real mainTimeSec: 0

        signal measurementChanged()
    }

    PoweWaveAnalysis {
        id: _page

        anchors.fill: parent
        hidLink: _link
    }

    function measure() {
        _tick += 1
        _link.mainInputVoltage = 5 + 0.2 * Math.sin(_tick / 5)
        _link.mainOutputCurrent = 2 + Math.sin(_tick / 9)
        _link.mainMah += 0.05
        _link.mainTimeSec += 0.08
        _link.measurementChanged()
    }

    function record(count) {
        _page.clearSamples()
        for (var i = 0; i < count; ++i) {
            _page._voltageSamples.push(5 + 0.2 * Math.sin(i / 5))
            _page._currentSamples.push(2 + Math.sin(i / 9))
        }
        _page.rebuildSeries()
        _page.rebuildPreviewSeries()
    }

    // One tick of the chart alone: the newest sample comes into view.
    function tickChart() {
        _tick += 1
        _page._voltageSamples.push(5 + 0.2 * Math.sin(_tick / 5))
        _page._currentSamples.push(2 + Math.sin(_tick / 9))
        _page.rebuildSeries()
    }

    function tickOverview() {
        _tick += 1
        _page._voltageSamples[_tick % 3000] = 5 + Math.sin(_tick)
        _page.rebuildPreviewSeries()
    }

    function setConnected(connected) { _link.connected = connected }
}
