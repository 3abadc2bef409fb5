// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.15

import "../../customize"
import "../../customize/Format.js" as Format

/// The labels of a value axis beside the plot. The chart's own labels turn into dots where they are too close;
/// these leave out every second or third one.
Item {
    id: _labels

    property real minimum: 0
    property real maximum: 1
    /// At least 2.
    property int tickCount: 6
    property int decimals: 1
    property string unit: ""
    property color color: PageStyle.valueText
    property int pixelSize: 12
    property bool alignRight: false

    readonly property real _pitch: height / (tickCount - 1)
    readonly property int _step: Math.max(1, Math.ceil(_metrics.height / Math.max(1, _pitch)))

    implicitWidth: Math.ceil(_widest.width)

    FontMetrics {
        id: _metrics

        font.family: GenFontManager.mainFontFamily
        font.pixelSize: _labels.pixelSize
    }

    TextMetrics {
        id: _widest

        font: _metrics.font
        text: Format.formatMetric(88.8, _labels.decimals, _labels.unit)
    }

    Repeater {
        model: _labels.tickCount

        WaveText {
            required property int index
            readonly property real _ratio: index / (_labels.tickCount - 1)

            visible: index % _labels._step === 0
            anchors.right: _labels.alignRight ? parent.right : undefined
            y: Math.round(_labels.height * (1 - _ratio) - height / 2)
            text: Format.formatMetric(_labels.minimum + _ratio * (_labels.maximum - _labels.minimum), _labels.decimals,
                                      _labels.unit)
            color: _labels.color
            font: _metrics.font
        }
    }
}
