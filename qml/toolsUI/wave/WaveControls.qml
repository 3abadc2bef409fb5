// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.15
import GenControl.ScreenTools 1.0

import "../../customize"

/// What the chart shows and how it plays; its groups wrap onto further lines where the page is narrow.
WavePanel {
    id: _controls

    property bool running: true
    property bool hasSamples: false
    /// Samples that a step of the paused view moves it by.
    property int stepSamples: 1
    property alias showVoltage: _voltageSwitch.checked
    property alias showStandard: _standardSwitch.checked
    property alias autoScale: _autoScaleSwitch.checked
    property alias rangeIndex: _range.currentIndex

    signal playbackToggled()
    /// -1 for older samples, +1 for newer ones.
    signal viewMoveRequested(int direction)
    signal clearRequested()
    signal voltageToggled(bool shown)
    signal standardToggled(bool shown)
    signal autoScaleToggled(bool enabled)
    signal rangeChosen(int index)

    readonly property real _dfw: ScreenTools.defaultFontPixelWidth
    readonly property real _groupHeight: 32
    readonly property bool _canMove: !running && hasSamples

    implicitHeight: _flow.implicitHeight + _dfw * 1.6

    // What a step button does, in words that the interface has: "Index: -20".
    function _stepName(sign) {
        return qsTranslate("PoweWaveAnalysis", "Index: ") + sign + stepSamples
    }

    Flow {
        id: _flow

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        anchors.margins: _controls._dfw * 1.2
        spacing: _controls._dfw * 1.6

        Row {
            height: _controls._groupHeight
            spacing: _controls._dfw * 0.6

            GenButton {
                width: 40
                height: _controls._groupHeight
                defaultBorderColor: PageStyle.panelBorder
                text: "<"
                enabled: _controls._canMove
                Accessible.name: _controls._stepName("-")
                onClicked: _controls.viewMoveRequested(-1)
            }
            GenButton {
                objectName: "playback"
                width: 104
                height: _controls._groupHeight
                primary: true
                defaultBorderColor: PageStyle.panelBorder
                text: _controls.running ? qsTranslate("PoweWaveAnalysis", "Pause")
                                        : qsTranslate("PoweWaveAnalysis", "Play")
                iconSource: _controls.running ? "qrc:/res/puse.svg" : "qrc:/res/play.svg"
                onClicked: _controls.playbackToggled()
            }
            GenButton {
                width: 40
                height: _controls._groupHeight
                defaultBorderColor: PageStyle.panelBorder
                text: ">"
                enabled: _controls._canMove
                Accessible.name: _controls._stepName("+")
                onClicked: _controls.viewMoveRequested(1)
            }
            GenButton {
                width: 96
                height: _controls._groupHeight
                defaultBorderColor: PageStyle.panelBorder
                text: qsTranslate("PoweWaveAnalysis", "Clear")
                iconSource: "qrc:/res/clearImg.svg"
                onClicked: _controls.clearRequested()
            }
        }
        WaveSwitch {
            id: _voltageSwitch

            objectName: "voltageSwitch"
            height: _controls._groupHeight
            text: qsTranslate("PoweWaveAnalysis", "Voltage Curves")
            onToggled: function(checked) { _controls.voltageToggled(checked) }
        }
        WaveSwitch {
            id: _standardSwitch

            objectName: "standardSwitch"
            height: _controls._groupHeight
            text: qsTranslate("PoweWaveAnalysis", "Standard Curves")
            onToggled: function(checked) { _controls.standardToggled(checked) }
        }
        WaveSwitch {
            id: _autoScaleSwitch

            objectName: "autoScaleSwitch"
            height: _controls._groupHeight
            text: qsTranslate("PoweWaveAnalysis", "Auto Scale")
            onToggled: function(checked) { _controls.autoScaleToggled(checked) }
        }
        Row {
            height: _controls._groupHeight
            spacing: _controls._dfw * 0.8
            visible: !_controls.autoScale

            WaveText {
                id: _rangeLabel

                anchors.verticalCenter: parent.verticalCenter
                text: qsTranslate("PoweWaveAnalysis", "Current Range")
                color: PageStyle.titleText
                font.pointSize: 10
            }
            GenCombobox {
                id: _range

                objectName: "currentRange"
                width: 84
                height: _controls._groupHeight
                model: ["0.7A", "1.4A", "3.5A", "7.0A"]
                Accessible.name: _rangeLabel.text + " " + displayText
                onActivated: function(index) { _controls.rangeChosen(index) }
            }
        }
        WaveLegend {
            height: _controls._groupHeight
        }
    }
}
