// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import QtQuick.Controls 2.12

/// A tool tip in the colours of the pages. Create it only while it is needed: a pop-up is not cheap.
ToolTip {
    id: _root

    delay: 400
    padding: 8
    font.family: GenFontManager.mainFontFamily
    font.pointSize: 10

    contentItem: Text {
        text: _root.text
        font: _root.font
        color: PageStyle.titleText
    }
    background: Rectangle {
        radius: 4
        color: "#1A252E"
        border.width: 1
        border.color: PageStyle.panelBorder
    }
}
