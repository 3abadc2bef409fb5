// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12

/// The plus or minus at an end of a spin box.
Text {
    property string sign: ""
    property bool lit: false

    width: 36
    text: sign
    color: lit ? PageStyle.accentCyan : PageStyle.dimText
    font.family: GenFontManager.mainFontFamily
    font.pixelSize: 20
    horizontalAlignment: Text.AlignHCenter
    verticalAlignment: Text.AlignVCenter
}
