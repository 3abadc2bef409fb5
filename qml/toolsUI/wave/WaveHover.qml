// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.15
import GenControl.ScreenTools 1.0

import "../../customize"
import "../../customize/Format.js" as Format
import "WaveView.js" as WaveView

/// The cursor of the paused chart: a line through one sample, a dot on each curve and a tip with its values.
/// All are created when the cursor is first shown.
Loader {
    id: _hover

    required property WaveCursor cursor
    /// The chart's plot, in the coordinates of this item.
    required property rect plotArea
    property bool showVoltage: true
    /// Opacity of the window's background, 0 to 1; the fills are multiplied with it.
    property real backgroundOpacity: 1

    readonly property real _tipGap: 14
    readonly property real _right: plotArea.x + plotArea.width
    readonly property real _bottom: plotArea.y + plotArea.height
    readonly property var _lines: [
        { text: qsTranslate("PoweWaveAnalysis", "Index: ") + cursor.sampleIndex, color: PageStyle.waveText },
        { text: qsTranslate("PoweWaveAnalysis", "Time: ") + Format.formatSeconds(cursor.timeSec, WaveView.unknownTime),
          color: PageStyle.waveText },
        { text: qsTranslate("PoweWaveAnalysis", "Voltage: ") + Format.formatMetric(cursor.voltage, 3, " V"),
          color: PageStyle.waveVoltage },
        { text: qsTranslate("PoweWaveAnalysis", "Current: ") + Format.formatMetric(cursor.current, 3, " A"),
          color: PageStyle.waveCurrent }
    ]

    active: false
    sourceComponent: Item {
        visible: _hover.cursor.active

        Rectangle {
            x: Math.round(_hover.cursor.chartX)
            y: _hover.plotArea.y
            width: 1
            height: _hover.plotArea.height
            color: PageStyle.waveCursor
            opacity: 0.7
        }

        Repeater {
            model: 2

            Rectangle {
                required property int index
                readonly property bool _isVoltage: index === 0
                readonly property real _centreY: _isVoltage ? _hover.cursor.voltageY : _hover.cursor.currentY

                visible: (!_isVoltage || _hover.showVoltage) && _centreY >= _hover.plotArea.y - 1
                         && _centreY <= _hover._bottom + 1
                x: _hover.cursor.chartX - width / 2
                y: _centreY - height / 2
                width: 11
                height: 11
                radius: 5.5
                color: _isVoltage ? PageStyle.waveVoltage : PageStyle.waveCurrent
                border.width: 2
                border.color: PageStyle.valueText
            }
        }

        Rectangle {
            id: _tip

            readonly property real _rightX: Math.max(_hover.cursor.chartX, _hover.cursor.mouseX) + _hover._tipGap
            readonly property real _leftX: Math.min(_hover.cursor.chartX, _hover.cursor.mouseX) - _hover._tipGap - width
            readonly property real _highest: _hover.plotArea.y + 4

            objectName: "hoverTip"
            x: _rightX + width <= _hover._right ? _rightX : Math.max(0, _leftX)
            y: Format.clamp(_hover.cursor.mouseY - height - _hover._tipGap, _highest,
                            Math.max(_highest, _hover._bottom - height - 4))
            width: _column.implicitWidth + ScreenTools.defaultFontPixelWidth * 2
            height: _column.implicitHeight + ScreenTools.defaultFontPixelWidth * 1.4
            radius: 6
            color: Format.withAlpha(PageStyle.deepPanel, 0.94 * _hover.backgroundOpacity)
            border.width: 1
            border.color: PageStyle.waveTipBorder

            Column {
                id: _column

                anchors.centerIn: parent
                spacing: 2

                Repeater {
                    // The number of lines, not the lines: new texts then need no new items.
                    model: _hover._lines.length

                    WaveText {
                        required property int index

                        text: _hover._lines[index].text
                        color: _hover._lines[index].color
                        font.pointSize: 10
                        Accessible.role: Accessible.StaticText
                        Accessible.name: text
                    }
                }
            }
        }
    }

    Connections {
        target: _hover.cursor
        function onActiveChanged() { _hover.active = true }
    }
}
