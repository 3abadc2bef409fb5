// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import GenControl.ScreenTools 1.0

import "../../customize"
import "../../customize/Format.js" as Format

/// The cursor of the paused chart: a line through one sample, a dot on each curve and a tip with its values.
Item {
    id: _hover

    property Item page
    /// The chart's plot, in the coordinates of this item.
    property rect plotArea: Qt.rect(0, 0, 0, 0)

    readonly property real _tipGap: 14

    visible: page._hoverActive

    Rectangle {
        x: Math.round(_hover.page._hoverChartX)
        y: _hover.plotArea.y
        width: 1
        height: _hover.plotArea.height
        color: "#C8D6E0"
        opacity: 0.7
    }

    Repeater {
        model: 2

        Rectangle {
            readonly property bool _isVoltage: index === 0
            readonly property real _centreY: _isVoltage ? _hover.page._hoverVoltageChartY : _hover.page._hoverCurrentChartY

            visible: (!_isVoltage || _hover.page._showVoltageCurve) && _centreY >= _hover.plotArea.y - 1
                     && _centreY <= _hover.plotArea.y + _hover.plotArea.height + 1
            x: _hover.page._hoverChartX - width / 2
            y: _centreY - height / 2
            width: 11
            height: 11
            radius: 5.5
            color: _isVoltage ? "#32E8C3" : "#ff4952"
            border.width: 2
            border.color: "#F7FBFE"
        }
    }

    Rectangle {
        id: _tip

        readonly property real _rightX: Math.max(_hover.page._hoverChartX, _hover.page._hoverMouseX) + _hover._tipGap
        readonly property bool _fitsRight: _rightX + width <= _hover.plotArea.x + _hover.plotArea.width

        objectName: "hoverTip"
        x: _fitsRight ? _rightX
                      : Math.max(0, Math.min(_hover.page._hoverChartX, _hover.page._hoverMouseX) - _hover._tipGap - width)
        y: Format.clamp(_hover.page._hoverMouseY - height - _hover._tipGap, _hover.plotArea.y + 4,
                        Math.max(_hover.plotArea.y + 4, _hover.plotArea.y + _hover.plotArea.height - height - 4))
        width: _column.implicitWidth + ScreenTools.defaultFontPixelWidth * 2
        height: _column.implicitHeight + ScreenTools.defaultFontPixelWidth * 1.4
        radius: 6
        color: _hover.page.bgColor(PageStyle.deepPanel, 0.94)
        border.width: 1
        border.color: "#3C5262"

        Column {
            id: _column

            anchors.centerIn: parent
            spacing: 2

            Repeater {
                model: [{ "text": qsTranslate("PoweWaveAnalysis", "Index: ") + _hover.page._hoverSampleIndex,
                          "color": "#8EA0AE" },
                        { "text": qsTranslate("PoweWaveAnalysis", "Time: ")
                                  + _hover.page.formatHoverSeconds(_hover.page._hoverTimeSec), "color": "#8EA0AE" },
                        { "text": qsTranslate("PoweWaveAnalysis", "Voltage: ")
                                  + Format.formatMetric(_hover.page._hoverVoltageValue, 3, " V"), "color": "#32E8C3" },
                        { "text": qsTranslate("PoweWaveAnalysis", "Current: ")
                                  + Format.formatMetric(_hover.page._hoverCurrentValue, 3, " A"), "color": "#ff4952" }]

                WaveText {
                    text: modelData.text
                    color: modelData.color
                    font.pointSize: 10
                    Accessible.role: Accessible.StaticText
                    Accessible.name: text
                }
            }
        }
    }
}
