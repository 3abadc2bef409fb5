// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.15

import "../../customize"

/// The hub of the needle around its own origin: a turned disc with a bright cap.
Item {
    id: _root

    property real unit: 1

    // Even numbers of pixels: the discs then lie around the origin in software as with OpenGL.
    function _diameter(size) {
        return 2 * Math.round(size * unit / 2)
    }

    Rectangle {
        anchors.centerIn: parent
        width: _root._diameter(26)
        height: width
        radius: width / 2
        antialiasing: true
        border.width: 1
        border.color: PageStyle.hubRim
        gradient: Gradient {
            GradientStop { position: 0; color: PageStyle.hubTop }
            GradientStop { position: 0.5; color: PageStyle.hubMiddle }
            GradientStop { position: 1; color: PageStyle.hubBottom }
        }
    }
    Rectangle {
        anchors.centerIn: parent
        width: _root._diameter(17)
        height: width
        radius: width / 2
        antialiasing: true
        gradient: Gradient {
            GradientStop { position: 0; color: PageStyle.hubRecessTop }
            GradientStop { position: 1; color: PageStyle.hubRecessBottom }
        }
    }
    Rectangle {
        anchors.centerIn: parent
        width: _root._diameter(9)
        height: width
        radius: width / 2
        antialiasing: true
        color: PageStyle.hubCap
    }
}
