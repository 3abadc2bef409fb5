// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.15
import QtQuick.Layouts 1.15
import Qt.labs.platform 1.1 as Platform
import GenControl.ScreenTools 1.0

import "../../customize"
import "../common"
import "WaveView.js" as WaveView

/// Keeps the recorded curve on disk and loads one as the comparison curve. A line says what became of it.
ColumnLayout {
    id: _archive

    /// Stores and loads the files, as HidLink does.
    required property QtObject link
    property string statusText: ""
    /// File that the line is about; empty for none.
    property string filePath: ""

    /// The user wants the recorded curve saved: answer with save().
    signal saveRequested()
    /// A curve was loaded; its voltages in volts.
    signal imported(var voltageSamples)

    objectName: "waveArchive"
    visible: statusText.length > 0
    spacing: ScreenTools.defaultFontPixelWidth * 0.6

    function save(voltageSamples, currentSamples, intervalSec) {
        filePath = link.archiveCurrentCurve(voltageSamples, currentSamples, intervalSec)
        statusText = filePath.length > 0 ? qsTranslate("PoweWaveAnalysis", "Saved: ") + filePath
                                         : qsTranslate("PoweWaveAnalysis", "Archive failed")
    }

    function load(path) {
        var curve = link.loadCurveArchive(path)
        if (!curve || !curve.voltageSamples || curve.voltageSamples.length === 0) {
            statusText = qsTranslate("PoweWaveAnalysis", "Import failed")
            return
        }
        imported(curve.voltageSamples)
        filePath = curve.filePath
        statusText = qsTranslate("PoweWaveAnalysis", "Imported: ") + filePath
    }

    function _chooseFile() {
        _dialogLoader.active = true
        _dialogLoader.item.open()
    }

    Row {
        visible: false
        spacing: ScreenTools.defaultFontPixelWidth

        GenButton {
            objectName: "importButton"
            text: qsTranslate("PoweWaveAnalysis", "Standard curve import")
            iconSource: "qrc:/res/importImg.svg"
            onClicked: _archive._chooseFile()
        }
        GenButton {
            objectName: "archiveButton"
            text: qsTranslate("PoweWaveAnalysis", "Current curve archive")
            iconSource: "qrc:/res/saveImg.svg"
            onClicked: _archive.saveRequested()
        }
        GenButton {
            text: qsTranslate("PoweWaveAnalysis", "Current curve Download")
            iconSource: "qrc:/res/downloadImg.svg"
        }
        GenButton {
            text: qsTranslate("PoweWaveAnalysis", "Current curve Upload")
            iconSource: "qrc:/res/uploadImg.svg"
        }
    }

    TextLink {
        objectName: "archiveStatus"
        text: _archive.statusText
        active: _archive.filePath.length > 0
        color: PageStyle.accentCyan
        font.pointSize: 10
        elide: Text.ElideMiddle
        renderType: Text.NativeRendering
        rightPadding: -PageStyle.roundingSlack
        Layout.fillWidth: true
        onClicked: _archive.link.revealPath(_archive.filePath)
    }

    // A native dialog is expensive: created when it is first wanted.
    Loader {
        id: _dialogLoader

        active: false
        sourceComponent: Platform.FileDialog {
            title: qsTranslate("PoweWaveAnalysis", "Select curve archive")
            nameFilters: ["Curve archive (*.json)"]
            folder: Platform.StandardPaths.writableLocation(Platform.StandardPaths.DocumentsLocation) + "/Quorvel/Curves"
            onAccepted: _archive.load(WaveView.localPath(file))
        }
    }
}
