// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import QtQuick.Layouts 1.12
import Qt.labs.platform 1.1 as Platform
import GenControl.ScreenTools 1.0

import "../../customize"
import "WaveView.js" as WaveView

/// Keeps the recorded curve on disk and loads one as the comparison curve.
ColumnLayout {
    id: _archive

    property Item page

    objectName: "waveArchive"
    visible: page._archiveStatusText.length > 0
    spacing: ScreenTools.defaultFontPixelWidth * 0.6

    function chooseCurve() {
        _dialogLoader.active = true
        _dialogLoader.item.open()
    }

    function importCurve(filePath) {
        var curve = page.hidLink.loadCurveArchive(filePath)
        if (!curve || !curve.voltageSamples || curve.voltageSamples.length === 0) {
            page._archiveStatusText = qsTranslate("PoweWaveAnalysis", "Import failed")
            return
        }
        page.useStandardSamples(curve.voltageSamples)
        page._loadedArchivePath = curve.filePath
        page._archiveStatusText = qsTranslate("PoweWaveAnalysis", "Imported: ") + curve.filePath
    }

    function archiveCurve() {
        var path = page.hidLink.archiveCurrentCurve(page._voltageSamples, page._currentSamples, page._sampleIntervalSec)
        page._loadedArchivePath = path
        page._archiveStatusText = path.length > 0 ? qsTranslate("PoweWaveAnalysis", "Saved: ") + path
                                                  : qsTranslate("PoweWaveAnalysis", "Archive failed")
    }

    function revealArchive() {
        if (page._loadedArchivePath.length > 0)
            page.hidLink.revealPath(page._loadedArchivePath)
    }

    Row {
        visible: false
        spacing: ScreenTools.defaultFontPixelWidth

        GenButton {
            objectName: "importButton"
            text: qsTranslate("PoweWaveAnalysis", "Standard curve import")
            iconSource: "qrc:/res/importImg.svg"
            onClicked: _archive.chooseCurve()
        }
        GenButton {
            objectName: "archiveButton"
            text: qsTranslate("PoweWaveAnalysis", "Current curve archive")
            iconSource: "qrc:/res/saveImg.svg"
            onClicked: _archive.archiveCurve()
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

    WaveText {
        id: _status

        objectName: "archiveStatus"
        text: _archive.page._archiveStatusText
        color: PageStyle.accentCyan
        font.pointSize: 10
        font.underline: true
        elide: Text.ElideMiddle
        rightPadding: -PageStyle.roundingSlack
        activeFocusOnTab: true
        Layout.fillWidth: true

        Accessible.role: Accessible.Link
        Accessible.name: text
        Accessible.onPressAction: _archive.revealArchive()

        Keys.onReturnPressed: _archive.revealArchive()
        Keys.onEnterPressed: _archive.revealArchive()
        Keys.onSpacePressed: _archive.revealArchive()

        FocusRing {
            shown: _status.activeFocus
        }

        MouseArea {
            anchors.fill: parent
            cursorShape: _archive.page._loadedArchivePath.length > 0 ? Qt.PointingHandCursor : Qt.ArrowCursor
            onClicked: _archive.revealArchive()
        }
    }

    // Native dialogs are expensive: only made for whoever asks.
    Loader {
        id: _dialogLoader

        active: false
        sourceComponent: Platform.FileDialog {
            title: qsTranslate("PoweWaveAnalysis", "Select curve archive")
            nameFilters: ["Curve archive (*.json)"]
            folder: Platform.StandardPaths.writableLocation(Platform.StandardPaths.DocumentsLocation) + "/Quorvel/Curves"
            onAccepted: _archive.importCurve(WaveView.localPath(file))
        }
    }
}
