// SPDX-License-Identifier: GPL-3.0-or-later
.pragma library
.import "../../customize/Format.js" as Format
.import "DialShades.js" as Shades

// The scale of the needle gauge: ranges, geometry, ticks and labels. Currents in amperes, lengths in
// device-independent pixels, angles in radians as a screen counts them: 0 to the right, clockwise.

var rangeOptions = [
    { label: "300mA", max: 0.3 },
    { label: "2.4A", max: 2.4 },
    { label: "6.0A", max: 6 },
    { label: "8.0A", max: 8 },
    { label: "Auto", max: -1 }
]
var autoRangeIndex = 4
var smallestRange = 0.3
var largestRange = 8

var startAngle = 1.09 * Math.PI
var endAngle = 1.91 * Math.PI
var tickCount = 101

// Lengths given in pixels hold from this dial height on; a smaller dial shrinks them in proportion, so
// that its labels stay inside the panel.
var referenceHeight = 400

// The glow falls back slowly once the current has stopped.
var glowRiseMs = 260
var glowFallMs = 980
var glowFallDelayMs = 190
var stoppedCurrent = 0.0005

// Returns the smallest range that shows a current, or the largest range when the current is not a number.
function autoRangeForCurrent(value) {
    for (var i = 0; i < rangeOptions.length; ++i) {
        if (Format.isAtMost(value, rangeOptions[i].max))
            return rangeOptions[i].max
    }
    return largestRange
}

// Full-scale value of a range option, of the automatic one for the given current.
function rangeMax(index, current) {
    var option = rangeOptions[index]
    if (option === undefined)
        return largestRange
    return option.max < 0 ? autoRangeForCurrent(current) : option.max
}

function clampedRangeIndex(index) {
    return Math.max(0, Math.min(rangeOptions.length - 1, index))
}

function fullScale(displayRangeMax) {
    return Math.max(smallestRange, displayRangeMax)
}

// Place of a current on the scale, 0 to 1.
function ratio(value, displayRangeMax) {
    var scale = fullScale(displayRangeMax)
    return Math.max(0, Math.min(scale, value)) / scale
}

function angleOfRatio(ratio) {
    return startAngle + (endAngle - startAngle) * ratio
}

function degrees(angle) {
    return angle * 180 / Math.PI
}

// The dial in an area of the given size: panel, centre and radius of the arc, and the unit that the
// lengths in pixels are multiplied with.
function geometry(width, height) {
    var dialWidth = Math.min(width * 1.035, height * 2.88)
    var dialHeight = Math.min(height * 1.035, dialWidth * 0.55)
    var top = height * 0.026
    return {
        x: (width - dialWidth) / 2,
        y: top,
        width: dialWidth,
        height: dialHeight,
        centerX: width / 2,
        centerY: top + dialHeight * 0.865,
        radius: Math.min(dialWidth * 0.405, dialHeight * 0.755),
        unit: Math.min(1, dialHeight / referenceHeight)
    }
}

// The largest dial whose panel, a little larger than its area, lies within the given size: in its middle.
function fittedGeometry(width, height) {
    var areaWidth = width / 1.035
    // Where the width decides, a higher area would only move the dial up.
    var areaHeight = Math.min(height / 1.061, width * 0.55 / 1.035)
    var dial = geometry(areaWidth, areaHeight)
    var right = (width - areaWidth) / 2
    var down = (height - areaHeight * 1.061) / 2
    dial.x += right
    dial.centerX += right
    dial.y += down
    dial.centerY += down
    return dial
}

// Tick i of 0..100: its ends as distances from the arc (outwards positive), colour and line width.
function tick(i) {
    if (i % 10 === 0)
        return { outer: 4, inner: -20, color: i % 20 === 10 ? Shades.oddLabelTickColor : Shades.labelTickColor, width: 2.2 }
    if (i % 5 === 0)
        return { outer: 3, inner: -17, color: Shades.tickColor, width: 1.5 }
    return { outer: 0, inner: -11, color: Shades.tickColor, width: 1 }
}

// Label at a ratio of the scale: milliamperes up to 300 mA, else amperes without superfluous decimals.
function labelText(ratio, displayRangeMax) {
    var scale = fullScale(displayRangeMax)
    var value = scale * ratio
    if (scale <= smallestRange)
        return (value * 1000).toFixed(0)
    if (Math.abs(value - Math.round(value)) < 1e-9)
        return value.toFixed(0)
    return value.toFixed(scale >= 6 ? 1 : 2)
}

function showsMilliamperes(displayRangeMax) {
    return displayRangeMax <= smallestRange
}

function displayValue(current, displayRangeMax) {
    if (!isFinite(current))
        return "--"
    return showsMilliamperes(displayRangeMax) ? Format.fixed(current * 1000, 1) : Format.fixed(current, 3)
}

function displayUnit(displayRangeMax) {
    return showsMilliamperes(displayRangeMax) ? "mA" : "A"
}

// True when the glow follows a new current at once. Otherwise it waits before it fades out.
function glowFollows(glow, next) {
    return next >= glow || !Format.isAtMost(next, stoppedCurrent)
}
