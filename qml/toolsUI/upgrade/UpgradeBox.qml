// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import QtQuick.Window 2.12
import CUpgradeControl 1.0

/// What the update dialog shows: its question, then the progress of the download. The dialog holds the state
/// and the texts.
DialogBox {
    id: _root

    property Item dialog: null
    property alias ignored: _question.ignored

    objectName: "box"
    width: Math.min(dialog._dfw * 54, Screen.width)
    height: Math.min(dialog._dfw * 27, Screen.height)
    title: dialog._title
    pointSize: dialog._pointSize

    QuestionView {
        id: _question

        anchors.fill: parent
        anchors.margins: 12
        pointSize: _root.pointSize
        visible: _root.dialog._status === _root.dialog._questionView
        focus: visible
        headline: _root.dialog._headline
        details: _root.dialog._details()
        checking: _root.dialog._checking
        canUpgrade: _root.dialog._hasUpdate && !_root.dialog._checking
        canIgnore: (!_root.dialog._checking && _root.dialog._hasUpdate)
                   || (_root.dialog._manualMode && _root.dialog._latestVersionRaw.length > 0)
        ignoreText: _root.dialog._ignoreText
        cancelText: _root.dialog._cancelText
        upgradeText: _root.dialog._upgradeText
        onIgnoredChanged: {
            if (_root.dialog.visible && !_root.dialog._loadingIgnoreState)
                _root.dialog.saveIgnoreVersionState()
        }
        onCanceled: _root.dialog._cancelQuestion()
        onAccepted: _root.dialog._startUpgrade()
    }
    ProgressView {
        anchors.fill: parent
        anchors.margins: 12
        pointSize: _root.pointSize
        visible: _root.dialog._status === _root.dialog._progressView
        focus: visible
        message: _root.dialog._progressText()
        progress: _root.dialog._progress
        failed: _root.dialog._upgradeStatus === CUpgradeControl.UPC_NetworkError
                || _root.dialog._upgradeStatus === CUpgradeControl.UPC_Access
        finished: _root.dialog._finished
        dismissText: finished ? _root.dialog._cancelText : _root.dialog._btnText
        installText: _root.dialog._btnText
        onDismissed: _root.dialog.close()
        onInstallRequested: _root.dialog._install()
    }
}
