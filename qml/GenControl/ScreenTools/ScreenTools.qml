// SPDX-License-Identifier: GPL-3.0-or-later
pragma Singleton

import QtQuick 2.12
import QtQuick.Window 2.12
import GenControl.ScreenToolsController 1.0

import "ScreenMetrics.js" as ScreenMetrics

/// Sizes derived from the screen and the base font. All sizes in device-independent pixels or points.
Item {
    id: _screenTools

    property real defaultFontPointSize: isMobile ? 6 : 10
    property real defaultMessageFontSize: 4
    property real platformFontPointSize: 10

    property real defaultFontPixelHeight: 10
    property real defaultFontPixelWidth: 8
    property real defaultFontDescent: 0
    property real defaultDialogControlSpacing: defaultFontPixelHeight / 2

    property real smallFontPointSize: 10
    property real mediumFontPointSize: 10
    property real largeFontPointSize: 10
    property real largestFontPointSize: 10
    readonly property real smallFontPointRatio: 0.75
    readonly property real mediumFontPointRatio: 1.25
    readonly property real largeFontPointRatio: 1.6
    readonly property real largestFontPointRatio: 2.0

    property real toolbarHeight: 0

    // Android reports half the density on wide screens.
    property real realPixelDensity: isAndroid && Screen.width / Screen.pixelDensity > 300 ? Screen.pixelDensity * 2
                                                                                         : Screen.pixelDensity

    property bool isAndroid: ScreenToolsController.isAndroid
    property bool isiOS: ScreenToolsController.isiOS
    property bool isMobile: ScreenToolsController.isMobile
    property bool isWindows: ScreenToolsController.isWindows
    property bool isDebug: ScreenToolsController.isDebug
    property bool isMac: ScreenToolsController.isMacOS
    property bool isLinux: ScreenToolsController.isLinux
    readonly property bool canPlaceWindows: ScreenToolsController.canPlaceWindows
    property bool isSerialAvailable: ScreenToolsController.isSerialAvailable

    property bool isTinyScreen: Screen.width / realPixelDensity < 120
    property bool isShortScreen: Screen.height / realPixelDensity < 120
                                 || (isMobile && Screen.height / Screen.width < 0.6)
    property bool isHugeScreen: Screen.width / realPixelDensity >= 23.5 * 25.4

    readonly property real minTouchMillimeters: 10
    property real minTouchPixels: 0

    property real implicitButtonWidth: Math.round(defaultFontPixelWidth * (isMobile ? 7.0 : 5.0))
    property real implicitButtonHeight: Math.round(defaultFontPixelHeight * (isMobile ? 2.0 : 1.6))
    property real implicitTextFieldHeight: implicitButtonHeight
    property real implicitComboBoxHeight: implicitButtonHeight
    property real implicitCheckBoxHeight: Math.round(defaultFontPixelHeight * (isMobile ? 2.0 : 1.0))
    property real implicitRadioButtonHeight: implicitCheckBoxHeight
    property real implicitComboBoxWidth: implicitButtonWidth
    property real comboBoxPadding: defaultFontPixelWidth
    property real implicitSliderHeight: isMobile ? Math.max(defaultFontPixelHeight, minTouchPixels)
                                                 : defaultFontPixelHeight
    property real checkBoxIndicatorSize: ScreenMetrics.indicatorSize(defaultFontPixelHeight, isMobile)
    property real radioButtonIndicatorSize: checkBoxIndicatorSize

    property real availableScreenWidth: Screen.desktopAvailableWidth > 0 ? Screen.desktopAvailableWidth
                                                                         : Screen.width
    property real availableScreenHeight: Screen.desktopAvailableHeight > 0 ? Screen.desktopAvailableHeight
                                                                           : Screen.height
    property real widthScale: availableScreenWidth / 1600
    property real heightScale: availableScreenHeight / 900
    property real widgetScale: Math.min(widthScale, heightScale)
    property real desktopUiFitScale: ScreenMetrics.fitScale(availableScreenWidth, availableScreenHeight)
    property bool isCompactDesktop: ScreenMetrics.isCompactDesktop(isMobile, availableScreenWidth,
                                                                   availableScreenHeight)

    property string normalFontFamily: ScreenToolsController.normalFontFamily
    property string demiboldFontFamily: ScreenToolsController.boldFontFamily
    property string fixedFontFamily: ScreenToolsController.fixedFontFamily

    onRealPixelDensityChanged: _applyBasePointSize()

    function mouseX() {
        return ScreenToolsController.mouseX()
    }

    function mouseY() {
        return ScreenToolsController.mouseY()
    }

    function setWindowGeometry(x, y, width, height) {
        ScreenToolsController.setWindowGeometry(x, y, width, height)
    }

    function setWindowGeometryForWindow(windowObject, x, y, width, height) {
        ScreenToolsController.setWindowGeometryForWindow(windowObject, x, y, width, height)
    }

    function startSystemResizeForWindow(windowObject, left, top, right, bottom) {
        return ScreenToolsController.startSystemResizeForWindow(windowObject, left, top, right, bottom)
    }

    function startSystemMoveForWindow(windowObject) {
        return ScreenToolsController.startSystemMoveForWindow(windowObject)
    }

    function printScreenStats() {
        console.log("ScreenTools: Screen.width: " + Screen.width + " Screen.height: " + Screen.height
                    + " Screen.pixelDensity: " + Screen.pixelDensity)
    }

    // Measures the base font at a size in points and derives every other size from it.
    function _setBasePointSize(pointSize) {
        _textMeasure.font.pointSize = pointSize
        defaultFontPointSize = pointSize
        defaultFontPixelHeight = ScreenMetrics.evenExtent(_textMeasure.implicitHeight)
        defaultFontPixelWidth = ScreenMetrics.evenExtent(_textMeasure.implicitWidth)
        defaultFontDescent = ScreenToolsController.defaultFontDescent(defaultFontPointSize)
        smallFontPointSize = defaultFontPointSize * smallFontPointRatio
        mediumFontPointSize = defaultFontPointSize * mediumFontPointRatio
        largeFontPointSize = defaultFontPointSize * largeFontPointRatio
        largestFontPointSize = defaultFontPointSize * largestFontPointRatio
        minTouchPixels = ScreenMetrics.minTouchPixels(minTouchMillimeters, realPixelDensity,
                                                      defaultFontPixelHeight, Screen.height)
        toolbarHeight = isMobile ? minTouchPixels : defaultFontPixelHeight * 3
    }

    function _applyBasePointSize() {
        _setBasePointSize(isMobile ? 10 : 10 * desktopUiFitScale)
    }

    Text {
        id: _defaultFont

        visible: false
        text: "X"
    }

    Text {
        id: _textMeasure

        visible: false
        text: "X"
        font.family: _screenTools.normalFontFamily

        Component.onCompleted: {
            _screenTools.platformFontPointSize = ScreenMetrics.platformPointSize(
                        _screenTools.isiOS, _screenTools.isMobile, _screenTools.isTinyScreen, Screen.width,
                        _defaultFont.font.pointSize)
            _screenTools._applyBasePointSize()
        }
    }
}
