// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12

import "../../customize"
import "../common"

/// A card of the settings page: a title with its hint over the card's own content, which is as wide as its column.
Rectangle {
    id: _root

    /// The page: colours, font sizes and state.
    required property PageLook look
    property string title
    property string hint
    /// Shown at the right of the title.
    property alias corner: _corner.data

    default property alias content: _content.data

    readonly property real _margin: 18 * look.contentScale

    width: parent ? parent.width : 0
    height: _column.height + 2 * _margin
    radius: 10
    color: look.fill(PageStyle.settingsCard, 1)
    border.width: 1
    border.color: look.fill(PageStyle.settingsCardBorder, 1)

    Accessible.role: Accessible.Grouping
    Accessible.name: title

    Column {
        id: _column

        x: _root._margin
        y: _root._margin
        width: _root.width - 2 * _root._margin
        spacing: 12 * _root.look.contentScale

        Item {
            width: parent.width
            height: Math.max(_heading.height, _corner.height)

            Column {
                id: _heading

                anchors.verticalCenter: parent.verticalCenter
                width: parent.width - (_corner.width > 0 ? _corner.width + 16 : 0)
                spacing: 4

                Text {
                    width: parent.width
                    text: _root.title
                    color: PageStyle.settingsTitle
                    font.family: GenFontManager.mainFontFamily
                    font.pointSize: _root.look.point(13)
                    font.bold: true
                    wrapMode: Text.Wrap
                    Accessible.role: Accessible.Heading
                    Accessible.name: text
                }
                Text {
                    width: parent.width
                    visible: text.length > 0
                    text: _root.hint
                    color: PageStyle.settingsDim
                    font.family: GenFontManager.mainFontFamily
                    font.pointSize: _root.look.point(10)
                    lineHeight: 1.1
                    wrapMode: Text.Wrap
                }
            }
            Item {
                id: _corner

                anchors.right: parent.right
                width: childrenRect.width
                height: childrenRect.height
            }
        }
        Column {
            id: _content

            width: parent.width
            spacing: 10 * _root.look.contentScale
        }
    }
}
