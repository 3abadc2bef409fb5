// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import GenControl.ScreenTools 1.0

import "../../customize"

/// A value of the page's head with its title.
Rectangle {
    id: _card

    property Item page
    property string title: ""
    property string value: ""
    property color accent: PageStyle.valueText

    readonly property real _dfw: ScreenTools.defaultFontPixelWidth
    // Low pages keep their height for the chart.
    readonly property bool _low: page.height < _dfw * 62

    implicitHeight: Math.ceil(_titleMetrics.height + _valueMetrics.height) + _dfw * (_low ? 0.6 : 1.6)
    radius: 6
    color: page.bgColor(PageStyle.card, 1)
    border.width: 1
    border.color: page.bgColor(PageStyle.cardBorder, 1)

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
        font.pointSize: _card._low ? Math.round(_card.page._valueSize * 0.72) : _card.page._valueSize
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
