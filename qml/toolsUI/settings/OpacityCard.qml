// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12

import "../../customize"

/// How far the desktop shines through the window.
SettingsCard {
    id: _root

    title: qsTranslate("SysSettings", "Window Background Opacity")
    hint: qsTranslate("SysSettings", "Adjust the main window background transparency while keeping the title bar, "
                      + "buttons and content cards readable.")
    corner: Text {
        text: Math.round(_root.page._windowBackgroundOpacity * 100) + "%"
        color: _root.page.accentColor
        font.family: GenFontManager.mainFontFamily
        font.pointSize: _root.page.scaledPoint(13)
        font.bold: true
    }

    GenSlider {
        id: _slider

        objectName: "opacitySlider"
        width: parent.width
        palette.button: _root.page.accentColor
        palette.window: _root.page.titleColor
        from: 0
        to: 1
        stepSize: 0.01
        value: _root.page._windowBackgroundOpacity
        Accessible.name: _root.title
        onMoved: _root.page.applyWindowBackgroundOpacity(value)
        onValueChanged: {
            if (pressed)
                _root.page.applyWindowBackgroundOpacity(value)
        }
    }
}
