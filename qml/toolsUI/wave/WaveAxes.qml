// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.15

import "../../customize/Format.js" as Format
import "WaveView.js" as WaveView

/// Limits of the value axes in volts and amperes: fixed ones, or those that hold everything in view.
QtObject {
    property bool autoScale: false
    /// Full scales of the current axis to choose from.
    property var rangeOptions: []
    property int rangeIndex: 3

    property real voltageMin: WaveView.voltageFloor
    property real voltageMax: WaveView.voltageCeiling
    property real currentMin: 0
    property real currentMax: 8

    /// Makes one of the options the full scale; an index out of range selects the nearest option.
    function useRange(index) {
        rangeIndex = Format.clamp(index, 0, rangeOptions.length - 1)
        currentMax = rangeOptions[rangeIndex]
    }

    /// Makes the smallest option that holds `value` amperes the full scale.
    function useRangeFor(value) {
        useRange(WaveView.rangeIndexFor(value, rangeOptions))
    }

    /// Brings the limits up to date for `count` samples from index `start` on, and the whole comparison curve.
    function fit(voltages, currents, comparison, start, count) {
        var limits = WaveView.fixedVoltageRange()
        if (autoScale) {
            limits = WaveView.rangeOf(comparison, 0, comparison.length, WaveView.rangeOf(voltages, start, count, limits))
            limits = WaveView.automaticVoltageAxis(limits)
            useRangeFor(WaveView.rangeOf(currents, start, count, { "min": 0, "max": 0 }).max)
        } else {
            useRange(rangeIndex)
        }
        voltageMin = limits.min
        voltageMax = limits.max
    }
}
