// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import QtQuick.Controls 1.4 as Controls1
import QtQuick.Controls 2.12
import QtQuick.Window 2.12
import GenToolbox 1.0

import "../customize"

/// The list of tool pages. Selecting a page, by click or by arrow key, reports its position and document.
Flickable {
    id: root

    property int currentIndex: 0
    property bool collapsed: false
    readonly property real backgroundOpacity: {
        var opacity = Window.window ? Window.window.windowBackgroundOpacity : undefined
        return opacity === undefined ? 1 : opacity
    }
    readonly property int collapsedButtonHeight: 42
    readonly property int expandedButtonHeight: 54
    property alias model: _repeater.model

    signal sClick(var title, var url)
    signal sClick2(int index, var title, var url)

    contentWidth: width
    contentHeight: Math.max(height, _column.height + 80)
    boundsBehavior: Flickable.StopAtBounds

    ScrollIndicator.vertical: ScrollIndicator {}

    Accessible.role: Accessible.PageTabList
    Keys.onUpPressed: _step(-1)
    Keys.onDownPressed: _step(1)
    onHeightChanged: _reveal(_repeater.itemAt(currentIndex))

    // Selects a page and scrolls to it; out of range nothing happens. Reports it unless emitSignal is false.
    function selectIndex(index, emitSignal) {
        if (!model || index < 0 || index >= _repeater.count)
            return
        currentIndex = index
        for (var i = 0; i < _repeater.count; ++i) {
            var button = _repeater.itemAt(i)
            if (button)
                button.checked = i === index
        }
        _reveal(_repeater.itemAt(index))
        if (emitSignal === false)
            return
        var page = model[index]
        sClick(page.title, page.url)
        sClick2(index, page.title, page.url)
    }

    function init(emitSignal) {
        if (_repeater.count > 0)
            selectIndex(currentIndex, emitSignal)
    }

    function _step(delta) {
        var index = currentIndex + delta
        if (index < 0 || index >= _repeater.count)
            return
        selectIndex(index, true)
        _repeater.itemAt(index).forceActiveFocus(Qt.TabFocusReason)
    }

    // Scrolls so far that the whole button is seen.
    function _reveal(button) {
        if (!button)
            return
        var top = _column.y + button.y
        var lowest = Math.min(top - _column.spacing, contentHeight - height)
        contentY = Math.max(0, Math.min(lowest, Math.max(contentY, top + button.height + _column.spacing - height)))
    }

    Component.onCompleted: _reselectTimer.restart()

    Timer {
        id: _reselectTimer

        interval: 0
        onTriggered: root.selectIndex(root.currentIndex, false)
    }

    Controls1.ExclusiveGroup {
        id: _group
    }

    Column {
        id: _column

        // Only the margins are animated: the width of the list is animated already.
        property real _margins: root.collapsed ? 12 : 20

        anchors.horizontalCenter: parent.horizontalCenter
        y: 10
        width: root.width - _margins
        spacing: 10

        Behavior on _margins {
            NumberAnimation { duration: 220; easing.type: Easing.OutCubic }
        }

        Repeater {
            id: _repeater

            onCountChanged: {
                if (count > 0)
                    _reselectTimer.restart()
            }

            PageButton {
                width: _column.width
                height: root.collapsed ? root.collapsedButtonHeight : root.expandedButtonHeight
                title: modelData.title
                icon: modelData.icon
                collapsed: root.collapsed
                backgroundOpacity: root.backgroundOpacity
                exclusiveGroup: _group
                checked: index === root.currentIndex
                // One tab stop for the whole list; the arrow keys move inside it.
                activeFocusOnTab: index === root.currentIndex || activeFocus
                onClicked: root.selectIndex(index, true)
            }
        }
    }

    Text {
        visible: !root.collapsed
        anchors { horizontalCenter: parent.horizontalCenter; bottom: parent.bottom; bottomMargin: 45 }
        text: qsTr("Version:") + GenToolbox.version
        color: GenToolbox.genPalette.buttonText
        font.family: GenFontManager.mainFontFamily
        font.pointSize: 11
    }
    Text {
        visible: !root.collapsed
        anchors { horizontalCenter: parent.horizontalCenter; bottom: parent.bottom; bottomMargin: 20 }
        text: qsTr("© Quorvel contributors")
        color: GenToolbox.genPalette.buttonText
        font.family: GenFontManager.mainFontFamily
        font.pointSize: 11
    }
}
