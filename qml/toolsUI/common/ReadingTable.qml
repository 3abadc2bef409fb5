// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.15
import QtQuick.Controls 2.15
import GenControl.ScreenTools 1.0

import "../../customize"
import "../../customize/Format.js" as Format

/// Recorded readings below a header, the newest first. The first column is as wide as a date and time,
/// the others share the rest: evenly, or where that is too narrow for a title, by the lengths of the titles.
Rectangle {
    id: _root

    /// List of { title, role }.
    property var columns: []
    property alias model: _list.model
    property alias currentIndex: _list.currentIndex
    readonly property ListView listView: _list
    /// Whether rows can be selected and offer actions.
    property bool interactive: false
    /// Opacity of the window's background, 0 to 1; the fills are multiplied with it.
    property real backgroundOpacity: 1

    /// The user asked for the actions of a row; x and y in this table's coordinates.
    signal menuRequested(int row, real x, real y)
    signal deleteRequested(int row)

    readonly property real _firstWidth: Math.max(Math.min(ScreenTools.defaultFontPixelWidth * 26, width * 0.3),
                                                 Math.ceil(_date.advanceWidth) + 2 * _cellPadding)
    readonly property real _restWidth: Math.max(0, width - 2 - _firstWidth)
    readonly property real _pointSize: 10.5
    readonly property real _cellPadding: 4
    // Of the columns that share the rest, with their titles at full size.
    readonly property var _titleWidths: columns.slice(1).map(function(column) {
        return Math.ceil(_titleMetrics.advanceWidth(column.title)) + 2 * _cellPadding
    })
    readonly property real _titlesWidth: _titleWidths.reduce(function(sum, width) { return sum + width }, 0)
    readonly property bool _even: Math.max.apply(null, _titleWidths) * _titleWidths.length <= _restWidth
    // One size for all titles.
    readonly property real _titleSize: Math.max(7.5, _pointSize * Math.min(1, _restWidth / Math.max(1, _titlesWidth)))
    readonly property color _evenColor: Format.withAlpha(PageStyle.card, backgroundOpacity)
    readonly property color _oddColor: Format.withAlpha(PageStyle.oddRow, backgroundOpacity)
    readonly property real _rowHeight: Math.max(28, ScreenTools.defaultFontPixelHeight * 1.7)

    color: _evenColor
    border.width: 1
    border.color: PageStyle.cardBorder
    radius: 8
    // Only while the table folds: a clip that ends inside a pixel takes the lower edge away in software.
    clip: height < _rowHeight + 2

    function columnX(column) {
        var x = 0
        for (var i = 0; i < column; ++i)
            x += columnWidth(i)
        return x
    }

    function columnWidth(column) {
        if (column === 0)
            return _firstWidth
        return _even ? _restWidth / _titleWidths.length : _restWidth * _titleWidths[column - 1] / _titlesWidth
    }

    // Below the selected row, as the keyboard has no place of its own.
    function _requestMenuAtSelection() {
        _list.positionViewAtIndex(currentIndex, ListView.Contain)
        var item = _list.currentItem
        menuRequested(currentIndex, _firstWidth / 2, item.mapToItem(_root, 0, item.height).y)
    }

    TextMetrics {
        id: _date

        font.family: GenFontManager.mainFontFamily
        font.pointSize: _root._pointSize
        text: "0000-00-00 00:00:00"
    }
    FontMetrics {
        id: _titleMetrics

        font.family: GenFontManager.mainFontFamily
        font.pointSize: _root._pointSize
        font.bold: true
    }
    Rectangle {
        id: _header

        anchors { left: parent.left; right: parent.right; top: parent.top; margins: 1 }
        height: _root._rowHeight
        radius: 7
        color: Format.withAlpha(PageStyle.idleFill, _root.backgroundOpacity)

        Repeater {
            model: _root.columns.length

            Text {
                required property int index

                x: _root.columnX(index)
                width: _root.columnWidth(index)
                height: _header.height
                text: _root.columns[index].title
                color: PageStyle.titleText
                font.family: GenFontManager.mainFontFamily
                font.pointSize: _root._titleSize
                font.bold: true
                horizontalAlignment: Text.AlignHCenter
                verticalAlignment: Text.AlignVCenter
                elide: Text.ElideRight
                rightPadding: -PageStyle.roundingSlack
            }
        }
    }

    ListView {
        id: _list

        anchors { left: parent.left; right: parent.right; top: _header.bottom; bottom: parent.bottom; margins: 1 }
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        currentIndex: -1
        activeFocusOnTab: _root.interactive
        keyNavigationEnabled: true
        highlightMoveDuration: 0
        ScrollBar.vertical: ScrollBar { policy: _list.contentHeight > _list.height ? ScrollBar.AlwaysOn : ScrollBar.AlwaysOff }

        Accessible.role: Accessible.Table
        Accessible.name: _root.columns.map(function(column) { return column.title }).join(", ")

        onActiveFocusChanged: {
            if (activeFocus && currentIndex < 0 && count > 0)
                currentIndex = 0
        }
        Keys.onPressed: function(event) {
            if (!_root.interactive || currentIndex < 0)
                return
            if (event.key === Qt.Key_Delete) {
                _root.deleteRequested(currentIndex)
            } else if (event.key === Qt.Key_Menu
                       || (event.key === Qt.Key_F10 && (event.modifiers & Qt.ShiftModifier))) {
                _root._requestMenuAtSelection()
            } else if (event.key === Qt.Key_Home || event.key === Qt.Key_End) {
                currentIndex = event.key === Qt.Key_Home ? 0 : count - 1
            } else {
                return
            }
            event.accepted = true
        }

        WheelScroll {}
        delegate: Rectangle {
            id: _row

            required property int index
            required property var model
            readonly property bool _selected: _root.interactive && ListView.isCurrentItem

            width: ListView.view.width
            height: _root._rowHeight
            color: _selected ? PageStyle.selectedRow : index % 2 === 0 ? _root._evenColor : _root._oddColor
            border.width: _selected ? 1 : 0
            border.color: PageStyle.accentCyan

            Accessible.role: Accessible.Row
            Accessible.name: {
                var texts = []
                for (var i = 0; i < _root.columns.length; ++i)
                    texts.push(_root.columns[i].title + " " + model[_root.columns[i].role])
                return texts.join(", ")
            }

            Repeater {
                model: _root.columns.length

                Text {
                    required property int index

                    x: _root.columnX(index)
                    width: _root.columnWidth(index)
                    height: _row.height
                    leftPadding: _root._cellPadding
                    rightPadding: _root._cellPadding - PageStyle.roundingSlack
                    text: _row.model[_root.columns[index].role]
                    textFormat: Text.PlainText
                    color: index === 0 ? PageStyle.dimText : PageStyle.valueText
                    font.family: GenFontManager.mainFontFamily
                    font.pointSize: _root._pointSize
                    horizontalAlignment: Text.AlignHCenter
                    verticalAlignment: Text.AlignVCenter
                    elide: Text.ElideRight
                }
            }

            MouseArea {
                anchors.fill: parent
                enabled: _root.interactive
                acceptedButtons: Qt.LeftButton | Qt.RightButton
                onPressed: {
                    _list.forceActiveFocus(Qt.MouseFocusReason)
                    _list.currentIndex = _row.index
                }
                onClicked: function(mouse) {
                    if (mouse.button !== Qt.RightButton)
                        return
                    var place = mapToItem(_root, mouse.x, mouse.y)
                    _root.menuRequested(_row.index, place.x, place.y)
                }
            }
        }
    }
}
