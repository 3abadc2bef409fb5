// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import QtQuick.Controls 2.12
import GenToolbox 1.0

ComboBox {
    id: control

    property bool _enterHeld: false

    focusPolicy: Qt.StrongFocus
    font.family: GenFontManager.mainFontFamily
    font.pointSize: 10

    Accessible.role: Accessible.ComboBox
    Accessible.name: displayText

    // Enter opens like Space. On release: the control itself closes an open pop-up when Enter is released.
    Keys.onPressed: {
        if (_isEnter(event) && !popup.visible)
            event.accepted = _enterHeld = true
    }
    Keys.onReleased: {
        if (!_isEnter(event) || !_enterHeld)
            return
        event.accepted = true
        _enterHeld = false
        popup.open()
    }

    function _isEnter(event) {
        return event.key === Qt.Key_Return || event.key === Qt.Key_Enter
    }

    background: Rectangle {
        implicitWidth: 120
        implicitHeight: 40
        color: GenToolbox.genPalette.window
        radius: 2
        border.width: control.enabled ? 1 : 0
        border.color: PageStyle.comboboxBorder

        FocusRing {
            radius: parent.radius
            shown: control.visualFocus
        }
    }
    contentItem: Text {
        leftPadding: 10
        rightPadding: control.indicator.width + control.spacing - PageStyle.roundingSlack
        text: control.displayText
        textFormat: Text.PlainText
        font: control.font
        color: GenToolbox.genPalette.text
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
    }
    indicator: Canvas {
        id: _arrow

        x: control.width - width - control.rightPadding
        y: control.topPadding + (control.availableHeight - height) / 2
        width: 12
        height: 8
        contextType: "2d"

        onPaint: {
            var context = getContext("2d")
            context.reset()
            context.moveTo(0, 0)
            context.lineTo(width, 0)
            context.lineTo(width / 2, height)
            context.closePath()
            context.fillStyle = control.pressed ? PageStyle.comboboxArrowPressed : PageStyle.comboboxArrow
            context.fill()
        }

        Connections {
            target: control
            function onPressedChanged() { _arrow.requestPaint() }
        }
    }
    delegate: ItemDelegate {
        id: _delegate

        readonly property bool _current: control.highlightedIndex === index

        width: control.width
        height: Math.round(1.5 * _text.implicitHeight)
        padding: 0
        highlighted: _current
        font: control.font
        text: control.textRole ? (Array.isArray(control.model) ? modelData[control.textRole]
                                                               : model[control.textRole]) : modelData

        background: Rectangle {
            color: _delegate._current ? GenToolbox.genPalette.buttonHighlight : GenToolbox.genPalette.button
        }
        contentItem: Text {
            id: _text

            leftPadding: 10
            rightPadding: 10 - PageStyle.roundingSlack
            text: _delegate.text
            textFormat: Text.PlainText
            font: _delegate.font
            color: _delegate._current ? GenToolbox.genPalette.buttonHighlightText
                                      : GenToolbox.genPalette.buttonText
            verticalAlignment: Text.AlignVCenter
            elide: Text.ElideRight
        }
    }
    popup: Popup {
        y: control.height - 1
        width: control.width
        implicitHeight: contentItem.implicitHeight + topPadding + bottomPadding
        padding: 1
        margins: 6

        background: Rectangle {
            color: GenToolbox.genPalette.window
            border.width: 1
            border.color: PageStyle.comboboxBorder
            radius: 2
        }
        contentItem: ListView {
            clip: true
            implicitHeight: contentHeight
            model: control.popup.visible ? control.delegateModel : null
            currentIndex: control.highlightedIndex
            boundsBehavior: Flickable.StopAtBounds

            ScrollIndicator.vertical: ScrollIndicator {}
            WheelScroll {}
        }
    }
}
