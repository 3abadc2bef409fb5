// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import QtQuick.Controls 2.12

/// A tool tip in the colours of the pages, as its HoverTip says.
ToolTip {
    id: _root

    property HoverTip tip: null

    parent: tip ? tip.target : null
    x: parent && tip.beside ? parent.width + 8 : parent ? (parent.width - implicitWidth) / 2 : 0
    y: parent && tip.beside ? (parent.height - implicitHeight) / 2 : parent && tip.below ? parent.height + 6
                                                                                         : -implicitHeight - 3
    visible: tip !== null
    text: tip ? tip.text : ""
    delay: 400
    padding: 8
    font.family: GenFontManager.mainFontFamily
    font.pointSize: 10

    contentItem: Text {
        text: _root.text
        textFormat: Text.PlainText
        font: _root.font
        color: PageStyle.titleText
    }
    background: Rectangle {
        radius: 4
        color: PageStyle.idleFill
        border.width: 1
        border.color: PageStyle.panelBorder
    }
}
