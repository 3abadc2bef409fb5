// SPDX-License-Identifier: GPL-3.0-or-later
.pragma library

// Largest share of the available screen that the window takes by itself.
var widthShare = 0.96
var heightShare = 0.92

// The part of the title bar that has to be on a screen, so that the window can be moved: a share of the height and a
// width in pixels, of which the buttons take 150.
var gripWidth = 200
var gripShare = 0.6

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

// placeKnown: whether x and y are a place on the screen. If not, the stored place stays.
function store(settings, geometry, placeKnown) {
    settings.setValue("valid", true, group)
    if (placeKnown) {
        settings.setValue("x", Math.round(geometry.x), group)
        settings.setValue("y", Math.round(geometry.y), group)
    }
    settings.setValue("width", Math.round(geometry.width), group)
    settings.setValue("height", Math.round(geometry.height), group)
}

// The size of the window until a stored geometry is restored. The settings store may hold one; wanted, minimum and
// available: width and height. Pixels.
function initialSize(settings, wanted, minimum, available) {
    return {
        width: fitted(settings.iValue("width", wanted.width, group), minimum.width, available.width, widthShare),
        height: fitted(settings.iValue("height", wanted.height, group), minimum.height, available.height, heightShare)
    }
}

// An extent that fits the screen; the minimum wins over the screen. Pixels.
function fitted(wanted, minimum, available, share) {
    return Math.max(minimum, Math.min(wanted, available * share))
}

// The geometry to restore, in whole pixels; null when nothing usable was stored. stored: x, y, width and height, or
// null; minimum and available: width and height; screens: the application's; barHeight: from the upper edge of the
// window to the lower edge of its title bar.
function restored(stored, minimum, available, screens, barHeight) {
    if (!stored || stored.width <= 0 || stored.height <= 0)
        return null
    var geometry = {
        x: Math.round(stored.x),
        y: Math.round(stored.y),
        width: Math.round(fitted(stored.width, minimum.width, available.width, widthShare)),
        height: Math.round(fitted(stored.height, minimum.height, available.height, heightShare))
    }
    return _reachable(geometry, screens, barHeight)
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

// The pixels that a range has in common with another one. Both are given by start and extent.
function _shared(start, extent, otherStart, otherExtent) {
    return Math.min(start + extent, otherStart + otherExtent) - Math.max(start, otherStart)
}

// A window whose title bar cannot be grabbed cannot be moved either: its screen may be gone. Such a window goes to
// the upper left corner of the first screen.
function _reachable(geometry, screens, barHeight) {
    for (var i = 0; i < screens.length; ++i) {
        var screen = screens[i]
        if (_shared(geometry.x, geometry.width, screen.virtualX, screen.width) >= gripWidth
                && _shared(geometry.y, barHeight, screen.virtualY, screen.height) >= barHeight * gripShare)
            return geometry
    }
    if (screens.length > 0) {
        geometry.x = screens[0].virtualX
        geometry.y = screens[0].virtualY
    }
    return geometry
}
