// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import QtQuick.Window 2.12
import QtTest 1.12
import CUpgradeControl 1.0
import GenControl.ScreenTools 1.0
import GenToolbox 1.0

PageTestCase {
    name: "MainWindow"

    property var _window: null
    // Without an instrument each packet that the window wants to send ends in this signal.
    property SignalSpy _sendAttempts: SignalSpy { target: GenToolbox.hidLink; signalName: "errorOccurred" }
    property SignalSpy _answers: SignalSpy { target: CUpgradeControl; signalName: "manualCheckFinished" }
    readonly property var _link: GenToolbox.hidLink
    readonly property var _settings: GenToolbox.genSettings

    function initTestCase() {
        _settings.setValue("valid", false, "windowGeometry")
    }

    function init() {
        _sendAttempts.clear()
        var component = Qt.createComponent("qrc:/qml/main.qml")
        compare(component.status, Component.Ready, component.errorString())
        _window = component.createObject(null)
        tryCompare(_window, "visible", true)
    }

    function cleanup() {
        _window.destroy()
        _window = null
        wait(0)
        _settings.setValue("valid", false, "windowGeometry")
    }

    function stored(key) {
        return _settings.iValue(key, -12345, "windowGeometry")
    }

    function store(x, y, width, height) {
        _settings.setValue("x", x, "windowGeometry")
        _settings.setValue("y", y, "windowGeometry")
        _settings.setValue("width", width, "windowGeometry")
        _settings.setValue("height", height, "windowGeometry")
        _settings.setValue("valid", true, "windowGeometry")
    }

    // The page stack and the page column, found by what only they have.
    function stack() { return having(_window.contentItem, "currentPage") }
    function column() { return having(_window.contentItem, "collapsedButtonHeight") }

    function test_startAsksForTheFirstScreenOnce() {
        compare(_sendAttempts.count, 1)
        tryCompare(_window, "_loadInitialPage", true)
        compare(_sendAttempts.count, 1)
        compare(stack().currentIndex, 0)
    }

    function test_pagesAndScreens_data() {
        return [
            { tag: "gauge", page: 0, screen: 1 }, { tag: "wave", page: 1, screen: 3 },
            { tag: "multimeter", page: 2, screen: 4 }, { tag: "charge", page: 3, screen: 2 },
            { tag: "user settings", page: 4, screen: 255 }, { tag: "system settings", page: 5, screen: 255 },
            { tag: "no page", page: -1, screen: 255 }, { tag: "no screen", page: -1, screen: 0 },
            { tag: "unknown screen", page: -1, screen: 5 }
        ]
    }

    function test_pagesAndScreens(data) {
        var screen = data.page < 0 ? 255 : data.screen
        compare(_window.hid10Layer0ForPageIndex(data.page), screen)
        compare(_window.pageIndexForHid10Layer0(data.screen), data.screen === 255 ? -1 : data.page)
        _sendAttempts.clear()
        _window.syncLowerUiForCurrentPage(data.page)
        compare(_sendAttempts.count, screen === 255 ? 0 : 1)
    }

    function test_instrumentTurnsThePageWithoutEcho() {
        _sendAttempts.clear()
        _link.uiControlRequested(2, 4, 255, 255, 255)
        compare(stack().currentIndex, 2)
        compare(column().currentIndex, 2)
        compare(_sendAttempts.count, 0)
        compare(_window._suppressUiControlSync, false)
    }

    function test_otherPacketsAreIgnored() {
        _link.uiControlRequested(1, 4, 255, 255, 255)
        _link.uiControlRequested(2, 5, 255, 255, 255)
        compare(stack().currentIndex, 0)
        compare(column().currentIndex, 0)
    }

    function test_choosingAPageTellsTheInstrument() {
        _sendAttempts.clear()
        column().selectIndex(3, true)
        compare(stack().currentIndex, 3)
        compare(_sendAttempts.count, 1)
        column().selectIndex(5, true)
        compare(stack().currentIndex, 5)
        compare(_sendAttempts.count, 1)
    }

    function loadedPages() {
        var pages = 0
        for (var i = 0; i < stack().children.length; ++i) {
            if (stack().children[i].item)
                ++pages
        }
        return pages
    }

    // How many fills below an item do not take on the window's opacity of 0: those that let the desktop through in
    // part, and the dark segments of the measuring pages. The needle's edge is no fill.
    function heavyFills(item, measuring) {
        var count = 0
        if (item.gradient !== undefined && item.thickness === undefined && item.color.a > 0
                && (item.color.a < 1 || (measuring && Qt.colorEqual(item.color, "#1A252E"))))
            count = 1
        for (var i = 0; i < item.children.length; ++i)
            count += heavyFills(item.children[i], measuring)
        return count
    }

    function test_onlyTheCurrentPageExists() {
        tryVerify(function() { return loadedPages() === 1 })
        _window.setWindowBackgroundOpacity(0)
        for (var page = 0; page < 6; ++page) {
            column().selectIndex(page, false)
            stack().currentIndex = page
            tryVerify(function() { return stack().children[page].item !== null })
            compare(loadedPages(), 1)
            compare(heavyFills(stack().children[page].item, page < 4), 0)
        }
    }

    function test_pagesLearnOfAResize() {
        tryVerify(function() { return loadedPages() === 1 })
        var page = stack().children[0].item
        compare(page.resizingWindow, false)
        _window.beginResize()
        compare(page.resizingWindow, true)
        _window.endResize()
        compare(page.resizingWindow, false)
    }

    function test_geometryIsRestored() {
        store(30, 40, _window.minimumWidth + 50, _window.minimumHeight + 60)
        _window.restoreWindowGeometry()
        compare(_window.x, 30)
        compare(_window.y, 40)
        // The screen may be smaller than the window's minimum.
        compare(_window.width, Math.round(Math.max(_window.minimumWidth, Math.min(
            _window.minimumWidth + 50, ScreenTools.availableScreenWidth * 0.96))))
    }

    function test_brokenGeometryIsIgnored() {
        var width = _window.width
        store(30, 40, 0, 500)
        _window._restoringWindowGeometry = true
        _window.restoreWindowGeometry()
        compare(_window.width, width)
        verify(_window.x !== 30)
        compare(_window._restoringWindowGeometry, false)
    }

    function test_movingIsStoredAfterAWhile() {
        tryCompare(_window, "_placed", true)
        _window.x = 55
        compare(_settings.bValue("valid", false, "windowGeometry"), false)
        tryVerify(function() { return _settings.bValue("valid", false, "windowGeometry") })
        compare(stored("x"), 55)
    }

    function test_maximisedGeometryIsNotStored() {
        tryCompare(_window, "_placed", true)
        _window.showMaximized()
        tryCompare(_window, "visibility", Window.Maximized)
        compare(_window.frameMargin, 0)
        _window.saveWindowGeometry()
        compare(_settings.bValue("valid", false, "windowGeometry"), false)
    }

    function test_closingStoresTheGeometry() {
        _window.close()
        compare(_settings.bValue("valid", false, "windowGeometry"), true)
        compare(stored("width"), Math.round(_window.width))
    }

    function test_dragResizesInSteps() {
        ScreenTools.setWindowGeometryForWindow(_window, 10, 20, _window.minimumWidth, _window.minimumHeight)
        var right = _window.x + _window.width
        TestCursor.moveTo(right, 300)
        _window.beginResize()
        TestCursor.moveTo(right + 40, 300)
        _window.resizeWindow(false, false, true, false)
        compare(_window.pendingResizeValid, true)
        compare(_window.width, _window.minimumWidth)
        tryCompare(_window, "width", _window.minimumWidth + 40)
        compare(_window.pendingResizeValid, false)
        TestCursor.moveTo(right + 60, 300)
        _window.resizeWindow(false, false, true, false)
        _window.endResize()
        compare(_window.width, _window.minimumWidth + 60)
        compare(_window.resizingWindow, false)
    }

    function test_expandedColumnLeavesThePageItsRoom_data() {
        return [{ tag: "smallest window: over the page", extra: 0, overlays: true },
                { tag: "wide window: beside the page", extra: 600, overlays: false }]
    }

    function test_expandedColumnLeavesThePageItsRoom(data) {
        ScreenTools.setWindowGeometryForWindow(_window, 0, 0, _window.minimumWidth + data.extra, _window.minimumHeight)
        tryCompare(having(_window.contentItem, "menuOverlays"), "menuOverlays", data.overlays)
        tryVerify(function() { return stack().width > 0 })
        var before = stack().width
        _window.leftMenuCollapsed = false
        tryCompare(column(), "width", _window._leftMenuExpandedWidth)
        if (data.overlays)
            compare(stack().width, before)
        else
            verify(stack().width < before)
    }

    function test_opacityIsClamped() {
        _window.setWindowBackgroundOpacity(7)
        compare(_window.windowBackgroundOpacity, 1)
        compare(_window.windowBackdropShieldOpacity, 0)
        _window.setWindowBackgroundOpacity(-1)
        compare(_window.windowBackgroundOpacity, 0)
        fuzzyCompare(_window.windowBackdropShieldOpacity, 0.42 * 0.36, 1e-9)
    }

    function test_alwaysOnTopKeepsTheGeometry() {
        ScreenTools.setWindowGeometryForWindow(_window, 33, 44, _window.minimumWidth, _window.minimumHeight)
        _window.toggleAlwaysOnTop()
        compare(_window.alwaysOnTop, true)
        verify(_window.flags & Qt.WindowStaysOnTopHint)
        compare(_window.visible, true)
        compare(_window.x, 33)
        _window.toggleAlwaysOnTop()
        verify(!(_window.flags & Qt.WindowStaysOnTopHint))
        verify(_window.flags & Qt.FramelessWindowHint)
    }

    function test_updateDialogHearsItsOwnCheckOnly() {
        // Nobody listens there.
        _settings.setValue("apiPort", 1, "sysSettings")
        var dialog = having(_window.contentItem, "_upgradeStatus")
        _window.manualCheckUpdate()
        CUpgradeControl.needUpdate2("9.9", "")
        verify(dialog._checking)
        dialog.close()
        _answers.wait()
        verify(!dialog.visible)
    }
}
