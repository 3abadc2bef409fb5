// SPDX-License-Identifier: GPL-3.0-or-later
.pragma library

// What stands for a value that is not known.
var noValue = "--"
var noTime = "00:00:00"

// A value with a fixed number of decimals and its unit appended as given; "--" when it is not a finite number.
function formatMetric(value, digits, unit) {
    var number = Number(value)
    return isFinite(number) ? number.toFixed(digits) + unit : noValue
}

// Seconds as hh:mm:ss, part seconds cut off, negative as zero; hours may exceed 99. noTimeText (default
// "00:00:00") is the result for a value that is not a number.
function formatSeconds(value, noTimeText) {
    var number = Number(value)
    if (!isFinite(number))
        return noTimeText === undefined ? noTime : noTimeText
    var seconds = Math.max(0, Math.floor(number))
    return _twoDigits(Math.floor(seconds / 3600)) + ":" + _twoDigits(Math.floor(seconds / 60) % 60) + ":"
            + _twoDigits(seconds % 60)
}

// The value while connected, else not-a-number, which every formatter above shows as its empty state.
function ifConnected(connected, value) {
    return connected ? Number(value) : NaN
}

function clamp(value, low, high) {
    return Math.max(low, Math.min(high, value))
}

// A colour, given as colour or text, with its alpha replaced; alpha is clamped to 0..1.
function withAlpha(colorValue, alpha) {
    // Tinting with nothing returns the first colour unchanged, and makes a colour out of a text.
    var color = Qt.tint(colorValue, "transparent")
    return Qt.rgba(color.r, color.g, color.b, clamp(alpha, 0, 1))
}

// A colour with its own alpha multiplied by opacity (clamped to 0..1): transparent stays transparent.
function faded(colorValue, opacity) {
    var color = Qt.tint(colorValue, "transparent")
    return Qt.rgba(color.r, color.g, color.b, color.a * clamp(opacity, 0, 1))
}

function _twoDigits(number) {
    return number < 10 ? "0" + number : String(number)
}
