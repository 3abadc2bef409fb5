// SPDX-License-Identifier: GPL-3.0-or-later
.pragma library

// Largest share of the available screen that the window takes by itself.
var widthShare = 0.96
var heightShare = 0.92

// Where the settings store keeps the geometry.
var group = "windowGeometry"

// The geometry kept in a settings store, with sizes of -1 when one is missing; null when none was kept.
function load(settings) {
    if (!settings.bValue("valid", false, group))
        return null
    return {
        x: settings.iValue("x", 0, group),
        y: settings.iValue("y", 0, group),
        width: settings.iValue("width", -1, group),
        height: settings.iValue("height", -1, group)
    }
}

function store(settings, geometry) {
    settings.setValue("valid", true, group)
    settings.setValue("x", Math.round(geometry.x), group)
    settings.setValue("y", Math.round(geometry.y), group)
    settings.setValue("width", Math.round(geometry.width), group)
    settings.setValue("height", Math.round(geometry.height), group)
}

// An extent that fits the screen; the minimum wins over the screen. Pixels.
function fitted(wanted, minimum, available, share) {
    return Math.max(minimum, Math.min(wanted, available * share))
}

// The geometry to restore, in whole pixels, or null when what was stored is none. stored: x, y, width and
// height, or null; minimum and available: width and height; screens: the application's.
function restored(stored, minimum, available, screens) {
    if (!stored || stored.width <= 0 || stored.height <= 0)
        return null
    var geometry = {
        x: Math.round(stored.x),
        y: Math.round(stored.y),
        width: Math.round(fitted(stored.width, minimum.width, available.width, widthShare)),
        height: Math.round(fitted(stored.height, minimum.height, available.height, heightShare))
    }
    return _reachable(geometry, screens)
}

// The geometry that a drag of the given edges to the cursor asks for. start: x, y, width and height at the
// start of the drag; fixed: the x of the right and the y of the bottom edge, which stay when the opposite edge
// is dragged; minimum: width and height; cursor: x and y. Pixels.
function resized(start, fixed, minimum, cursor, left, top, right, bottom) {
    var geometry = { x: start.x, y: start.y, width: start.width, height: start.height }
    if (right)
        geometry.width = Math.max(minimum.width, cursor.x - start.x)
    if (bottom)
        geometry.height = Math.max(minimum.height, cursor.y - start.y)
    if (left) {
        geometry.width = Math.max(minimum.width, fixed.x - cursor.x)
        geometry.x = fixed.x - geometry.width
    }
    if (top) {
        geometry.height = Math.max(minimum.height, fixed.y - cursor.y)
        geometry.y = fixed.y - geometry.height
    }
    return {
        x: Math.round(geometry.x),
        y: Math.round(geometry.y),
        width: Math.round(geometry.width),
        height: Math.round(geometry.height)
    }
}

// The screen of a stored position may be gone: a window that no screen shows goes to the first screen.
function _reachable(geometry, screens) {
    for (var i = 0; i < screens.length; ++i) {
        var screen = screens[i]
        if (geometry.x < screen.virtualX + screen.width && screen.virtualX < geometry.x + geometry.width
                && geometry.y < screen.virtualY + screen.height && screen.virtualY < geometry.y + geometry.height)
            return geometry
    }
    if (screens.length > 0) {
        geometry.x = screens[0].virtualX
        geometry.y = screens[0].virtualY
    }
    return geometry
}
