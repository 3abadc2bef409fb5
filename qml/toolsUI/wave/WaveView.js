// SPDX-License-Identifier: GPL-3.0-or-later
.pragma library

// The arithmetic of the wave page, apart from its drawing. Indices and counts are samples, 0 the oldest;
// plot positions are pixels.

.import "../../customize/Format.js" as Format

// What the page shows for a time that is not known.
var unknownTime = "--:--:--"

// Factors of one zoom step, in samples shown.
var zoomInFactor = 0.82
var zoomOutFactor = 1.22

// Fixed limits of the voltage axis in volts; the automatic axis is never narrower.
var voltageFloor = 0
var voltageCeiling = 6

// Label spacing of a time axis in widths of the default font's character.
var timeLabelPitch = 16

function _fraction(position, origin, extent) {
    return extent > 0 ? Format.clamp((position - origin) / extent, 0, 1) : 0
}

// How many samples leave an array of `count` samples when it outgrows `limit`: a tenth at once, so that
// the array is seldom moved; 0 while it fits.
function trimCount(count, limit) {
    return count > limit ? Math.max(60, Math.floor(limit * 0.1)) : 0
}

function maxStart(sampleCount, viewCount) {
    return Math.max(0, sampleCount - viewCount)
}

function clampStart(start, sampleCount, viewCount) {
    return Format.clamp(start, 0, maxStart(sampleCount, viewCount))
}

function visibleCount(start, sampleCount, viewCount) {
    return Math.max(0, Math.min(viewCount, sampleCount - start))
}

// The view count after one step in (positive) or out.
function zoomedCount(viewCount, step, minCount, maxCount) {
    return Format.clamp(Math.round(viewCount * (step > 0 ? zoomInFactor : zoomOutFactor)), minCount, maxCount)
}

function centreOf(start, viewCount) {
    return start + Math.floor(viewCount / 2)
}

// The start of a view of viewCount samples around the sample `centre`, not clamped.
function startAround(centre, viewCount) {
    return centre - Math.floor(viewCount / 2)
}

// The sample that a keyboard or button step moves the view by.
function cursorStep(viewCount) {
    return Math.max(1, Math.floor(viewCount / 3))
}

function middleVisible(start, visible) {
    return start + Math.floor(Math.max(0, visible - 1) / 2)
}

// The view start of a drag by pixelDelta that began at startIndex, not clamped.
function draggedStart(startIndex, pixelDelta, plotWidth, viewCount) {
    return plotWidth > 0 ? startIndex - Math.round(pixelDelta / plotWidth * viewCount) : startIndex
}

function timeAxis(start, viewCount) {
    return { "min": start, "max": Math.max(start + viewCount - 1, start + 1) }
}

// The smallest and largest of samples[first .. first + count - 1] and of `range`; what is no number is
// passed over.
function rangeOf(samples, first, count, range) {
    var result = { "min": range.min, "max": range.max }
    var end = Math.min(samples.length, first + count)
    for (var i = Math.max(0, first); i < end; ++i) {
        if (samples[i] < result.min)
            result.min = samples[i]
        if (samples[i] > result.max)
            result.max = samples[i]
    }
    return result
}

// The limits that the range of an automatic voltage axis starts from.
function fixedVoltageRange() {
    return { "min": voltageFloor, "max": voltageCeiling }
}

// The voltage axis that shows everything in `range` with half a volt to spare, in whole volts.
function automaticVoltageAxis(range) {
    return { "min": Math.max(0, Math.floor(range.min - 0.5)), "max": Math.max(Math.ceil(range.max + 0.5), 1) }
}

// The index of the first option that holds `value`, else of the last; no number and negative count as 0.
function rangeIndexFor(value, options) {
    var needed = value > 0 ? value : 0
    for (var i = 0; i < options.length; ++i) {
        if (Format.isAtMost(needed, options[i]))
            return i
    }
    return options.length - 1
}

// How many labels fit, between minCount and maxCount.
function responsiveTickCount(pixelWidth, maxCount, minCount, characterWidth) {
    var fitting = Math.floor(pixelWidth / Math.max(1, characterWidth * timeLabelPitch)) + 1
    return Math.max(minCount, Math.min(maxCount, fitting))
}

