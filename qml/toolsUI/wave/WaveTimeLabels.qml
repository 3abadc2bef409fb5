// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12

import "../../customize"
import "../../customize/Format.js" as Format

/// Time labels under a chart, each centred below its place on the time axis as far as there is room.
Item {
    id: _labels

    /// [{ratio, label}], ratio 0 to 1 of the plot's width.
    property var ticks: []
    property real plotX: 0
    property real plotWidth: 0

    implicitHeight: _metrics.height

    TextMetrics {
        id: _metrics

        font.family: GenFontManager.mainFontFamily
        font.pixelSize: 12
        text: "00:00:00"
    }

    Repeater {
        // The number of labels, not the labels: new texts then need no new items.
        model: _labels.ticks.length

        WaveText {
            readonly property var _tick: _labels.ticks[index] || { "ratio": 0, "label": "" }

            x: Math.round(Format.clamp(_labels.plotX + _tick.ratio * _labels.plotWidth - width / 2, 0,
                                       Math.max(0, _labels.width - width)))
            text: _tick.label
            font: _metrics.font
        }
    }
}
