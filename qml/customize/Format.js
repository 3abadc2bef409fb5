// SPDX-License-Identifier: GPL-3.0-or-later
.pragma library

// What stands for a value that is not known.
var noValue = "--"
var noTime = "00:00:00"

// A value with a fixed number of decimals and its unit appended as given; "--" when it is not a finite number.
function formatMetric(value, digits, unit) {
    var number = Number(value)
    return isFinite(number) ? fixed(number, digits) + unit : noValue
}

// A finite number with a fixed number of decimals. A negative number that rounds to zero has no sign.
function fixed(number, digits) {
    var text = number.toFixed(digits)
    return Number(text) === 0 ? text.replace("-", "") : text
}

// Compares two numbers as 32-bit floats. The instrument sends floats, and the float nearest to 0.3 is larger than
// the number 0.3. False when one of them is not a number.
function isAtMost(value, limit) {
    return Math.fround(value) <= Math.fround(limit)
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
