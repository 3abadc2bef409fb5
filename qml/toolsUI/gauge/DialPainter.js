// SPDX-License-Identifier: GPL-3.0-or-later
.pragma library
.import "DialShades.js" as Shades
.import "GaugeScale.js" as Scale

// Paints what never moves on the needle gauge. dial is the result of GaugeScale.geometry().

function paintFace(context, dial) {
    var corner = 26 * dial.unit
    var bezel = 7 * dial.unit
    _paintShadow(context, dial, corner)
    _fillPanel(context, dial, 0, corner, Shades.rimShades)
    _fillPanel(context, dial, 1.2, corner, Shades.frameShades)
    _fillPanel(context, dial, bezel - 1.6, corner, Shades.lipShades)
    _fillPanel(context, dial, bezel, corner, Shades.faceShades)
    context.save()
    _roundedPath(context, dial, bezel, corner)
    context.clip()
    _paintBacklight(context, dial)
    _paintInnerShadow(context, dial, bezel)
    _paintSheen(context, dial, bezel)
    context.restore()
    _paintGroove(context, dial)
    _paintTicks(context, dial)
    _paintBoss(context, dial)
}

function paintLabels(context, dial, displayRangeMax, fontFamily) {
    context.fillStyle = Shades.labelColor
    context.textAlign = "center"
    context.textBaseline = "middle"
    context.font = Math.max(1, Math.round(18 * dial.unit)) + 'px "' + fontFamily + '"'
    for (var i = 0; i <= 10; ++i) {
        var angle = Scale.angleOfRatio(i / 10)
        context.save()
        context.translate(dial.centerX, dial.centerY)
        context.rotate(angle + Math.PI / 2)
        context.fillText(Scale.labelText(i / 10, displayRangeMax), 0, -(dial.radius + 27 * dial.unit))
        context.restore()
    }
}

// The lit band over the whole scale; the gauge uncovers it up to the value.
function paintGlow(context, dial) {
    var radius = dial.radius - 12 * dial.unit
    var gradient = context.createLinearGradient(dial.centerX - radius, 0, dial.centerX + radius, 0)
    _addStops(gradient, Shades.glowBandShades)
    var strokes = [[30, Shades.glowOuterColor], [21, Shades.glowInnerColor], [12, gradient], [2.4, Shades.glowCoreColor]]
    context.lineCap = "butt"
    for (var i = 0; i < strokes.length; ++i)
        _strokeArc(context, dial, radius, strokes[i][0] * dial.unit, strokes[i][1])
}

// The needle around its pivot, pointing along the x axis.
function paintNeedle(context, dial, haloColor, color) {
    var strokes = [[4.5, haloColor], [2.2, color]]
    context.lineCap = "round"
    for (var i = 0; i < strokes.length; ++i) {
        context.beginPath()
        context.moveTo(-24 * dial.unit, 0)
        context.lineTo(dial.radius, 0)
        context.lineWidth = Math.max(1, strokes[i][0] * dial.unit)
        context.strokeStyle = strokes[i][1]
        context.stroke()
    }
}

// The light at the end of the lit band, in a square of the given side.
function paintGlowDot(context, side) {
    var center = side / 2
    var gradient = context.createRadialGradient(center, center, 0, center, center, center)
    context.fillStyle = _addStops(gradient, Shades.glowDotShades)
    context.fillRect(0, 0, side, side)
}

function _roundedPath(context, dial, inset, corner) {
    context.beginPath()
    context.roundedRect(dial.x + inset, dial.y + inset, dial.width - 2 * inset, dial.height - 2 * inset,
                        Math.max(0, corner - inset), Math.max(0, corner - inset))
}

function _addStops(gradient, shades) {
    for (var i = 0; i < shades.length; ++i)
        gradient.addColorStop(shades[i][0], shades[i][1])
    return gradient
}

function _fillPanel(context, dial, inset, corner, shades) {
    _roundedPath(context, dial, inset, corner)
    context.fillStyle = _addStops(context.createLinearGradient(0, dial.y, 0, dial.y + dial.height), shades)
    context.fill()
}

