// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import QtQuick.Controls 2.12

import "../../customize"
import "../common"

/// One form of the account page: a title and what it is for over the form's own fields, centred.
Flickable {
    id: _root

    required property PageLook look
    property string title
    property string subtitle

    default property alias content: _content.data

    /// So low that the form moves together to stay whole.
    readonly property bool tight: height < 360
    readonly property real _spacingScale: tight ? 0.5 : look.contentScale
    readonly property real _margin: 20 * _spacingScale
    readonly property real _widest: 540

    clip: true
    contentHeight: Math.max(height, _column.height + 2 * _margin)
    interactive: contentHeight > height
    boundsBehavior: Flickable.StopAtBounds
    ScrollBar.vertical: ScrollBar { policy: ScrollBar.AsNeeded }

    WheelScroll {}

    Column {
        id: _column

        x: (_root.width - width) / 2
        y: Math.max(_root._margin, (_root.height - height) / 2)
        width: Math.min(_root._widest, _root.width - 2 * _root._margin)
        spacing: 16 * _root._spacingScale

        Column {
            width: parent.width
            spacing: 4

            Text {
                width: parent.width
                text: _root.title
                color: PageStyle.accountText
                font.family: GenFontManager.mainFontFamily
                font.pointSize: _root.look.point(18)
                font.bold: true
                wrapMode: Text.Wrap
                Accessible.role: Accessible.Heading
                Accessible.name: text
            }
            Text {
                width: parent.width
                text: _root.subtitle
                color: PageStyle.accountDim
                font.family: GenFontManager.mainFontFamily
                font.pointSize: _root.look.point(10.5)
                wrapMode: Text.Wrap
            }
        }
        Column {
            id: _content

            width: parent.width
            spacing: 12 * _root._spacingScale
        }
    }
}
