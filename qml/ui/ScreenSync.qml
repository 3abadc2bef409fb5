// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import GenToolbox 1.0
import Instrument 1.0

/// Keeps the page and the instrument's screen the same: a chosen page changes the screen, a changed screen the page.
Item {
    id: _root

    // Set while a page change comes from the instrument. It must not go back there.
    property bool suppressed: false
    // layer0 for a page without a screen; in the other layers of a packet, "no change".
    readonly property int noScreen: Instrument.LayerNotGiven
    // The instrument's screen of each page, in page order.
    readonly property var screens: [Instrument.MainSupplyScreen, Instrument.WaveScreen, Instrument.MultimeterScreen,
        Instrument.TypeCScreen]

    /// The instrument has changed its screen: show this page without a signal of its own.
    signal pageRequested(int index)

    function screenOfPage(index) {
        return index >= 0 && index < screens.length ? screens[index] : noScreen
    }

    function pageOfScreen(layer0) {
        return screens.indexOf(layer0)
    }

    /// Asks the instrument to show the screen of the page.
    function sendPage(index) {
        var layer0 = screenOfPage(index)
        if (suppressed || layer0 === noScreen)
            return
        GenToolbox.hidLink.sendUiControlPacket(layer0, noScreen, noScreen, noScreen, Instrument.HostRequest)
    }

    /// Follows a UI-control packet. Packets that are not from the instrument, or name a screen without a page, do
    /// nothing.
    function followInstrument(direction, layer0) {
        var page = pageOfScreen(layer0)
        if (direction !== Instrument.InstrumentReport || page < 0)
            return
        suppressed = true
        pageRequested(page)
        suppressed = false
    }

    Connections {
        target: GenToolbox.hidLink
        function onUiControlRequested(direction, layer0, layer1, layer2, layer3) {
            _root.followInstrument(direction, layer0)
        }
    }
}
