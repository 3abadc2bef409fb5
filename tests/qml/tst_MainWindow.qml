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
    // Without an instrument each attempt to send a packet emits this signal.
    property SignalSpy _sendAttempts: SignalSpy { target: GenToolbox.hidLink; signalName: "errorOccurred" }
    property SignalSpy _answers: SignalSpy { target: CUpgradeControl; signalName: "manualCheckFinished" }
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

    function isStored() {
        return _settings.bValue("valid", false, "windowGeometry")
    }

    function store(x, y, width, height) {
        _settings.setValue("x", x, "windowGeometry")
        _settings.setValue("y", y, "windowGeometry")
        _settings.setValue("width", width, "windowGeometry")
        _settings.setValue("height", height, "windowGeometry")
        _settings.setValue("valid", true, "windowGeometry")
    }

    // The page stack and the page column are found by a property that only they have.
    function stack() { return having(_window.contentItem, "currentPage") }
    function column() { return having(_window.contentItem, "collapsedButtonHeight") }

    function test_startAsksForTheFirstScreenOnce() {
        compare(_sendAttempts.count, 1)
        tryCompare(_window, "_loadInitialPage", true)
        compare(_sendAttempts.count, 1)
        compare(stack().currentIndex, 0)
    }

    function test_pagesAndScreens() {
        compare([-1, 0, 1, 2, 3, 4, 5].map(_window.hid10Layer0ForPageIndex), [255, 1, 3, 4, 2, 255, 255])
        compare([0, 1, 2, 3, 4, 5, 255].map(_window.pageIndexForHid10Layer0), [-1, 0, 3, 1, 2, -1, -1])
        _sendAttempts.clear()
        for (var page = -1; page < 6; ++page)
            _window.syncLowerUiForCurrentPage(page)
        compare(_sendAttempts.count, 4)
    }

    // Packets of the instrument change the page, and no packet goes back. The packets are direction and screen.
    function test_instrumentTurnsThePageWithoutEcho() {
        _sendAttempts.clear()
        for (var packet of [[1, 4, 0], [2, 5, 0], [2, 4, 2], [2, 2, 3]]) {
            GenToolbox.hidLink.uiControlRequested(packet[0], packet[1], 255, 255, 255)
            compare([stack().currentIndex, column().currentIndex], [packet[2], packet[2]])
        }
        compare(_sendAttempts.count, 0)
    }

    function test_choosingAPageTellsTheInstrument() {
        _sendAttempts.clear()
        for (var page of [3, 5]) {
            column().selectIndex(page, true)
            compare([stack().currentIndex, _sendAttempts.count], [page, 1])
        }
    }

    function loadedPages() {
        return Array.from(stack().children).filter(function(loader) { return loader.item }).length
    }

    // Counts the fills below an item that ignore the window's opacity of 0: translucent ones, and the dark segments of
    // the measuring pages. The needle's edge does not count.
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
        _window.beginResize()
        compare(page.resizingWindow, true)
        _window.endResize()
        compare(page.resizingWindow, false)
    }

    function test_geometryIsRestored() {
        var width = _window.width
        store(30, 40, 0, 500)
        _window.restoreWindowGeometry()
        compare(_window.width, width)
        verify(_window.x !== 30)

        store(30, 40, _window.minimumWidth + 50, _window.minimumHeight + 60)
        _window.restoreWindowGeometry()
        compare([_window.x, _window.y], [30, 40])
        // The screen may be smaller than the window's minimum.
        compare(_window.width, Math.round(Math.max(_window.minimumWidth, Math.min(
            _window.minimumWidth + 50, ScreenTools.availableScreenWidth * 0.96))))
    }

    function test_movingIsStoredAfterAWhile() {
        tryCompare(_window, "_placed", true)
        _window.x = 55
        verify(!isStored())
        tryVerify(isStored)
        compare(stored("x"), 55)
    }

    function test_maximisedGeometryIsNotStored() {
        tryCompare(_window, "_placed", true)
        _window.showMaximized()
        tryCompare(_window, "visibility", Window.Maximized)
        compare(_window.frameMargin, 0)
        _window.saveWindowGeometry()
        verify(!isStored())
    }

    function test_closingStoresTheGeometry() {
        _window.close()
        verify(isStored())
        compare(stored("width"), Math.round(_window.width))
    }

    function test_dragResizesInSteps() {
        ScreenTools.setWindowGeometryForWindow(_window, 10, 20, _window.minimumWidth, _window.minimumHeight)
        var right = _window.x + _window.width
        TestCursor.moveTo(right, 300)
        _window.beginResize()
        TestCursor.moveTo(right + 40, 300)
        _window.resizeWindow(false, false, true, false)
        compare(_window.width, _window.minimumWidth)
        tryCompare(_window, "width", _window.minimumWidth + 40)
        TestCursor.moveTo(right + 60, 300)
        _window.resizeWindow(false, false, true, false)
        _window.endResize()
        compare(_window.width, _window.minimumWidth + 60)
        compare(_window.resizingWindow, false)
    }

    // In the smallest window it lies over the page, in a wide one beside it.
    function test_expandedColumnLeavesThePageItsRoom() {
        for (var extra of [0, 600]) {
            _window.leftMenuCollapsed = true
            tryCompare(column(), "width", _window._leftMenuCollapsedWidth)
            ScreenTools.setWindowGeometryForWindow(_window, 0, 0, _window.minimumWidth + extra, _window.minimumHeight)
            tryCompare(having(_window.contentItem, "menuOverlays"), "menuOverlays", extra === 0)
            tryVerify(function() { return stack().width > 0 })
            var before = stack().width
            _window.leftMenuCollapsed = false
            tryCompare(column(), "width", _window._leftMenuExpandedWidth)
            compare(stack().width < before, extra > 0)
        }
    }

    function test_opacityIsClamped() {
        for (var row of [[7, 1, 0], [-1, 0, 0.42 * 0.36]]) {
            _window.setWindowBackgroundOpacity(row[0])
            compare(_window.windowBackgroundOpacity, row[1])
            fuzzyCompare(_window.windowBackdropShieldOpacity, row[2], 1e-9)
        }
    }

    function test_alwaysOnTopKeepsTheGeometry() {
        ScreenTools.setWindowGeometryForWindow(_window, 33, 44, _window.minimumWidth, _window.minimumHeight)
        _window.toggleAlwaysOnTop()
        verify(_window.flags & Qt.WindowStaysOnTopHint)
        compare([_window.alwaysOnTop, _window.visible, _window.x], [true, true, 33])
        _window.toggleAlwaysOnTop()
        verify(!(_window.flags & Qt.WindowStaysOnTopHint))
        verify(_window.flags & Qt.FramelessWindowHint)
    }

    function test_updateDialogHearsItsOwnCheckOnly() {
        // No server listens there.
        _settings.setValue("apiPort", 1, "sysSettings")
        var dialog = having(_window.contentItem, "_upgradeStatus")
        _window.manualCheckUpdate()
        CUpgradeControl.needUpdate2("9.9", "")
        verify(!findChild(dialog, "upgradeButton").visible)
        dialog.close()
        _answers.wait()
        verify(!dialog.visible)
    }
}
