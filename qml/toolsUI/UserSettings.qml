// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import QtQuick.Layouts 1.12
import GenControl.ScreenTools 1.0

import "../customize"
import "account"
import "common"

/// The page "User Settings": sign-in, registration and password forms. Nothing entered is stored or sent.
SettingsPage {
    id: root

    readonly property int loginPage: 0
    readonly property int registerPage: 1
    readonly property int resetPasswordPage: 2
    property int currentPage: loginPage
    readonly property bool compactLayout: _card.width < _dfw * 82
    readonly property real pageMargin: _dfw * 2
    readonly property real _dfw: ScreenTools.defaultFontPixelWidth

    topColor: PageStyle.accountTop
    bottomColor: PageStyle.accountBottom

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
                color: root.bgColor(PageStyle.accountHero, 1)
                accent: PageStyle.accountHeroAccent
                titleColor: PageStyle.accountText
                dimColor: PageStyle.accountDim
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
                color: root.bgColor(PageStyle.accountForm, 1)
                border.width: 1
                border.color: root.bgColor(PageStyle.accountFormBorder, 1)

                StackLayout {
                    anchors.fill: parent
                    anchors.margins: 1
                    currentIndex: root.currentPage

                    LoginForm {
                        look: root.look
                        compact: root.compactLayout
                        onPasswordForgotten: root.currentPage = root.resetPasswordPage
                        onRegistrationRequested: root.currentPage = root.registerPage
                    }
                    RegisterForm {
                        look: root.look
                        compact: root.compactLayout
                        onBackRequested: root.currentPage = root.loginPage
                    }
                    PasswordForm {
                        look: root.look
                        compact: root.compactLayout
                        onBackRequested: root.currentPage = root.loginPage
                    }
                }
            }
        }
    }
}