// `count` (at least 2) labels spread evenly over spanSec seconds from startSec: [{ratio, label}].
function timeTicks(count, startSec, spanSec) {
    var ticks = []
    for (var i = 0; i < count; ++i) {
        var ratio = i / (count - 1)
        ticks.push({ "ratio": ratio, "label": Format.formatSeconds(startSec + ratio * spanSec) })
    }
    return ticks
}

// The seconds that a view of viewCount samples spans; one interval at least.
function spanSec(viewCount, intervalSec) {
    return Math.max((viewCount - 1) * intervalSec, intervalSec)
}

// Every how many samples the overview shows one, so that it shows at most maxPoints.
function previewStride(sampleCount, maxPoints) {
    return Math.max(1, Math.ceil(sampleCount / maxPoints))
}

// The sample at position x of an overview whose plot starts at plotX.
function sampleAtPreview(x, plotX, plotWidth, sampleCount) {
    return Math.round(_fraction(x, plotX, plotWidth) * Math.max(0, sampleCount - 1))
}

// Width of the part of the overview that the view shows; wide enough to be seen and caught.
function selectionWidth(plotWidth, viewCount, sampleCount) {
    if (sampleCount <= 0)
        return plotWidth
    return Math.min(plotWidth, Math.max(Math.min(14, plotWidth),
                                        plotWidth * Math.min(viewCount, sampleCount) / sampleCount))
}

function selectionX(plotX, plotWidth, width, start, lastStart) {
    return plotX + (lastStart > 0 ? (plotWidth - width) * start / lastStart : 0)
}

// When a sample was taken, in the instrument's seconds. lastSec is the time of the newest sample. interruptions: where
// the connection was lost, oldest first; the samples below index `end` count back from the `lastSec` of that moment.
function sampleTimeSec(index, sampleCount, lastSec, intervalSec, interruptions) {
    var run = { "end": sampleCount, "lastSec": lastSec }
    for (var i = interruptions.length - 1; i >= 0 && index < interruptions[i].end; --i)
        run = interruptions[i]
    return Math.max(0, run.lastSec - (run.end - 1 - index) * intervalSec)
}

// The interruptions with another one after sampleCount samples, if samples were taken since the last one.
function interruptedAt(interruptions, sampleCount, lastSec) {
    var known = interruptions.length > 0 ? interruptions[interruptions.length - 1].end : 0
    return sampleCount > known ? interruptions.concat([{ "end": sampleCount, "lastSec": lastSec }]) : interruptions
}

// The interruptions after the oldest `count` samples were removed.
function trimmedInterruptions(interruptions, count) {
    return interruptions.map(function(run) { return { "end": run.end - count, "lastSec": run.lastSec } })
                        .filter(function(run) { return run.end > 0 })
}

// The sample at pixel x of a plot (x, y, width and height) that shows the given view, not clamped.
function sampleAt(x, plot, start, viewCount) {
    var axis = timeAxis(start, viewCount)
    return Math.round(axis.min + (x - plot.x) / Math.max(1, plot.width) * (axis.max - axis.min))
}

// The pixel of such a plot at which a sample lies.
function pixelX(index, plot, start, viewCount) {
    var axis = timeAxis(start, viewCount)
    return plot.x + (index - axis.min) / (axis.max - axis.min) * plot.width
}

// The pixel at which a value lies on an axis from min to max; a value that is not a number counts as 0.
function pixelY(value, plot, min, max) {
    return plot.y + (max - (Number(value) || 0)) / (max - min) * plot.height
}

// The comparison curve that is shown until one is loaded: a 5 V supply with ripple, in volts.
function generatedCurve(count) {
    var curve = []
    for (var k = 0; k < count; ++k) {
        var phase = Math.PI * k / Math.max(1, count - 1)
        curve.push(4.6 + 0.35 * Math.sin(2 * phase) + 0.08 * Math.sin(5 * phase))
    }
    return curve
}

function contains(rect, x, y) {
    return x >= rect.x && x <= rect.x + rect.width && y >= rect.y && y <= rect.y + rect.height
}

// The path of a file that a dialog gives as URL: "file:///home/a%20b", "file:///C:/a", "file://server/a".
function localPath(url) {
    var path = decodeURIComponent(String(url).replace(/^file:\/\//, ""))
    if (/^\/[A-Za-z]:/.test(path))
        return path.substring(1)
    return String(url).indexOf("file://") === 0 && path.charAt(0) !== "/" ? "//" + path : path
}
