// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12

/// Buttons at the right end of a card, in the order in which they are read; they wrap when there is no room.
Item {
    id: _root

    default property alias content: _flow.data

    width: parent ? parent.width : 0
    height: _flow.height + 4

    Flow {
        id: _flow

        y: 4
        width: parent.width
        spacing: 10
        layoutDirection: Qt.RightToLeft
    }
}
