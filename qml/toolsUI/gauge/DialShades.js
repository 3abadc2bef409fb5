// SPDX-License-Identifier: GPL-3.0-or-later
.pragma library

// Colours of the painted dial. A gradient is a list of [place, colour]; those of the panel go from its edge inwards.

var rimShades = [[0, "#4A5A66"], [0.08, "#2C3843"], [0.55, "#18212A"], [1, "#0A0F14"]]
var frameShades = [[0, "#26313B"], [0.5, "#151D25"], [1, "#1E2831"]]
var lipShades = [[0, "#04070A"], [0.6, "#0B1116"], [1, "#35434F"]]
var faceShades = [[0, "#18222B"], [0.42, "#101820"], [1, "#070B10"]]
var backlightShades = [[0, "rgba(64, 136, 164, 0.22)"], [0.5, "rgba(56, 120, 146, 0.15)"],
                       [0.75, "rgba(48, 106, 130, 0.08)"], [1, "rgba(40, 90, 110, 0)"]]
var sheenShades = [[0, "rgba(226, 244, 255, 0.085)"], [0.45, "rgba(226, 244, 255, 0.032)"], [1, "rgba(226, 244, 255, 0)"]]
var bossShades = [[0, shadow(0.75)], [0.6, shadow(0.38)], [1, shadow(0)]]
var labelColor = "#EEF5F7"
var grooveColor = "rgba(2, 5, 8, 0.42)"
var grooveFloorColor = "rgba(30, 46, 58, 0.28)"
var grooveLipColor = "rgba(150, 190, 208, 0.22)"
var arcColor = "rgba(214, 228, 236, 0.55)"
var glowOuterColor = "rgba(45, 190, 230, 0.13)"
var glowInnerColor = "rgba(51, 176, 232, 0.24)"
var glowBandShades = [[0, "rgba(28, 122, 214, 0.72)"], [0.45, "rgba(45, 190, 240, 0.86)"], [1, "rgba(122, 244, 255, 0.96)"]]
var glowCoreColor = "rgba(220, 255, 255, 0.44)"
var glowDotShades = [[0, "rgba(240, 255, 255, 0.95)"], [0.16, "rgba(170, 246, 255, 0.82)"],
                     [0.42, "rgba(70, 200, 240, 0.34)"], [1, "rgba(45, 190, 230, 0)"]]
var labelTickColor = "#E5EEF3"
var oddLabelTickColor = "#FF3242"
var tickColor = "rgba(210, 222, 228, 0.72)"

function shadow(opacity) {
    return "rgba(0, 0, 0, " + opacity + ")"
}
