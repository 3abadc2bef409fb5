// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.15
import GenControl.ScreenTools 1.0

import "../../customize"

/// A switch of the page's controls with its label.
Row {
    id: _row

    property bool checked: false
    property string text: ""

    signal toggled(bool checked)

    spacing: ScreenTools.defaultFontPixelWidth * 0.8

    GenSwitch {
        id: _switch

        anchors.verticalCenter: parent.verticalCenter
        switchWidth: 40
        switchHeight: 20
        checked: _row.checked
        Accessible.name: _row.text
        onToggled: function(checked) {
            _row.toggled(checked)
            // A click has ended the binding; the state is always that of the row.
            _switch.checked = Qt.binding(function() { return _row.checked })
        }
    }
    WaveText {
        anchors.verticalCenter: parent.verticalCenter
        text: _row.text
        color: PageStyle.titleText
        font.pointSize: 10
    }
}
