// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.15

import "../../customize"
import "../../customize/Format.js" as Format

/// A flat button of the measurement pages; `active` fills it with the accent colour.
FlatButton {
    id: _root

    property bool active: false
    property real pointSize: 10.5
    property real minimumWidth: 64
    /// Opacity of the window's background, 0 to 1; the fills are multiplied with it.
    property real backgroundOpacity: 1

    readonly property color _idleColor: Format.withAlpha(PageStyle.idleFill, backgroundOpacity)

    leftPadding: 14
    rightPadding: 14
    // Whole pixels: a layout rounds other widths, and the label would miss the difference.
    implicitWidth: Math.max(minimumWidth, Math.ceil(_label.implicitWidth) + leftPadding + rightPadding)
    implicitHeight: Math.max(30, _label.implicitHeight + 12)
    // Where it is checkable, its state is always that of `active`, whoever clicks it.
    checked: active
    fill: active ? PageStyle.accentCyan
                 : pressed ? Qt.darker(_idleColor, 1.25) : hovered ? Qt.lighter(_idleColor, 1.35) : _idleColor
    frame: active || hovered ? PageStyle.accentCyan : PageStyle.panelBorder

    Accessible.name: text

    onToggled: checked = Qt.binding(function() { return active })

    contentItem: Text {
        id: _label

        text: _root.text
        color: _root.active ? PageStyle.textOnAccent : PageStyle.titleText
        font.family: GenFontManager.mainFontFamily
        font.pointSize: _root.pointSize
        font.bold: _root.active
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
        rightPadding: -PageStyle.roundingSlack
    }
}
