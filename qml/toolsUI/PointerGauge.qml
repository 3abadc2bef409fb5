// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.15
import QtQuick.Layouts 1.15
import GenToolbox 1.0
import GenControl.ScreenTools 1.0

import "../customize"
import "../customize/Format.js" as Format
import "common"
import "gauge"
import "gauge/GaugeScale.js" as Scale

/// The output current of the main supply on a needle gauge, with voltage, time and capacity.
MeasurementPage {
    id: root

    property var _rangeOptions: Scale.rangeOptions
    property int _rangeIndex: Scale.autoRangeIndex

    // What the link said last; not a number while disconnected. Refreshed by _takeMeasurement().
    property real _displayCurrent: NaN
    property real _displayVoltage: NaN
    property real _displayMah: NaN
    property real _displayTimeSec: NaN
    // The last current that was a number: the scale stays when a single packet carries none.
    property real _scaleCurrent: 0
    property real _displayRangeMax: Scale.rangeMax(_rangeIndex, _scaleCurrent)

    property real _needleCurrent: 0
    property real _glowCurrent: 0
    property real _pendingGlowCurrent: 0
    property int _glowAnimationDuration: Scale.glowRiseMs
    property bool _animated: false
    // Where needle and glow are drawn. They follow the animations in steps, together with the texts: without a
    // graphics processor each frame of the window costs, and a needle needs no more than these.
    property real _shownNeedle: 0
    property real _shownGlow: 0

    readonly property color _accentCurrent: PageStyle.accentRed
    readonly property real _margin: ScreenTools.defaultFontPixelWidth * 1.5
    readonly property var _cards: [
        { title: qsTr("Voltage"), value: formatMetric(_displayVoltage, 3, " V"), accent: PageStyle.accentCyan },
        { title: qsTr("Current"), value: formatMetric(_displayCurrent, 3, " A"), accent: _accentCurrent },
        { title: qsTr("Time"), value: formatSeconds(_displayTimeSec), accent: PageStyle.accentYellow },
        { title: qsTr("Capacity"), value: formatMetric(_displayMah, 3, " mAh"), accent: PageStyle.accentGold }
    ]

    Behavior on _needleCurrent {
        enabled: root._animated
        NumberAnimation { duration: 260; easing.type: Easing.OutQuad }
    }
    Behavior on _glowCurrent {
        enabled: root._animated
        NumberAnimation { duration: root._glowAnimationDuration; easing.type: Easing.OutQuad }
    }

    function formatMetric(value, digits, unit) {
        return Format.formatMetric(value, digits, unit)
    }

    function formatSeconds(value) {
        return Format.formatSeconds(value)
    }

    function autoRangeForCurrent(value) {
        return Scale.autoRangeForCurrent(value)
    }

    function gaugeDisplayValue() {
        return Scale.displayValue(isFinite(_displayCurrent) ? _shownNeedle : NaN, _displayRangeMax)
    }

    function gaugeDisplayUnit() {
        return Scale.displayUnit(_displayRangeMax)
    }

    function selectRange(index) {
        _rangeIndex = index
        GenToolbox.genSettings.setValue("currentRangeIndex", index, "pointerGauge")
    }

    function updateGlowCurrent(next) {
        if (Scale.glowFollows(_glowCurrent, next)) {
            glowFallbackTimer.stop()
            _glowAnimationDuration = Scale.glowRiseMs
            _glowCurrent = next
            _pendingGlowCurrent = next
        } else {
            _pendingGlowCurrent = next
            if (!glowFallbackTimer.running)
                glowFallbackTimer.start()
        }
    }

    function _takeMeasurement() {
        var link = hidLink
        _displayCurrent = Format.ifConnected(connected, link.mainOutputCurrent)
        _displayVoltage = Format.ifConnected(connected, link.mainInputVoltage)
        _displayMah = Format.ifConnected(connected, link.mainMah)
        _displayTimeSec = Format.ifConnected(connected, link.mainTimeSec)
        // The link's own value is 0 while disconnected: the needle goes back to rest.
        var current = Number(link.mainOutputCurrent)
        if (!isFinite(current))
            return
        _scaleCurrent = current
        _needleCurrent = current
        updateGlowCurrent(current)
    }

    function _showMoving() {
        _shownNeedle = _needleCurrent
        _shownGlow = _glowCurrent
        if (_needleCurrent !== _scaleCurrent || _glowCurrent !== _pendingGlowCurrent)
            _gate.request()
    }

    onConnectedChanged: _gate.flush()

    UpdateGate {
        id: _gate

        onPassed: {
            root._takeMeasurement()
            root._showMoving()
        }
    }

    Timer {
        id: glowFallbackTimer

        interval: Scale.glowFallDelayMs
        onTriggered: {
            root._glowAnimationDuration = Scale.glowFallMs
            root._glowCurrent = root._pendingGlowCurrent
        }
    }

    ColumnLayout {
        anchors.fill: parent
        anchors.margins: root._margin
        spacing: root._margin

        RangePanel {
            Layout.fillWidth: true
            title: qsTr("Range")
            options: root._rangeOptions
            currentIndex: root._rangeIndex
            backgroundOpacity: root.pageBackgroundOpacity
            connected: root.connected
            connectionText: root.connected ? qsTr("Connected") : qsTr("Not Connected")
            onSelected: function(index) { root.selectRange(index) }
        }

        NeedleDial {
            Layout.fillWidth: true
            Layout.fillHeight: true
            frozen: root.resizingWindow
            backgroundOpacity: root.pageBackgroundOpacity
            rangeMax: root._displayRangeMax
            needleCurrent: root._shownNeedle
            glowCurrent: root._shownGlow
            valueText: root.gaugeDisplayValue()
            unitText: root.gaugeDisplayUnit()

            Accessible.role: Accessible.StaticText
            Accessible.name: qsTr("Current") + " " + valueText + " " + unitText
        }

        GridLayout {
            Layout.fillWidth: true
            // Beside an expanded page list in the smallest window, four cards in a row are too narrow.
            columns: root.width < ScreenTools.defaultFontPixelWidth * 52 ? 2 : 4
            columnSpacing: root._margin
            rowSpacing: root._margin

            Repeater {
                model: root._cards.length

                ValueCard {
                    required property int index

                    Layout.fillWidth: true
                    Layout.preferredWidth: 1
                    title: root._cards[index].title
                    value: root._cards[index].value
                    accent: root._cards[index].accent
                    backgroundOpacity: root.pageBackgroundOpacity
                }
            }
        }
    }

    Connections {
        target: root.hidLink
        function onMeasurementChanged() { _gate.request() }
    }

    Component.onCompleted: {
        _rangeIndex = Scale.clampedRangeIndex(
                    GenToolbox.genSettings.iValue("currentRangeIndex", Scale.autoRangeIndex, "pointerGauge"))
        _takeMeasurement()
        _glowCurrent = _needleCurrent
        _pendingGlowCurrent = _glowCurrent
        _showMoving()
        _animated = true
    }
}
