// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import QtQuick.Controls 2.12
import QtQuick.Layouts 1.12
import QtQuick.Window 2.12
import CUpgradeControl 1.0
import GenControl 1.0
import GenControl.ScreenTools 1.0
import GenToolbox 1.0
import Instrument 1.0

import "./customize"
import "./customize/Format.js" as Format
import "./toolsUI"
import "./ui"
import "./ui/WindowGeometry.js" as WindowGeometry

ApplicationWindow {
    id: mainwindows

    property real _margin: _dfw * 2
    property real _fieldWidth: _dfw * 0.3
    property real _maxTitleHeight: _dfw * 5
    property real _toolBtnSize: _dfw * 3
    property real mainPageItemWidth: 10 * _dfw
    property real mainPageFontSize: 1.2 * ScreenTools.defaultFontPointSize
    property real aboutFontSize: 1.4 * ScreenTools.defaultFontPointSize
    property real dpScale: 1
    readonly property real pixelPerDp: Screen.pixelDensity * 0.12
    property real radiusValue: _dfw * 1
    property real frameMargin: visibility === Window.Maximized || visibility === Window.FullScreen ? 0 : _dfw * 1

    property bool resizingWindow: false
    property real resizeBorderWidth: 8
    property point resizeStartMousePos: Qt.point(0, 0)
    property point resizeStartWindowPos: Qt.point(0, 0)
    property size resizeStartWindowSize: Qt.size(0, 0)
    property real resizeFixedRight: 0
    property real resizeFixedBottom: 0
    property bool pendingResizeValid: false
    property real pendingResizeX: 0
    property real pendingResizeY: 0
    property real pendingResizeWidth: 0
    property real pendingResizeHeight: 0
    property bool pendingResizeLeft: false
    property bool pendingResizeTop: false
    property bool pendingResizeRight: false
    property bool pendingResizeBottom: false

    property alias _suppressUiControlSync: _screenSync.suppressed
    property bool _loadInitialPage: false
    property bool _loadWindowEffects: false
    property alias _restoringWindowGeometry: _placement.restoring
    property alias _placed: _placement.placed
    property bool leftMenuCollapsed: true
    property bool alwaysOnTop: false
    property real _leftMenuExpandedWidth: _dfw * 33
    property real _leftMenuCollapsedWidth: _dfw * 8
    property real _leftMenuWidth: leftMenuCollapsed ? _leftMenuCollapsedWidth : _leftMenuExpandedWidth
    property real windowBackgroundOpacity: Format.clamp(
        GenToolbox.genSettings.dValue("windowBackgroundOpacity", 0.92, "sysSettings"), 0, 1)
    readonly property real windowBackdropShieldOpacity: Math.max(0, Math.min(0.16, (0.42 - windowBackgroundOpacity)
                                                                             * 0.36))
    readonly property int _hid10ScreenMainPower: Instrument.MainSupplyScreen
    readonly property int _hid10ScreenUsb: Instrument.TypeCScreen
    readonly property int _hid10ScreenWave: Instrument.WaveScreen
    readonly property int _hid10ScreenGauge: Instrument.MultimeterScreen

    readonly property real _dfw: ScreenTools.defaultFontPixelWidth
    readonly property real _titleBarHeight: _dfw * 6
    // The hints give a frameless window the system menu and let the task bar minimise it.
    readonly property int _baseFlags: Qt.Window | Qt.FramelessWindowHint | Qt.WindowSystemMenuHint
                                      | Qt.WindowMinimizeButtonHint

    // Shown once the geometry is restored: a position given later loses against the window manager's.
    visible: false
    title: qsTr("Quorvel")
    flags: _baseFlags
    color: "transparent"
    minimumWidth: _dfw * (ScreenTools.isCompactDesktop ? 78 : 90)
    minimumHeight: _dfw * (ScreenTools.isCompactDesktop ? 54 : 62)

    // Controls take these from their style.
    palette.button: PageStyle.sliderTone
    palette.mid: PageStyle.sliderDisabled
    palette.window: PageStyle.sliderHandle

    Behavior on _leftMenuWidth {
        NumberAnimation { duration: 220; easing.type: Easing.OutCubic }
    }

    onXChanged: scheduleSaveWindowGeometry()
    onYChanged: scheduleSaveWindowGeometry()
    onWidthChanged: scheduleSaveWindowGeometry()
    onHeightChanged: scheduleSaveWindowGeometry()
    onClosing: saveWindowGeometry()
    onActiveChanged: {
        if (active)
            _placed = true
    }

    function dp(x) {
        return x * pixelPerDp * dpScale
    }

    function beginResize() {
        resizingWindow = true
        resizeStartMousePos = Qt.point(ScreenTools.mouseX(), ScreenTools.mouseY())
        resizeStartWindowPos = Qt.point(x, y)
        resizeStartWindowSize = Qt.size(width, height)
        resizeFixedRight = x + width
        resizeFixedBottom = y + height
    }

    function resizeWindow(resizeLeft, resizeTop, resizeRight, resizeBottom) {
        var start = Qt.rect(resizeStartWindowPos.x, resizeStartWindowPos.y, resizeStartWindowSize.width,
                            resizeStartWindowSize.height)
        var geometry = WindowGeometry.resized(start, Qt.point(resizeFixedRight, resizeFixedBottom),
                                              Qt.size(minimumWidth, minimumHeight),
                                              Qt.point(ScreenTools.mouseX(), ScreenTools.mouseY()), resizeLeft,
                                              resizeTop, resizeRight, resizeBottom)
        queueResize(geometry.x, geometry.y, geometry.width, geometry.height, resizeLeft, resizeTop, resizeRight,
                    resizeBottom)
    }

    function queueResize(newX, newY, newWidth, newHeight, resizeLeft, resizeTop, resizeRight, resizeBottom) {
        pendingResizeX = newX
        pendingResizeY = newY
        pendingResizeWidth = newWidth
        pendingResizeHeight = newHeight
        pendingResizeLeft = resizeLeft
        pendingResizeTop = resizeTop
        pendingResizeRight = resizeRight
        pendingResizeBottom = resizeBottom
        pendingResizeValid = true
        if (!resizeApplyTimer.running)
            resizeApplyTimer.start()
    }

    function applyPendingResize() {
        if (!pendingResizeValid)
            return
        pendingResizeValid = false
        ScreenTools.setWindowGeometryForWindow(mainwindows, pendingResizeX, pendingResizeY, pendingResizeWidth,
                                               pendingResizeHeight)
    }

    function endResize() {
        applyPendingResize()
        resizingWindow = false
        scheduleSaveWindowGeometry()
    }

    function showUpgradeDlg(downloadUrl, message) {
        _upgradeWindow.show(downloadUrl, message)
    }

    function manualCheckUpdate() {
        _upgradeWindow.showChecking()
        CUpgradeControl.checkUpdateNow()
    }

    function setWindowBackgroundOpacity(value) {
        windowBackgroundOpacity = Format.clamp(value, 0, 1)
    }

    function restoreWindowGeometry() {
        _placement.restore()
    }

    function scheduleSaveWindowGeometry() {
        _placement.scheduleSave()
    }

    function saveWindowGeometry() {
        _placement.save()
    }

    function toggleAlwaysOnTop() {
        var wasMaximized = visibility === Window.Maximized
        alwaysOnTop = !alwaysOnTop
        flags = _baseFlags | (alwaysOnTop ? Qt.WindowStaysOnTopHint : 0)
        // Changing the flags hides the window.
        if (wasMaximized)
            showMaximized()
        else
            showNormal()
    }

    function hid10Layer0ForPageIndex(index) {
        return _screenSync.screenOfPage(index)
    }

    function pageIndexForHid10Layer0(layer0) {
        return _screenSync.pageOfScreen(layer0)
    }

    function syncLowerUiForCurrentPage(index) {
        _screenSync.sendPage(index)
    }

    function applyUpperUiControl(direction, layer0, layer1, layer2, layer3) {
        _screenSync.followInstrument(direction, layer0)
    }

    WindowFrame {
        anchors.fill: parent
        anchors.margins: mainwindows.frameMargin
        titleBarHeight: mainwindows._titleBarHeight
        radius: mainwindows.frameMargin > 0 ? mainwindows.radiusValue : 0
        backgroundOpacity: mainwindows.windowBackgroundOpacity
        shieldOpacity: mainwindows.windowBackdropShieldOpacity
        loadEffects: mainwindows._loadWindowEffects
        shadowRadius: mainwindows.radiusValue
        shadowVisible: mainwindows.frameMargin > 0 && !mainwindows.resizingWindow

        PageArea {
            id: _pages

            Layout.fillWidth: true
            Layout.fillHeight: true
            menuCollapsed: mainwindows.leftMenuCollapsed
            menuCollapsedWidth: mainwindows._leftMenuCollapsedWidth
            menuExpandedWidth: mainwindows._leftMenuExpandedWidth
            menuWidth: mainwindows._leftMenuWidth
            backgroundOpacity: mainwindows.windowBackgroundOpacity
            loadPages: mainwindows._loadInitialPage
            resizingWindow: mainwindows.resizingWindow
            onToggleRequested: mainwindows.leftMenuCollapsed = !mainwindows.leftMenuCollapsed
            onPageChosen: mainwindows.syncLowerUiForCurrentPage(index)
        }
    }
    ResizeBorder {
        anchors.fill: parent
        z: 100
        targetWindow: mainwindows
        thickness: mainwindows.resizeBorderWidth
        onResizeStarted: mainwindows.beginResize()
        onResizeRequested: mainwindows.resizeWindow(left, top, right, bottom)
        onResizeFinished: mainwindows.endResize()
    }
    UpgradeWindow {
        id: _upgradeWindow

        // The desktop shows through the margin: only the drawn frame is dimmed.
        anchors.margins: mainwindows.frameMargin
        radius: mainwindows.frameMargin > 0 ? mainwindows.radiusValue : 0
    }

    WindowPlacement {
        id: _placement

        targetWindow: mainwindows
        preferredSize: Qt.size(mainwindows._dfw * 179, mainwindows._dfw * 110)
        barHeight: mainwindows._dfw + mainwindows._titleBarHeight
        resizing: mainwindows.resizingWindow
        onRestored: mainwindows.visible = true
    }
    ScreenSync {
        id: _screenSync

        onPageRequested: _pages.showPage(index)
    }

    Timer { id: resizeApplyTimer; interval: 16; onTriggered: mainwindows.applyPendingResize() }
    Timer { id: startupPageTimer; interval: 120; onTriggered: mainwindows._loadInitialPage = true }
    Timer {
        id: startupEffectsTimer

        interval: 650
        onTriggered: {
            mainwindows._loadWindowEffects = true
            mainwindows._placed = true
        }
    }

    Connections {
        target: CUpgradeControl
        function onNeedUpdate2(version, desc) {
            // An open dialog belongs to another check, or to a download.
            if (!_upgradeWindow.visible)
                _upgradeWindow.show2(version, desc)
        }
        function onManualCheckFinished(needUpdate, currentVersion, latestVersion, desc, downloadUrl, message) {
            if (CUpgradeControl.reportsCurrentOperation())
                _upgradeWindow.showManualResult(needUpdate, currentVersion, latestVersion, desc, downloadUrl, message)
        }
    }

    Component.onCompleted: {
        _placement.start()
        startupPageTimer.start()
        startupEffectsTimer.start()
    }
}
