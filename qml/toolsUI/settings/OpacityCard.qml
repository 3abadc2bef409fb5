// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12

import "../../customize"

/// How far the desktop shines through the window.
SettingsCard {
    id: _root

    /// 0 to 1.
    property real backgroundOpacity: 1

    signal opacityChosen(real value)

    title: qsTranslate("SysSettings", "Window Background Opacity")
    hint: qsTranslate("SysSettings", "Adjust the main window background transparency while keeping the title bar, "
                      + "buttons and content cards readable.")
    corner: Text {
        text: Math.round(_root.backgroundOpacity * 100) + "%"
        color: PageStyle.settingsAccent
        font.family: GenFontManager.mainFontFamily
        font.pointSize: _root.look.point(13)
        font.bold: true
    }

    GenSlider {
        id: _slider

        objectName: "opacitySlider"
        width: parent.width
        palette.button: PageStyle.settingsAccent
        palette.window: PageStyle.settingsTitle
        from: 0
        to: 1
        stepSize: 0.01
        value: _root.backgroundOpacity
        Accessible.name: _root.title
        onMoved: _root.opacityChosen(value)
        onValueChanged: {
            if (pressed)
                _root.opacityChosen(value)
        }
    }
}
