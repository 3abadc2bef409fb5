// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import QtQuick.Window 2.12

/// The box of the update dialog: its question, or the progress of the download.
DialogBox {
    id: _root

    /// Width of a character in pixels.
    property real unit: 8
    /// Shows the progress instead of the question.
    property bool downloading: false
    property alias headline: _question.headline
    property alias details: _question.details
    property alias checking: _question.checking
    property alias canUpgrade: _question.canUpgrade
    property alias canIgnore: _question.canIgnore
    property alias ignored: _question.ignored
    property alias ignoreText: _question.ignoreText
    property alias upgradeText: _question.upgradeText
    property string cancelText
    property alias progressText: _download.message
    /// 0 to 100, negative without a known end.
    property alias progress: _download.progress
    property alias failed: _download.failed
    property alias finished: _download.finished
    property string progressButtonText

    signal ignoreToggled()
    signal canceled()
    signal accepted()
    signal dismissed()
    signal installRequested()

    objectName: "box"
    width: Math.min(unit * 54, Screen.width)
    height: Math.min(unit * 27, Screen.height)

    QuestionView {
        id: _question

        anchors.fill: parent
        anchors.margins: 12
        pointSize: _root.pointSize
        visible: !_root.downloading
        focus: visible
        cancelText: _root.cancelText
        onIgnoredChanged: _root.ignoreToggled()
        onCanceled: _root.canceled()
        onAccepted: _root.accepted()
    }
    ProgressView {
        id: _download

        anchors.fill: parent
        anchors.margins: 12
        pointSize: _root.pointSize
        visible: _root.downloading
        focus: visible
        dismissText: finished ? _root.cancelText : _root.progressButtonText
        installText: _root.progressButtonText
        onDismissed: _root.dismissed()
        onInstallRequested: _root.installRequested()
    }
}
