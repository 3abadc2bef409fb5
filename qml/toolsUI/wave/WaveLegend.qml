// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import GenControl.ScreenTools 1.0

import "../../customize"

/// The colours of the three curves.
Row {
    spacing: ScreenTools.defaultFontPixelWidth * 1.6

    Repeater {
        model: [{ "text": QT_TRANSLATE_NOOP("PoweWaveAnalysis", "Real-time Voltage"), "color": "cyan", "dashes": 1 },
                { "text": QT_TRANSLATE_NOOP("PoweWaveAnalysis", "Standard Voltage"), "color": "#3A7AFE", "dashes": 3 },
                { "text": QT_TRANSLATE_NOOP("PoweWaveAnalysis", "Output Current"), "color": "#ff4952", "dashes": 1 }]

        Row {
            anchors.verticalCenter: parent.verticalCenter
            spacing: 6

            Row {
                id: _line

                readonly property int _dashCount: modelData.dashes
                readonly property color _color: modelData.color

                anchors.verticalCenter: parent.verticalCenter
                spacing: 3

                Repeater {
                    model: _line._dashCount

                    Rectangle {
                        width: (20 - _line.spacing * (_line._dashCount - 1)) / _line._dashCount
                        height: 3
                        radius: 1.5
                        color: _line._color
                    }
                }
            }
            WaveText {
                anchors.verticalCenter: parent.verticalCenter
                text: qsTranslate("PoweWaveAnalysis", modelData.text)
                font.pointSize: 9
            }
        }
    }
}
