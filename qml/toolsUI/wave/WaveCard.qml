// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.15
import GenControl.ScreenTools 1.0

import "../../customize"
import "../../customize/Format.js" as Format

/// A value of the page's head with its title.
Rectangle {
    id: _card

    property string title: ""
    property string value: ""
    property color accent: PageStyle.valueText
    /// Size of the value in points.
    property real valueSize: 18
    /// Low pages keep their height for the chart: less room around the texts.
    property bool low: false
    /// Opacity of the window's background, 0 to 1; the fills are multiplied with it.
    property real backgroundOpacity: 1

    readonly property real _dfw: ScreenTools.defaultFontPixelWidth

    implicitHeight: Math.ceil(_titleMetrics.height + _valueMetrics.height) + _dfw * (low ? 0.6 : 1.6)
    radius: 6
    color: Format.withAlpha(PageStyle.card, backgroundOpacity)
    border.width: 1
    border.color: Format.withAlpha(PageStyle.cardBorder, backgroundOpacity)

    Accessible.role: Accessible.StaticText
    Accessible.name: title + " " + value

    Rectangle {
        anchors.left: parent.left
        anchors.leftMargin: 1
        anchors.verticalCenter: parent.verticalCenter
        width: 3
        height: parent.height * 0.5
        radius: 1.5
        color: _card.accent
        opacity: 0.85
    }

    // The card is as high as its texts at full size, also where a long value is drawn smaller.
    FontMetrics {
        id: _titleMetrics

        font.family: GenFontManager.mainFontFamily
        font.pointSize: 9
    }

    FontMetrics {
        id: _valueMetrics

        font.family: GenFontManager.mainFontFamily
        font.pointSize: _card.low ? Math.round(_card.valueSize * 0.72) : _card.valueSize
    }

    Column {
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.leftMargin: _card._dfw * 1.4
        anchors.rightMargin: _card._dfw * 0.6
        anchors.verticalCenter: parent.verticalCenter

        WaveText {
            width: parent.width
            height: _titleMetrics.height
            text: _card.title
            font: _titleMetrics.font
            elide: Text.ElideRight
            rightPadding: -PageStyle.roundingSlack
        }
        WaveText {
            width: parent.width
            height: _valueMetrics.height
            text: _card.value
            color: _card.accent
            font: _valueMetrics.font
            fontSizeMode: Text.HorizontalFit
            minimumPointSize: 9
            elide: Text.ElideRight
            rightPadding: -PageStyle.roundingSlack
            verticalAlignment: Text.AlignVCenter
        }
    }
}
