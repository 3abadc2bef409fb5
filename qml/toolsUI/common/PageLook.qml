// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.15
import GenControl.ScreenTools 1.0

import "../../customize/Format.js" as Format

/// Sizes and fills that the parts of a settings page share.
QtObject {
    /// Factor of font sizes and gaps, 0.82 to 1.
    property real contentScale: 1
    /// Opacity of fills, 0 to 1.
    property real backgroundOpacity: 1
    /// Width of the labels in pixels: the longest one in one line at the smallest font.
    readonly property real labelWidth: Math.max(136, ScreenTools.defaultFontPixelWidth * 18 * contentScale)

    /// Returns a font size in points, never below 10.
    function point(size) {
        return Math.max(10, size * contentScale)
    }

    /// Returns the colour with the alpha opacity * backgroundOpacity.
    function fill(colorValue, opacity) {
        return Format.withAlpha(colorValue, opacity * backgroundOpacity)
    }
}
