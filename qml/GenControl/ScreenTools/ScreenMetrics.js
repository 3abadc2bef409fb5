// SPDX-License-Identifier: GPL-3.0-or-later
.pragma library

// Screen size, in device-independent pixels, that the design was drawn for without scaling.
var designWidth = 1440
var designHeight = 810
var smallestFitScale = 0.82

// A measured extent of the base font as a whole even number of pixels, so that halves stay whole.
function evenExtent(measured) {
    return 2 * Math.round(measured / 2)
}

// How much the interface shrinks to fit the available screen: 0.82 to 1.
function fitScale(availableWidth, availableHeight) {
    return Math.max(smallestFitScale, Math.min(1, availableWidth / designWidth, availableHeight / designHeight))
}

function isCompactDesktop(isMobile, availableWidth, availableHeight) {
    return !isMobile && (availableWidth < 1366 || availableHeight < 760)
}

// Side of a comfortable touch target in pixels; density in pixels per millimetre. On a screen so small
// that the target would fill more than 15 % of its height, three text lines have to do.
function minTouchPixels(millimeters, density, fontHeight, screenHeight) {
    var pixels = Math.round(millimeters * density)
    return pixels / screenHeight > 0.15 ? fontHeight * 3 : pixels
}

// Odd side of a check or radio indicator, so that its mark has a middle pixel.
function indicatorSize(fontHeight, isMobile) {
    return 2 * Math.floor(fontHeight * (isMobile ? 1.5 : 1) / 2) + 1
}

function platformPointSize(isiOS, isMobile, isTinyScreen, screenWidth, defaultPointSize) {
    if (isiOS)
        return screenWidth < 570 ? 12 : 14
    if (isMobile)
        return isTinyScreen ? 11 : 14
    return defaultPointSize
}
