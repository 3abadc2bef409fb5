// SPDX-License-Identifier: GPL-3.0-or-later
.pragma library

// Rules of the charging dashboard. Voltages in volts, lengths in device-independent pixels.

// Above this input voltage the charger has left the 5 V that every one delivers.
var fastChargeVoltage = 5.5
// Full level of a signal line: no line carries more than the bus at rest.
var lineFullScale = 5
var smallestPointSize = 10

function isFastCharge(typeCInputVoltage) {
    return typeCInputVoltage > fastChargeVoltage
}

// Level of a signal line, 0 to 1; 0 for what is no finite number.
function lineLevel(voltage) {
    return isFinite(voltage) ? Math.max(0, Math.min(1, voltage / lineFullScale)) : 0
}

function isCompact(width, height, fontPixelWidth) {
    return width < fontPixelWidth * 92 || height < fontPixelWidth * 64
}

function contentScale(width, height) {
    return Math.max(0.73, Math.min(1, width / 1180, height / 680))
}

function scaledPoint(size, scale) {
    return Math.max(smallestPointSize, size * scale)
}

// Size, in points, of a main value in a card of the given size: at least `smallest`, larger when the card
// leaves room for seven characters.
function metricPoint(smallest, cardWidth, cardHeight) {
    var pointsPerPixel = 0.75
    return Math.max(smallest, Math.round(pointsPerPixel * Math.min(cardHeight * 0.27, cardWidth * 0.17)))
}
