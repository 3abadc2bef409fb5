// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import QtQuick.Controls 2.12
import QtQuick.Layouts 1.12
import QtQuick.Window 2.12
import GenControl.ScreenTools 1.0

import "../customize/Format.js" as Format
import "account"
import "common"

/// The page "User Settings": sign-in, registration and password forms. Nothing entered is stored or sent.
Rectangle {
    id: root

    property bool resizingWindow: false

    readonly property int loginPage: 0
    readonly property int registerPage: 1
    readonly property int resetPasswordPage: 2
    property int currentPage: loginPage
    readonly property bool compactLayout: _card.width < _dfw * 82
    readonly property real contentScale: Math.max(0.82, Math.min(1, width / 1180, height / 680))
    readonly property real pageMargin: _dfw * 2
    readonly property real _dfw: ScreenTools.defaultFontPixelWidth

    readonly property color heroColor: "#153044"
    readonly property color heroAccent: "#49C6D9"
    readonly property color formColor: "#1B1D22"
    readonly property color formBorder: "#383D46"
    readonly property color titleColor: "#F3F6F8"
    readonly property color inputColor: "#F3F6F8"
    readonly property color dimColor: "#9BA8B5"
    readonly property color linkColor: "#9ed0ff"

    gradient: Gradient {
        GradientStop { position: 0; color: root.bgColor("#0E1826", 1) }
        GradientStop { position: 1; color: root.bgColor("#111111", 1) }
    }

    function scaledPoint(size) {
        return Math.max(10, size * contentScale)
    }

    function bgColor(colorValue, opacity) {
        var shared = Window.window ? Window.window.windowBackgroundOpacity : undefined
        return Format.withAlpha(colorValue, opacity * (shared === undefined ? 1 : shared))
    }

    Item {
        id: _card

        anchors.fill: parent
        anchors.margins: root.pageMargin

        RowLayout {
            anchors.fill: parent
            spacing: root.pageMargin

            HeroPanel {
                Layout.fillHeight: true
                Layout.preferredWidth: Math.min(root._dfw * 46, _card.width * 0.36)
                visible: !root.compactLayout
                color: root.bgColor(root.heroColor, 1)
                accent: root.heroAccent
                titleColor: root.titleColor
                dimColor: root.dimColor
                contentScale: root.contentScale
                title: qsTr("Quorvel Account")
                subtitle: qsTr("Manage sign-in, registration and password recovery in one place.")
                highlightsTitle: qsTr("Highlights")
                highlights: [
                    qsTr("Secure credential input with clear role-based flows."),
                    qsTr("Unified form layout for faster operation and easier maintenance."),
                    qsTr("Prepared for account APIs without changing the interaction structure.")
                ]
            }
            Rectangle {
                Layout.fillWidth: true
                Layout.fillHeight: true
                radius: 12
                color: root.bgColor(root.formColor, 1)
                border.width: 1
                border.color: root.bgColor(root.formBorder, 1)

                StackLayout {
                    anchors.fill: parent
                    anchors.margins: 1
                    currentIndex: root.currentPage

                    LoginForm { page: root }
                    RegisterForm { page: root }
                    PasswordForm { page: root }
                }
            }
        }
    }
}
