// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import QtQuick.Layouts 1.12
import GenToolbox 1.0
import Recording 1.0

import "../customize"
import "../customize/Format.js" as Format

/// What the window draws itself: shadow, background and title bar, and below the bar, in a row, its content.
Item {
    id: _root

    property real titleBarHeight: 48
    property real radius: 0
    property real backgroundOpacity: 1
    property real shieldOpacity: 0
    property bool loadEffects: false
    property real shadowRadius: 10
    property bool shadowVisible: false
    default property alias content: _content.data

    // Below this the desktop shows through so much that a shadow would only darken it.
    readonly property bool _shadowAllowed: backgroundOpacity >= 0.8

    Rectangle {
        id: rect

        anchors.fill: parent
        color: Format.withAlpha(GenToolbox.genPalette.window, _root.backgroundOpacity)
        radius: _root.radius
    }
    Loader {
        anchors.fill: rect
        z: -1
        asynchronous: true
        active: _root.loadEffects && _root._shadowAllowed
        source: active ? "qrc:/qml/customize/WindowDropShadow.qml" : ""
        onLoaded: {
            item.targetItem = rect
            item.radiusValue = Qt.binding(function() { return _root.shadowRadius })
            item.shadowVisible = Qt.binding(function() { return _root.shadowVisible && _root._shadowAllowed })
        }
    }
    Rectangle {
        anchors.fill: rect
        radius: rect.radius
        visible: _root.shieldOpacity > 0.001
        color: Format.withAlpha(PageStyle.backdropShield, _root.shieldOpacity)
    }
    ColumnLayout {
        anchors.fill: rect
        // The square corners of what is inside stay within the frame's round ones.
        anchors.margins: Math.ceil(rect.radius * 0.3)
        spacing: 0

        Rectangle {
            Layout.fillWidth: true
            Layout.preferredHeight: _root.titleBarHeight
            color: rect.color

            GenTitleBar {
                anchors { left: parent.left; right: parent.right; top: parent.top }
            }
        }
        RowLayout {
            id: _content

            Layout.fillWidth: true
            Layout.fillHeight: true
            spacing: 0
        }
    }
    Loader {
        anchors { top: parent.top; right: parent.right; topMargin: _root.titleBarHeight + 8; rightMargin: 12 }
        width: Math.min(380, parent.width - 24)
        active: Recording.notice !== Recording.NoNotice
        source: active ? "RecordingNotice.qml" : ""
    }
}
