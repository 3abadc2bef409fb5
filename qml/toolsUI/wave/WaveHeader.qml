// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.15
import QtQuick.Layouts 1.15
import GenControl.ScreenTools 1.0

import "../../customize"
import "../../customize/Format.js" as Format
import "WaveView.js" as WaveView

/// The head of the page: what the instrument measures now, and the toggle of the controls.
GridLayout {
    id: _header

    property bool connected: false
    /// Readings in volts, amperes, milliampere hours and seconds.
    property real voltage: 0
    property real current: 0
    property real mah: 0
    property real runtimeSec: 0
    property bool controlsCollapsed: false
    /// Size of the values in points.
    property real valueSize: 18
    /// Low pages keep their height for the chart: less room around the texts.
    property bool low: false
    /// Opacity of the window's background, 0 to 1; the fills are multiplied with it.
    property real backgroundOpacity: 1

    /// The user hides or shows the controls.
    signal controlsToggled()

    readonly property bool _wide: width >= ScreenTools.defaultFontPixelWidth * 92
    columns: _wide ? 6 : 3
    columnSpacing: ScreenTools.defaultFontPixelWidth * 0.8
    rowSpacing: columnSpacing

    // Here the unit stays where the value is not known.
    function _reading(value, unit) {
        var reading = Format.ifConnected(connected, value)
        return isFinite(reading) ? Format.formatMetric(reading, 3, unit) : Format.noValue + unit
    }

    WaveCard {
        title: qsTranslate("PoweWaveAnalysis", "Device Status")
        value: _header.connected ? qsTranslate("PoweWaveAnalysis", "Connected")
                                 : qsTranslate("PoweWaveAnalysis", "Not Connected")
        accent: _header.connected ? PageStyle.accentGreen : PageStyle.dimText
        valueSize: _header.valueSize
        low: _header.low
        backgroundOpacity: _header.backgroundOpacity
        Layout.fillWidth: true
        Layout.preferredWidth: 1
    }
    WaveCard {
        title: qsTranslate("PoweWaveAnalysis", "Output Current")
        value: _header._reading(_header.current, " A")
        accent: PageStyle.waveCurrent
        valueSize: _header.valueSize
        low: _header.low
        backgroundOpacity: _header.backgroundOpacity
        Layout.fillWidth: true
        Layout.preferredWidth: 1
    }
    WaveCard {
        title: qsTranslate("PoweWaveAnalysis", "Input Voltage")
        value: _header._reading(_header.voltage, " V")
        accent: PageStyle.waveVoltage
        valueSize: _header.valueSize
        low: _header.low
        backgroundOpacity: _header.backgroundOpacity
        Layout.fillWidth: true
        Layout.preferredWidth: 1
    }
    WaveCard {
        title: qsTranslate("PoweWaveAnalysis", "Capacity")
        value: _header._reading(_header.mah, " mAh")
        accent: PageStyle.accentGold
        valueSize: _header.valueSize
        low: _header.low
        backgroundOpacity: _header.backgroundOpacity
        Layout.fillWidth: true
        Layout.preferredWidth: 1
    }
    WaveCard {
        title: qsTranslate("PoweWaveAnalysis", "Elapsed Time")
        value: Format.formatSeconds(_header.runtimeSec, WaveView.unknownTime)
        accent: PageStyle.accentYellow
        valueSize: _header.valueSize
        low: _header.low
        backgroundOpacity: _header.backgroundOpacity
        Layout.fillWidth: true
        Layout.preferredWidth: 1
    }
    WaveToggle {
        collapsed: _header.controlsCollapsed
        backgroundOpacity: _header.backgroundOpacity
        onClicked: _header.controlsToggled()
        Layout.fillWidth: !_header._wide
        Layout.fillHeight: true
        Layout.preferredWidth: _header._wide ? implicitWidth : 1
    }
}
