// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import QtQuick.Window 2.12
import CUpgradeControl 1.0
import GenControl 1.0
import GenControl.ScreenTools 1.0
import GenToolbox 1.0

import "../customize"

/// The modal dialog of an application update: asks first, then shows the download. Covers the main window.
///
/// It belongs to the current operation of CUpgradeControl, a check or a download, and ignores what others
/// report. An operation ends with its dialog: closing the dialog abandons it.
Rectangle {
    id: _rootControl

    /// 0 the question, 1 the download.
    property int _status: 0
    /// The last CUpgradeControl.UPC_Status.
    property int _upgradeStatus: 0
    readonly property bool _finished: _upgradeStatus === CUpgradeControl.UPC_Finished
    readonly property string _btnText: _finished ? qsTr("install") : qsTr("Cancel upgrade")
    property string _downloadUrl: ""
    property string _updateMsg: ""
    property string _currentVer: ""
    property string _latestVer: ""
    property string _checkMessage: ""
    property string _latestVersionRaw: ""
    property bool _manualMode: false
    property bool _checking: false
    property bool _hasUpdate: true
    property bool _loadingIgnoreState: false

    /// 0 to 100, negative without a known end.
    property real _progress: 0
    /// Where the keyboard was when the dialog opened.
    property Item _focusBefore: null
    /// What the dialog shows. Made when it is first opened: most programs end without, and should start at once.
    property QtObject _box: null

    readonly property string _title: qsTr("Quorvel upgrade")
    readonly property string _headline: _checking ? qsTr("Checking for updates, please wait...")
        : _hasUpdate ? qsTr("A new software version has been detected. Do you want to upgrade now?")
                     : qsTr("No update is available.")
    readonly property string _ignoreText: qsTr("Ignore this version")
    readonly property string _cancelText: qsTr("Cancel")
    readonly property string _upgradeText: qsTr("Upgrade")
    readonly property int _questionView: 0
    readonly property int _progressView: 1
    readonly property real _dfw: ScreenTools.defaultFontPixelWidth
    readonly property real _pointSize: Math.max(9, ScreenTools.defaultFontPointSize)

    visible: false
    z: GenControl.zOrderTopMost
    color: PageStyle.dialogShade
    anchors.fill: parent

    Accessible.role: Accessible.Dialog
    Accessible.name: _title

    Keys.onEscapePressed: close()
    // Keeps the keyboard in the dialog, as the area below does with the mouse.
    Keys.onPressed: event.accepted = true

    onVisibleChanged: {
        if (visible) {
            _focusBefore = Window.window ? Window.window.activeFocusItem : null
            _box.forceActiveFocus()
        } else if (_focusBefore) {
            _focusBefore.forceActiveFocus()
            _focusBefore = null
        }
    }

    function show(url, message) {
        _openQuestion(false, false, true)
        _latestVersionRaw = ""
        _setIgnored(false)
        _downloadUrl = url
        _currentVer = ""
        _updateMsg = "更新内容:\n" + message
        visible = true
    }

    function show2(version, message) {
        _openQuestion(false, false, true)
        _latestVersionRaw = version.trim()
        _setIgnored(isIgnoredVersion(_latestVersionRaw))
        _currentVer = _latestVer = "最新版本:" + version + "\n"
        _updateMsg = "更新内容:" + message + "\n"
        visible = true
    }

    function showChecking() {
        _openQuestion(true, true, false)
        _latestVersionRaw = ""
        _setIgnored(false)
        _downloadUrl = ""
        _currentVer = qsTr("Current version: ") + applicationVersion + "\n"
        _latestVer = ""
        _updateMsg = ""
        _checkMessage = qsTr("Checking for updates, please wait...")
        visible = true
    }

    function showManualResult(hasUpdate, currentVersion, latestVersion, desc, downloadUrl, message) {
        _openQuestion(true, false, hasUpdate)
        _latestVersionRaw = latestVersion.trim()
        _setIgnored(isIgnoredVersion(_latestVersionRaw))
        _downloadUrl = downloadUrl
        _currentVer = qsTr("Current version: ") + currentVersion + "\n"
        _latestVer = latestVersion.length > 0 ? qsTr("Latest version: ") + latestVersion + "\n" : ""
        _updateMsg = desc.length > 0 ? qsTr("Update content: ") + desc + "\n" : ""
        _checkMessage = message.length > 0 ? message
                        : hasUpdate ? qsTr("A new version is available.")
                                    : qsTr("You are already using the latest version.")
        visible = true
    }

    function close() {
        visible = false
        CUpgradeControl.abandonOperation()
    }

    function isIgnoredVersion(version) {
        return version.length > 0
                && GenToolbox.genSettings.sValue("ignoredVersion", "", "upgrade").trim() === version
    }

    function saveIgnoreVersionState() {
        if (_latestVersionRaw.length > 0)
            GenToolbox.genSettings.setValue("ignoredVersion", _box.ignored ? _latestVersionRaw.trim() : "",
                                            "upgrade")
    }

    function _openQuestion(manual, checking, hasUpdate) {
        CUpgradeControl.abandonOperation()
        _status = _questionView
        _upgradeStatus = CUpgradeControl.UPC_Unknow
        _progress = 0
        _manualMode = manual
        _checking = checking
        _hasUpdate = hasUpdate
        if (!_box)
            _makeBox()
        _box.recentre()
    }

    function _makeBox() {
        _box = Qt.createComponent("upgrade/UpgradeBox.qml").createObject(_rootControl, {
            unit: Qt.binding(function() { return _dfw }),
            pointSize: Qt.binding(function() { return _pointSize }),
            title: Qt.binding(function() { return _title }),
            downloading: Qt.binding(function() { return _status === _progressView }),
            headline: Qt.binding(function() { return _headline }),
            details: Qt.binding(_details),
            checking: Qt.binding(function() { return _checking }),
            canUpgrade: Qt.binding(function() { return _hasUpdate && !_checking }),
            canIgnore: Qt.binding(_canIgnore),
            ignoreText: Qt.binding(function() { return _ignoreText }),
            cancelText: Qt.binding(function() { return _cancelText }),
            upgradeText: Qt.binding(function() { return _upgradeText }),
            progressText: Qt.binding(_progressText),
            progress: Qt.binding(function() { return _progress }),
            failed: Qt.binding(_failed),
            finished: Qt.binding(function() { return _finished }),
            progressButtonText: Qt.binding(function() { return _btnText })
        })
        _box.ignoreToggled.connect(_ignoreToggled)
        _box.canceled.connect(_cancelQuestion)
        _box.accepted.connect(_startUpgrade)
        _box.dismissed.connect(close)
        _box.installRequested.connect(_install)
    }

    function _canIgnore() {
        return (!_checking && _hasUpdate) || (_manualMode && _latestVersionRaw.length > 0)
    }

    function _failed() {
        return _upgradeStatus === CUpgradeControl.UPC_NetworkError || _upgradeStatus === CUpgradeControl.UPC_Access
    }

    function _ignoreToggled() {
        if (visible && !_loadingIgnoreState)
            saveIgnoreVersionState()
    }

    function _setIgnored(ignored) {
        _loadingIgnoreState = true
        _box.ignored = ignored
        _loadingIgnoreState = false
    }

    function _cancelQuestion() {
        saveIgnoreVersionState()
        close()
    }

    function _startUpgrade() {
        saveIgnoreVersionState()
        _status = _progressView
        CUpgradeControl.startUpdate(_downloadUrl)
    }

    function _install() {
        CUpgradeControl.startInstall()
        // An installer that is refused at the last moment is reported here, in the dialog.
        if (_finished)
            close()
    }

    function _isInside(item) {
        while (item && item !== _rootControl)
            item = item.parent
        return item === _rootControl
    }

    // Tab goes round in the dialog: from behind its last control on to its first.
    function _keepFocus(item) {
        var candidate = item
        for (var steps = 0; candidate && steps < 200 && !_isInside(candidate); ++steps)
            candidate = candidate.nextItemInFocusChain(true)
        if (candidate && candidate !== item && _isInside(candidate))
            candidate.forceActiveFocus(Qt.TabFocusReason)
    }

    // What the message area tells in the question view.
    function _details() {
        return _manualMode ? _checkMessage + "\n\n" + _currentVer + _latestVer + _updateMsg : _currentVer + _updateMsg
    }

    function _progressText() {
        switch (_upgradeStatus) {
        case CUpgradeControl.UPC_Unknow:
            return qsTr("Connect to Server...")
        case CUpgradeControl.UPC_Download:
            return qsTr("download file...")
        case CUpgradeControl.UPC_Finished:
            return qsTr("download finished")
        case CUpgradeControl.UPC_NetworkError:
        case CUpgradeControl.UPC_Access:
            return qsTr("The update failed, please check whether the network is normal.")
        default:
            return qsTr("Connect to Server...", "连接服务器...")
        }
    }

    // Nothing behind the dialog can be used while it is shown.
    MouseArea {
        anchors.fill: parent
        acceptedButtons: Qt.LeftButton | Qt.RightButton
        hoverEnabled: true
        onWheel: wheel.accepted = true
    }

    Connections {
        target: _rootControl.visible ? _rootControl.Window.window : null
        function onActiveFocusItemChanged() { _rootControl._keepFocus(_rootControl.Window.window.activeFocusItem) }
    }
    Connections {
        target: CUpgradeControl
        function onUpdateStatus(status) {
            if (!CUpgradeControl.reportsCurrentOperation())
                return
            _rootControl._upgradeStatus = status
            if (status === CUpgradeControl.UPC_Canceled)
                _rootControl.close()
        }
        function onEmitdownloadProgress(progress) {
            if (CUpgradeControl.reportsCurrentOperation())
                _rootControl._progress = Number(progress) * 100
        }
    }
}
