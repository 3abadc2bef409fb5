// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.15
import QtQuick.Layouts 1.15
import GenControl.ScreenTools 1.0

import "../customize"
import "../customize/Format.js" as Format
import "charge"
import "charge/ChargeRules.js" as Rules
import "common"

/// The USB Type-C input as a dashboard: how fast the device charges, and what the signal lines do.
MeasurementPage {
    id: root

    property bool fastCharge: Rules.isFastCharge(_values.voltage)
    readonly property bool compactLayout: Rules.isCompact(width, height, ScreenTools.defaultFontPixelWidth)
    readonly property real contentScale: Rules.contentScale(width, height)
    readonly property real pageMargin: ScreenTools.defaultFontPixelWidth * (compactLayout ? 1.1 : 2)
    readonly property real pageSpacing: ScreenTools.defaultFontPixelWidth * (compactLayout ? 0.85 : 1.6)

    // What the link said last; not a number while disconnected. Replaced by _takeMeasurement().
    property var _values: ({})
    // So low that only the values and their names have room.
    readonly property bool _low: height < ScreenTools.defaultFontPixelWidth * 48
    readonly property real _padding: _low ? 8 : compactLayout ? 12 : 16

    readonly property var _metrics: [
        { title: qsTr("Voltage"), value: formatMetric(_values.voltage, "V", 3), hint: qsTr("TYPE-C input voltage"),
          icon: "V", accent: fastCharge ? PageStyle.accentGreen : PageStyle.accentGold },
        { title: qsTr("Current"), value: formatMetric(_values.current, "A", 3), hint: qsTr("TYPE-C input current"),
          icon: "A", accent: PageStyle.accentCyan },
        { title: qsTr("Power"), value: formatMetric(_values.power, "W", 3), hint: qsTr("TYPE-C input power"),
          icon: "P", accent: PageStyle.accentGold }
    ]
    readonly property var _infos: [
        { title: qsTr("Device Status"), value: connected ? qsTr("Connected") : qsTr("Not Connected"),
          color: connected ? PageStyle.accentGreen : PageStyle.chargeOffline },
        { title: qsTr("Elapsed Time"), value: formatSeconds(_values.timeSec), color: PageStyle.chargeValue },
        { title: qsTr("Capacity Counter"), value: formatMetric(_values.mah, "mAh", 3), color: PageStyle.chargeValue }
    ]
    readonly property var _lines: [
        { title: "CC1", voltage: _values.cc1, accent: PageStyle.accentCyan },
        { title: "CC2", voltage: _values.cc2, accent: PageStyle.accentBlue },
        { title: "D+", voltage: _values.dPlus, accent: PageStyle.accentGold },
        { title: "D-", voltage: _values.dMinus, accent: PageStyle.chargeRed }
    ]

    function formatMetric(value, unit, digits) {
        return Format.formatMetric(value, digits, unit)
    }

    function formatSeconds(value) {
        return Format.formatSeconds(value)
    }

    function scaledPoint(size) {
        return Rules.scaledPoint(size, contentScale)
    }

    function adaptivePoint(normal, compact) {
        return scaledPoint(compactLayout ? compact : normal)
    }

    function _takeMeasurement() {
        var link = hidLink
        _values = {
            voltage: Format.ifConnected(connected, link.typeCInputVoltage),
            current: Format.ifConnected(connected, link.typeCInputCurrent),
            power: Format.ifConnected(connected, link.typeCInputPower),
            mah: Format.ifConnected(connected, link.typeCMah),
            timeSec: Format.ifConnected(connected, link.typeCTimeSec),
            cc1: Format.ifConnected(connected, link.typeCCC1Voltage),
            cc2: Format.ifConnected(connected, link.typeCCC2Voltage),
            dPlus: Format.ifConnected(connected, link.typeCDPlusVoltage),
            dMinus: Format.ifConnected(connected, link.typeCDMinusVoltage)
        }
    }

    onConnectedChanged: _gate.flush()

    UpdateGate {
        id: _gate

        interval: 50
        onPassed: root._takeMeasurement()
    }

    ColumnLayout {
        anchors.fill: parent
        anchors.margins: root.pageMargin
        spacing: root.pageSpacing

        ChargeHeader {
            Layout.fillWidth: true
            color: root.bgColor(PageStyle.panel, 1)
            backgroundOpacity: root.pageBackgroundOpacity
            title: qsTr("Charge Data Collect")
            subtitle: qsTr("TYPE-C measurement dashboard")
            fast: root.fastCharge
            live: root.connected
            fastText: qsTr("Fast Charge")
            slowText: qsTr("Slow Charge")
            badgeText: root.fastCharge ? qsTr("F") : qsTr("S")
            fastColor: PageStyle.accentGold
            titleSize: root.adaptivePoint(19, 16)
            textSize: root.adaptivePoint(12, 11)
            padding: root._padding
        }

        RowLayout {
            Layout.fillWidth: true
            Layout.fillHeight: true
            Layout.preferredHeight: root.height * 0.4
            spacing: root.pageSpacing

            Repeater {
                model: root._metrics.length

                MetricCard {
                    required property int index

                    Layout.fillWidth: true
                    Layout.fillHeight: true
                    Layout.preferredWidth: 1
                    color: root.bgColor(PageStyle.card, 1)
                    backgroundOpacity: root.pageBackgroundOpacity
                    title: root._metrics[index].title
                    value: root._metrics[index].value
                    hint: root._metrics[index].hint
                    icon: root._metrics[index].icon
                    accent: root._metrics[index].accent
                    titleSize: root.adaptivePoint(13, 12)
                    valueSize: Rules.metricPoint(root.adaptivePoint(32, 24), width, height)
                    hintSize: root.adaptivePoint(11, 10)
                    padding: root._padding
                    low: root._low
                }
            }
        }

        RowLayout {
            Layout.fillWidth: true
            Layout.fillHeight: true
            Layout.minimumHeight: implicitHeight
            Layout.preferredHeight: root.height * 0.14
            spacing: root.pageSpacing

            Repeater {
                model: root._infos.length

                InfoCard {
                    required property int index

                    Layout.fillWidth: true
                    Layout.fillHeight: true
                    Layout.minimumHeight: implicitHeight
                    Layout.preferredWidth: 1
                    color: root.bgColor(PageStyle.card, 1)
                    title: root._infos[index].title
                    value: root._infos[index].value
                    valueColor: root._infos[index].color
                    titleSize: root.adaptivePoint(11, 10)
                    valueSize: root.adaptivePoint(16, 14)
                    padding: root._padding
                }
            }
        }

        Rectangle {
            Layout.fillWidth: true
            Layout.fillHeight: true
            Layout.minimumHeight: _linesLayout.implicitHeight + 2 * root._padding
            Layout.preferredHeight: root.height * 0.24
            radius: 12
            color: root.bgColor(PageStyle.panel, 1)
            border.width: 1
            border.color: PageStyle.panelBorder

            ColumnLayout {
                id: _linesLayout

                anchors.fill: parent
                anchors.margins: root._padding
                spacing: root._padding * 0.7

                Text {
                    visible: !root._low
                    text: qsTr("Signal Lines")
                    color: PageStyle.chargeTitle
                    font.family: GenFontManager.mainFontFamily
                    font.pointSize: root.adaptivePoint(13, 12)
                }

                RowLayout {
                    Layout.fillWidth: true
                    Layout.fillHeight: true
                    spacing: root.pageSpacing

                    Repeater {
                        model: root._lines.length

                        InfoCard {
                            required property int index

                            Layout.fillWidth: true
                            Layout.fillHeight: true
                            Layout.preferredWidth: 1
                            color: root.bgColor(PageStyle.card, 1)
                            title: root._lines[index].title
                            value: root.formatMetric(root._lines[index].voltage, "V", 2)
                            edge: root._lines[index].accent
                            valueColor: edge
                            level: Rules.lineLevel(root._lines[index].voltage)
                            grooveColor: root.bgColor(PageStyle.idleFill, 1)
                            titleSize: root.adaptivePoint(12, 11)
                            valueSize: root.adaptivePoint(18, 15)
                            padding: root._padding
                        }
                    }
                }
            }
        }
    }

    Connections {
        target: root.hidLink
        function onMeasurementChanged() { _gate.request() }
    }

    Component.onCompleted: _takeMeasurement()
}
