// SPDX-License-Identifier: GPL-3.0-or-later
pragma Singleton

import QtQuick 2.12

/// Colours and sizes that the pages share. The palette has the colours of the window and of the controls.
QtObject {
    readonly property color pageTop: "#101820"
    readonly property color pageBottom: "#070C11"
    readonly property color panel: "#141C24"
    readonly property color deepPanel: "#0D1319"
    readonly property color panelBorder: "#2B3A46"
    readonly property color card: "#111A22"
    readonly property color cardBorder: "#263642"

    readonly property color accentCyan: "#36E0D0"
    readonly property color accentBlue: "#4BC8FF"
    readonly property color accentGreen: "#7DE78E"
    readonly property color accentGold: "#F0C96B"
    readonly property color accentYellow: "#F0D36A"
    readonly property color accentRed: "#ff4952"

    readonly property color titleText: "#EAF2F7"
    readonly property color valueText: "#F7FBFE"
    readonly property color dimText: "#8FA1B1"
    // Text on a fill of an accent colour.
    readonly property color textOnAccent: "#061014"

    readonly property color focus: "#36E0D0"

    // Layouts round widths to whole pixels. A text that is shortened where it does not fit gets this many pixels more
    // room, by a smaller padding, so that rounding alone does not shorten it.
    readonly property real roundingSlack: 0.5
}
