// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.15
import GenControl.ScreenTools 1.0

import "../../customize"

/// The colours of the three curves.
Row {
    id: _legend

    readonly property var _curves: [
        { text: qsTranslate("PoweWaveAnalysis", "Real-time Voltage"), color: PageStyle.waveLiveVoltage, dashes: 1 },
        { text: qsTranslate("PoweWaveAnalysis", "Standard Voltage"), color: PageStyle.waveStandard, dashes: 3 },
        { text: qsTranslate("PoweWaveAnalysis", "Output Current"), color: PageStyle.waveCurrent, dashes: 1 }
    ]

    spacing: ScreenTools.defaultFontPixelWidth * 1.6

    Repeater {
        model: _legend._curves.length

        Row {
            id: _entry

            required property int index
            readonly property int _dashCount: _legend._curves[index].dashes

            anchors.verticalCenter: parent.verticalCenter
            spacing: 6

            Row {
                id: _line

                anchors.verticalCenter: parent.verticalCenter
                spacing: 3

                Repeater {
                    model: _entry._dashCount

                    Rectangle {
                        width: (20 - _line.spacing * (_entry._dashCount - 1)) / _entry._dashCount
                        height: 3
                        radius: 1.5
                        color: _legend._curves[_entry.index].color
                    }
                }
            }
            WaveText {
                anchors.verticalCenter: parent.verticalCenter
                text: _legend._curves[_entry.index].text
                font.pointSize: 9
            }
        }
    }
}
