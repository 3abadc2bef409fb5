// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.15

import "../../customize"
import "../../customize/Format.js" as Format
import "../common"

/// The present reading of the multimeter, as large as the panel allows.
Rectangle {
    id: _root

    property string heading
    property string value
    property string unit
    property bool connected: false
    property string connectionText
    /// Size of the heading in points.
    property real headingSize: 15
    /// Opacity of the window's background, 0 to 1; the fills are multiplied with it.
    property real backgroundOpacity: 1

    // A reading that is no number ("OL") is out of the range of the function.
    readonly property bool _outOfRange: value !== "--" && isNaN(Number(value))

    radius: 10
    border.width: 1
    border.color: PageStyle.panelBorder
    gradient: Gradient {
        GradientStop { position: 0; color: Format.withAlpha(PageStyle.infoPanelTop, _root.backgroundOpacity) }
        GradientStop { position: 1; color: Format.withAlpha(PageStyle.deepPanel, _root.backgroundOpacity) }
    }

    Accessible.role: Accessible.StaticText
    Accessible.name: heading + " " + value + " " + unit

    Text {
        id: _heading

        anchors { left: parent.left; top: parent.top; leftMargin: 18; topMargin: 12 }
        text: _root.heading
        color: PageStyle.accentCyan
        font.family: GenFontManager.mainFontFamily
        font.pointSize: _root.headingSize
        font.bold: true
    }

    ConnectionBadge {
        anchors { right: parent.right; verticalCenter: _heading.verticalCenter; rightMargin: 18 }
        connected: _root.connected
        text: _root.connectionText
    }

    Item {
        id: _room

        anchors { left: parent.left; right: parent.right; top: _heading.bottom; bottom: parent.bottom }
        anchors { leftMargin: 18; rightMargin: 18; bottomMargin: 10 }

        Row {
            anchors.centerIn: parent
            spacing: Math.round(_value.font.pixelSize * 0.16)
            // A reading of twenty characters still has to fit the width.
            scale: Math.min(1, _room.width / Math.max(1, width))

            Text {
                id: _value

                text: _root.value
                textFormat: Text.PlainText
                color: _root._outOfRange ? PageStyle.accentYellow : PageStyle.valueText
                font.family: GenFontManager.mainFontFamily
                font.pixelSize: Math.max(24, Math.min(120, Math.round(_room.height * 0.66)))
                font.bold: true
            }
            Text {
                anchors.baseline: _value.baseline
                text: _root.unit
                textFormat: Text.PlainText
                color: PageStyle.accentCyan
                font.family: GenFontManager.mainFontFamily
                font.pixelSize: Math.round(_value.font.pixelSize * 0.46)
            }
        }
    }
}
