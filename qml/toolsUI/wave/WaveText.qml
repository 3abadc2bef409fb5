// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12

import "../../customize"

/// Text of the page. Drawn from ready glyphs: outlines computed on the fly cost a software renderer much.
Text {
    color: "#8EA0AE"
    font.family: GenFontManager.mainFontFamily
    renderType: Text.NativeRendering
    textFormat: Text.PlainText
}
