// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.15

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
            required property int index
            // A place that stays is not computed again with each text.
            readonly property real _ratio: index < _labels.ticks.length ? _labels.ticks[index].ratio : 0

            x: Math.round(Format.clamp(_labels.plotX + _ratio * _labels.plotWidth - width / 2, 0,
                                       Math.max(0, _labels.width - width)))
            text: index < _labels.ticks.length ? _labels.ticks[index].label : ""
            font: _metrics.font
        }
    }
}
