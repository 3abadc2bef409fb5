// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.15

import "../../customize"

/// Text of the page. Drawn from ready glyphs: outlines computed on the fly cost a software renderer much.
Text {
    color: PageStyle.waveText
    font.family: GenFontManager.mainFontFamily
    renderType: Text.NativeRendering
    textFormat: Text.PlainText
}
