// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import QtQuick.Layouts 1.12
import GenControl.ScreenTools 1.0

import "../../customize"
import "../../customize/Format.js" as Format

/// The head of the page: what the instrument measures now, and the toggle of the controls.
GridLayout {
    id: _header

    property Item page

    readonly property var _link: page.hidLink
    readonly property bool _wide: width >= ScreenTools.defaultFontPixelWidth * 92

    columns: _wide ? 6 : 3
    columnSpacing: ScreenTools.defaultFontPixelWidth * 0.8
    rowSpacing: columnSpacing

    // Here the unit stays where the value is not known.
    function _reading(value, unit) {
        var reading = Format.ifConnected(_link.connected, value)
        return isFinite(reading) ? Format.formatMetric(reading, 3, unit) : Format.noValue + unit
    }

    WaveCard {
        page: _header.page
        title: qsTranslate("PoweWaveAnalysis", "Device Status")
        value: _header._link.connected ? qsTranslate("PoweWaveAnalysis", "Connected")
                                       : qsTranslate("PoweWaveAnalysis", "Not Connected")
        accent: _header._link.connected ? PageStyle.accentGreen : PageStyle.dimText
        Layout.fillWidth: true
        Layout.preferredWidth: 1
    }
    WaveCard {
        objectName: "outputCurrent"
        page: _header.page
        title: qsTranslate("PoweWaveAnalysis", "Output Current")
        value: _header._reading(_header.page._shownCurrent, " A")
        accent: PageStyle.accentRed
        Layout.fillWidth: true
        Layout.preferredWidth: 1
    }
    WaveCard {
        objectName: "inputVoltage"
        page: _header.page
        title: qsTranslate("PoweWaveAnalysis", "Input Voltage")
        value: _header._reading(_header.page._shownVoltage, " V")
        accent: "#32E8C3"
        Layout.fillWidth: true
        Layout.preferredWidth: 1
    }
    WaveCard {
        objectName: "capacity"
        page: _header.page
        title: qsTranslate("PoweWaveAnalysis", "Capacity")
        value: _header._reading(_header.page._shownMah, " mAh")
        accent: PageStyle.accentGold
        Layout.fillWidth: true
        Layout.preferredWidth: 1
    }
    WaveCard {
        objectName: "elapsedTime"
        page: _header.page
        title: qsTranslate("PoweWaveAnalysis", "Elapsed Time")
        value: _header.page.formatSeconds(_header.page._mainRuntimeSec)
        accent: PageStyle.accentYellow
        Layout.fillWidth: true
        Layout.preferredWidth: 1
    }
    WaveToggle {
        page: _header.page
        Layout.fillWidth: !_header._wide
        Layout.fillHeight: true
        Layout.preferredWidth: _header._wide ? implicitWidth : 1
    }
}
