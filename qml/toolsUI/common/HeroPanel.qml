// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.15

import "../../customize"
import "../../customize/Format.js" as Format

/// The panel at the left of a settings page: what the page is for, then its own content, then some advice.
Rectangle {
    id: _root

    property color accent: PageStyle.accentCyan
    property color titleColor: PageStyle.valueText
    property color textColor: PageStyle.titleText
    property color dimColor: PageStyle.dimText
    property string badge
    property color badgeFill: "transparent"
    property string title
    property string subtitle
    property string highlightsTitle
    property var highlights: []
    /// Font sizes are multiplied with it and do not fall below 10 points.
    property real contentScale: 1

    default property alias content: _content.data

    readonly property real _margin: 18 * contentScale

    radius: 12
    border.width: 1
    border.color: Format.withAlpha(accent, 0.28)
    clip: true

    function _point(size) {
        return Math.max(10, size * contentScale)
    }

    Flickable {
        id: _flickable

        anchors.fill: parent
        anchors.margins: _root._margin
        contentHeight: Math.max(height, _column.height)
        interactive: contentHeight > height
        boundsBehavior: Flickable.StopAtBounds

        WheelScroll {}
        Column {
            id: _column

            width: parent.width
            spacing: 13 * _root.contentScale

            Rectangle {
                visible: _root.badge.length > 0
                width: _badgeText.implicitWidth + 24
                height: _badgeText.implicitHeight + 10
                radius: height / 2
                color: _root.badgeFill
                border.width: 1
                border.color: Format.withAlpha(_root.accent, 0.6)

                Text {
                    id: _badgeText

                    anchors.centerIn: parent
                    text: _root.badge
                    color: _root.accent
                    font.family: GenFontManager.mainFontFamily
                    font.pointSize: _root._point(11)
                    font.bold: true
                    font.letterSpacing: 1
                }
            }
            Column {
                width: parent.width
                spacing: 5 * _root.contentScale

                Text {
                    width: parent.width
                    text: _root.title
                    color: _root.titleColor
                    font.family: GenFontManager.mainFontFamily
                    font.pointSize: _root._point(19)
                    font.bold: true
                    wrapMode: Text.Wrap
                    Accessible.role: Accessible.Heading
                    Accessible.name: text
                }
                Text {
                    width: parent.width
                    text: _root.subtitle
                    color: _root.dimColor
                    font.family: GenFontManager.mainFontFamily
                    font.pointSize: _root._point(10.5)
                    lineHeight: 1.05
                    wrapMode: Text.Wrap
                }
            }
            Item {
                id: _content

                width: parent.width
                height: childrenRect.height
                visible: _root.content.length > 0
            }
            Column {
                width: parent.width
                spacing: 7 * _root.contentScale

                Text {
                    text: _root.highlightsTitle
                    color: _root.accent
                    font.family: GenFontManager.mainFontFamily
                    font.pointSize: _root._point(11.5)
                    font.bold: true
                }
                Repeater {
                    model: _root.highlights.length

                    Item {
                        id: _entry

                        required property int index

                        width: _column.width
                        height: _highlight.implicitHeight

                        Rectangle {
                            y: (_metrics.height - height) / 2
                            width: 6
                            height: 6
                            radius: 3
                            color: _root.accent

                            FontMetrics {
                                id: _metrics
                                font: _highlight.font
                            }
                        }
                        Text {
                            id: _highlight

                            x: 16
                            width: _entry.width - x
                            text: _root.highlights[_entry.index]
                            color: _root.textColor
                            font.family: GenFontManager.mainFontFamily
                            font.pointSize: _root._point(10)
                            lineHeight: 1.0
                            wrapMode: Text.Wrap
                        }
                    }
                }
            }
        }
    }
}