// A soft edge around the panel, built from rings that fade outwards.
function _paintShadow(context, dial, corner) {
    var rings = 5
    context.lineWidth = 1.4
    for (var i = 1; i <= rings; ++i) {
        _roundedPath(context, dial, -i * 0.7, corner)
        context.strokeStyle = Shades.shadow(0.3 * (1 - i / (rings + 1)))
        context.stroke()
    }
}

// Light from behind the scale, fading towards the frame.
function _paintBacklight(context, dial) {
    var glow = context.createRadialGradient(dial.centerX, dial.centerY, 0, dial.centerX, dial.centerY,
                                            dial.radius * 1.5)
    context.fillStyle = _addStops(glow, Shades.backlightShades)
    context.fillRect(dial.x, dial.y, dial.width, dial.height)
}

// The face lies below its frame: the frame throws a shadow on the upper and side edges.
function _paintInnerShadow(context, dial, bezel) {
    var depth = 22 * dial.unit
    var edges = [[0, dial.y + bezel, 0, dial.y + bezel + depth, 0.55],
                 [dial.x + bezel, 0, dial.x + bezel + depth, 0, 0.34],
                 [dial.x + dial.width - bezel, 0, dial.x + dial.width - bezel - depth, 0, 0.34]]
    for (var i = 0; i < edges.length; ++i) {
        var edge = edges[i]
        var shade = context.createLinearGradient(edge[0], edge[1], edge[2], edge[3])
        context.fillStyle = _addStops(shade, [[0, Shades.shadow(edge[4])], [0.35, Shades.shadow(edge[4] * 0.34)], [1, Shades.shadow(0)]])
        context.fillRect(dial.x, dial.y, dial.width, dial.height)
    }
}

// Light from above in the glass: strongest at the upper edge, gone before the readout.
function _paintSheen(context, dial, bezel) {
    var sheen = context.createLinearGradient(0, dial.y + bezel, 0, dial.y + dial.height * 0.5)
    context.fillStyle = _addStops(sheen, Shades.sheenShades)
    context.fillRect(dial.x, dial.y, dial.width, dial.height * 0.5)
}

function _strokeArc(context, dial, radius, width, style) {
    context.beginPath()
    context.arc(dial.centerX, dial.centerY, radius, Scale.startAngle, Scale.endAngle, false)
    context.lineWidth = width
    context.strokeStyle = style
    context.stroke()
}

// The channel in which the band lights up, with a lit lower lip.
function _paintGroove(context, dial) {
    var unit = dial.unit
    context.lineCap = "butt"
    _strokeArc(context, dial, dial.radius - 12 * unit, 32 * unit, Shades.grooveColor)
    _strokeArc(context, dial, dial.radius - 12 * unit, 29 * unit, Shades.grooveFloorColor)
    _strokeArc(context, dial, dial.radius - 28.5 * unit, 1, Shades.grooveLipColor)
    _strokeArc(context, dial, dial.radius, 1.2, Shades.arcColor)
}

function _paintTicks(context, dial) {
    context.lineCap = "butt"
    for (var i = 0; i < Scale.tickCount; ++i) {
        var tick = Scale.tick(i)
        var angle = Scale.angleOfRatio(i / (Scale.tickCount - 1))
        var outer = dial.radius + tick.outer * dial.unit
        var inner = dial.radius + tick.inner * dial.unit
        context.beginPath()
        context.moveTo(dial.centerX + Math.cos(angle) * outer, dial.centerY + Math.sin(angle) * outer)
        context.lineTo(dial.centerX + Math.cos(angle) * inner, dial.centerY + Math.sin(angle) * inner)
        context.lineWidth = Math.max(0.8, tick.width * dial.unit)
        context.strokeStyle = tick.color
        context.stroke()
    }
}

// The recess in which the needle's hub sits.
function _paintBoss(context, dial) {
    var radius = 30 * dial.unit
    var recess = context.createRadialGradient(dial.centerX, dial.centerY, radius * 0.3, dial.centerX,
                                              dial.centerY, radius)
    context.beginPath()
    context.arc(dial.centerX, dial.centerY, radius, 0, 2 * Math.PI)
    context.fillStyle = _addStops(recess, Shades.bossShades)
    context.fill()
}
