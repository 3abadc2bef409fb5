// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import GenControl.ScreenTools 1.0

import "../../customize"
import "WaveView.js" as WaveView

/// What the chart shows and how it plays; its groups wrap onto further lines where the page is narrow.
WavePanel {
    id: _controls

    readonly property real _dfw: ScreenTools.defaultFontPixelWidth
    readonly property real _groupHeight: 32
    readonly property bool _canMove: !page._chartRunning && page._sampleCount > 0

    implicitHeight: _flow.implicitHeight + _dfw * 1.6
    // What a step button does, in words that the interface has: "Index: -20".
    function _stepName(sign) {
        return qsTranslate("PoweWaveAnalysis", "Index: ") + sign + WaveView.cursorStep(page._viewSampleCount)
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
                height: parent.height
                defaultBorderColor: PageStyle.panelBorder
                text: "<"
                enabled: _controls._canMove
                Accessible.name: _controls._stepName("-")
                onClicked: _controls.page.movePausedCursor(-1)
            }
            GenButton {
                objectName: "playback"
                width: 104
                height: parent.height
                primary: true
                defaultBorderColor: PageStyle.panelBorder
                text: _controls.page._chartRunning ? qsTranslate("PoweWaveAnalysis", "Pause")
                                                   : qsTranslate("PoweWaveAnalysis", "Play")
                iconSource: _controls.page._chartRunning ? "qrc:/res/puse.svg" : "qrc:/res/play.svg"
                onClicked: _controls.page.togglePlayback()
            }
            GenButton {
                width: 40
                height: parent.height
                defaultBorderColor: PageStyle.panelBorder
                text: ">"
                enabled: _controls._canMove
                Accessible.name: _controls._stepName("+")
                onClicked: _controls.page.movePausedCursor(1)
            }
            GenButton {
                width: 96
                height: parent.height
                defaultBorderColor: PageStyle.panelBorder
                text: qsTranslate("PoweWaveAnalysis", "Clear")
                iconSource: "qrc:/res/clearImg.svg"
                onClicked: _controls.page.clearSamples()
            }
        }
        WaveSwitch {
            objectName: "voltageSwitch"
            height: _controls._groupHeight
            text: qsTranslate("PoweWaveAnalysis", "Voltage Curves")
            checked: _controls.page._showVoltageCurve
            onToggled: {
                _controls.page._showVoltageCurve = checked
                _controls.page.saveViewSetting("showVoltageCurve", checked)
            }
        }
        WaveSwitch {
            objectName: "standardSwitch"
            height: _controls._groupHeight
            text: qsTranslate("PoweWaveAnalysis", "Standard Curves")
            checked: _controls.page._showStandardCurve
            onToggled: {
                _controls.page._showStandardCurve = checked
                _controls.page.saveViewSetting("showStandardCurve", checked)
                _controls.page.rebuildSeries()
            }
        }
        WaveSwitch {
            objectName: "autoScaleSwitch"
            height: _controls._groupHeight
            text: qsTranslate("PoweWaveAnalysis", "Auto Scale")
            checked: _controls.page._autoScaleAxis
            onToggled: {
                _controls.page._autoScaleAxis = checked
                _controls.page.saveViewSetting("autoScaleAxis", checked)
                _controls.page.rebuildSeries()
            }
        }
        Row {
            height: _controls._groupHeight
            spacing: _controls._dfw * 0.8
            visible: !_controls.page._autoScaleAxis

            WaveText {
                id: _rangeLabel

                anchors.verticalCenter: parent.verticalCenter
                text: qsTranslate("PoweWaveAnalysis", "Current Range")
                color: PageStyle.titleText
                font.pointSize: 10
            }
            GenCombobox {
                objectName: "currentRange"
                width: 84
                height: parent.height
                model: ["0.7A", "1.4A", "3.5A", "7.0A"]
                currentIndex: _controls.page._currentRangeIndex
                Accessible.name: _rangeLabel.text + " " + displayText
                onActivated: {
                    _controls.page._currentRangeIndex = index
                    _controls.page._currentAxisMax = _controls.page._currentRangeOptions[index]
                    _controls.page.saveViewSetting("currentRangeIndex", index)
                    _controls.page.rebuildSeries()
                }
            }
        }
        WaveLegend {
            height: _controls._groupHeight
        }
    }
}
