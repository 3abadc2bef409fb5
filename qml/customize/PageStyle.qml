// SPDX-License-Identifier: GPL-3.0-or-later
pragma Singleton

import QtQuick 2.12

/// The theme: every colour of the interface that the palette (GenToolbox.genPalette) does not have, and shared sizes.
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

    // The window and its title bar.
    readonly property color windowAccent: Qt.rgba(0.22, 0.88, 0.82, 1)
    readonly property color toggleFill: Qt.rgba(0.1, 0.2, 0.24, 1)
    readonly property color toggleBorderHover: Qt.rgba(0.36, 1, 0.9, 0.78)
    readonly property color textHover: "#FFFFFF"
    readonly property color backdropShield: Qt.rgba(0.02, 0.06, 0.08, 1)
    readonly property color shadow: "black"
    readonly property color titleBarHover: "red"
    readonly property color titleBarHoverPicture: "white"
    readonly property color dialogShade: "#80000000"

    // Controls.
    readonly property color sliderTone: "#2FAFA4"
    readonly property color sliderDisabled: "#46535E"
    readonly property color sliderHandle: "#EAF2F7"
    readonly property color switchTrack: Qt.rgba(0.27, 0.27, 0.27, 1)
    readonly property color switchBorder: Qt.rgba(0.5, 0.5, 0.5, 1)
    readonly property color switchBorderOn: Qt.rgba(0.2, 0.91, 0.76, 1)
    readonly property color switchKnob: "gray"
    readonly property color switchKnobOn: "#32E8C3"
    readonly property color field: "#2b2b2b"
    readonly property color fieldBorder: "#666"
    readonly property color fieldPlaceholder: "#8A8A8A"
    readonly property color fieldIcon: "black"
    readonly property color fieldIconFocus: "#655DF5"
    readonly property color fieldButtonHover: "#1fffffff"
    readonly property color fieldButtonPressed: "#33ffffff"
    readonly property color fieldButtonPicture: "#B8C2CC"
    readonly property color comboboxBorder: "#999"
    readonly property color comboboxArrow: "#ddd"
    readonly property color comboboxArrowPressed: "#ccc"
    readonly property color buttonPicture: "white"
    // Idle flat buttons, heads of tables, tool tips.
    readonly property color idleFill: "#1A252E"
    readonly property color touchAreaFrame: "red"

    // The page "System Settings".
    readonly property color settingsTop: "#0C1521"
    readonly property color settingsBottom: "#101114"
    readonly property color settingsFrame: "#151A20"
    readonly property color settingsFrameBorder: "#2A313A"
    readonly property color settingsHero: "#183244"
    readonly property color settingsHeroAccent: "#4DD4E4"
    readonly property color settingsInset: "#000000"
    readonly property color settingsCard: "#1A1E24"
    readonly property color settingsCardBorder: "#353C46"
    readonly property color settingsTitle: "#F2F6F8"
    readonly property color settingsText: "#D9E0E6"
    readonly property color settingsDim: "#90A0AD"
    readonly property color settingsOk: "#44D37E"
    readonly property color settingsWarning: "#B8BDC4"
    readonly property color settingsFailure: "yellow"
    readonly property color settingsAccent: "#3EC7DA"
    readonly property color settingsGroove: "#0E1216"

    // The page "User Settings".
    readonly property color accountTop: "#0E1826"
    readonly property color accountBottom: "#111111"
    readonly property color accountHero: "#153044"
    readonly property color accountHeroAccent: "#49C6D9"
    readonly property color accountForm: "#1B1D22"
    readonly property color accountFormBorder: "#383D46"
    readonly property color accountText: "#F3F6F8"
    readonly property color accountDim: "#9BA8B5"
    readonly property color accountLink: "#9ed0ff"

    // Colours of the measurement pages.
    readonly property color rangePanelTop: "#1D2A34"
    readonly property color infoPanelTop: "#1B2630"
    readonly property color oddRow: "#141F28"
    readonly property color selectedRow: "#17323A"
    readonly property color menuBorder: "#3A4D5B"
    readonly property color badgeOnAccent: "#0C2F31"
    readonly property color progressBar: "#87D06D"
    readonly property color progressGroove: "#2F2E30"

    // Curves of the wave page. The voltage is brighter on the main chart than in labels and in the overview.
    readonly property color waveVoltage: "#32E8C3"
    readonly property color waveLiveVoltage: "cyan"
    readonly property color waveStandard: "#3A7AFE"
    readonly property color waveCurrent: "#ff4952"
    readonly property color waveText: "#8EA0AE"
    readonly property color waveGridColumn: "#16222C"
    readonly property color waveGridRow: "#1C2A35"
    readonly property color waveCursor: "#C8D6E0"
    readonly property color waveTipBorder: "#3C5262"

    readonly property color chargeTitle: "#D8E0E8"
    readonly property color chargeValue: "#F1F6FA"
    readonly property color chargeDim: "#8E9AA8"
    readonly property color chargeRed: "#DF6459"
    readonly property color chargeOffline: "#6D747D"

    readonly property color dialValue: "#F7FCFD"
    readonly property color dialUnit: "#D8E3E8"
    readonly property color dialReadout: Qt.rgba(0.04, 0.065, 0.085, 0.74)
    readonly property color dialReadoutBorder: Qt.rgba(0.55, 0.72, 0.8, 0.16)
    readonly property color needle: "#FF2638"
    readonly property color needleHalo: Qt.rgba(1, 38 / 255, 56 / 255, 0.34)
    readonly property color hubRim: "#4B5B67"
    readonly property color hubTop: "#55636E"
    readonly property color hubMiddle: "#222C35"
    readonly property color hubBottom: "#0E141A"
    readonly property color hubRecessTop: "#10171D"
    readonly property color hubRecessBottom: "#3A4752"
    readonly property color hubCap: "#F2F4F1"

    // Layouts round widths to whole pixels. A text that is shortened where it does not fit gets this many pixels more
    // room, by a smaller padding, so that rounding alone does not shorten it.
    readonly property real roundingSlack: 0.5
}
