// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import QtQuick.Layouts 1.12
import GenControl.ScreenTools 1.0

/// The page column and the page that is chosen in it.
RowLayout {
    id: _area

    property bool menuCollapsed: true
    property real menuCollapsedWidth: 0
    property real menuExpandedWidth: 0
    /// The width that the column has now, on its way between the two above.
    property real menuWidth: menuCollapsedWidth
    property real backgroundOpacity: 1
    property alias loadPages: rightStack.loadPages
    property alias resizingWindow: rightStack.resizingWindow
    // In a small window the expanded column would leave the page too narrow: it lies over the page instead.
    readonly property bool menuOverlays: width - menuExpandedWidth < ScreenTools.defaultFontPixelWidth * 60

    signal toggleRequested()
    /// The user chose a page.
    signal pageChosen(int index)

    spacing: 0

    /// Shows a page that something else than the column chose; says nothing of it.
    function showPage(index) {
        rightStack.currentIndex = index
        leftMenuRect.pages.selectIndex(index, false)
    }

    Item {
        z: 1
        Layout.fillHeight: true
        Layout.preferredWidth: _area.menuOverlays ? _area.menuCollapsedWidth : _area.menuWidth
        Layout.minimumWidth: _area.menuCollapsedWidth

        LeftColumn {
            id: leftMenuRect

            width: _area.menuOverlays ? _area.menuWidth : parent.width
            height: parent.height
            collapsed: _area.menuCollapsed
            overlays: _area.menuOverlays && !_area.menuCollapsed
            backgroundOpacity: _area.backgroundOpacity
            // Keys that the page list does not use are the page's: it need not take the focus to get them.
            Keys.forwardTo: rightStack.currentPage ? [rightStack.currentPage] : []
            onToggleRequested: _area.toggleRequested()
            pages.onSClick2: {
                rightStack.currentIndex = index
                _area.pageChosen(index)
            }
            Component.onCompleted: pages.init(true)
        }
    }
    PageStack {
        id: rightStack

        Layout.fillWidth: true
        Layout.fillHeight: true
    }
}
