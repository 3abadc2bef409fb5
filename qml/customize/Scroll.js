// SPDX-License-Identifier: GPL-3.0-or-later
.pragma library
.import "Format.js" as Format

// The angle that a wheel reports for one notch, in eighths of a degree.
var anglePerNotch = 120

// The content position of a view after a turn of the wheel. contentY, originY, contentHeight and height are those of
// the view; angleDelta is that of the event, positive when turned away from the user; notchLength is the number of
// pixels for one notch.
function afterWheel(contentY, originY, contentHeight, height, angleDelta, notchLength) {
    return Format.clamp(contentY - angleDelta / anglePerNotch * notchLength, originY,
                        originY + Math.max(0, contentHeight - height))
}
