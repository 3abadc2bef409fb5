// SPDX-License-Identifier: GPL-3.0-or-later
.pragma library
.import Instrument 1.0 as Link

// The functions of the multimeter: the mode that its readings carry, 1 to 5, and the layer1 of its screen, 0 to 4.

var none = Link.MultimeterReading.None
var diode = Link.MultimeterReading.Diode
var buzzer = Link.MultimeterReading.Buzzer
var functionCount = Link.Instrument.BuzzerFunction + 1
var screen = Link.Instrument.MultimeterScreen
var layerNotGiven = Link.Instrument.LayerNotGiven
var fromHost = Link.Instrument.HostRequest

function layer1OfMode(mode) {
    return mode >= 1 && mode <= functionCount ? mode - 1 : layerNotGiven
}

// The mode of a UI-control packet's layers; 0 when they name no function of the multimeter.
function modeOfLayers(layer0, layer1) {
    return layer0 === screen && layer1 >= 0 && layer1 < functionCount ? layer1 + 1 : none
}

// The function to show once a reading of mode `measured` has arrived. The instrument reports the buzzer
// as diode, so such a reading does not leave the buzzer.
function modeAfterReading(selected, measured) {
    if (measured <= none)
        return selected
    if (measured === diode && (selected === diode || selected === buzzer))
        return selected
    return measured
}

// Where the left or upper edge of a menu goes so that it stays inside the page.
function menuEdge(wanted, menuSize, pageSize) {
    var margin = 8
    return Math.max(margin, Math.min(wanted, pageSize - menuSize - margin))
}
