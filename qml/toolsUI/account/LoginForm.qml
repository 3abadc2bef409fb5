// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12

import "../../customize"
import "../common"

/// Sign-in, with the ways to the other two forms.
AccountForm {
    id: _root

    property bool compact: false

    signal passwordForgotten()
    signal registrationRequested()

    readonly property real _lineHeight: 30

    title: qsTranslate("UserSettings", "User Login", "用户登录")
    subtitle: qsTranslate("UserSettings", "Use your account to access measurement and tool data.")

    AccountField {
        objectName: "loginName"
        look: _root.look
        label: qsTranslate("UserSettings", "User Name:", "用户名:")
    }
    AccountField {
        objectName: "loginPassword"
        look: _root.look
        label: qsTranslate("UserSettings", "Password:", "密码:")
        secret: true
    }
    Flow {
        width: parent.width
        spacing: 12

        GenCheckbox {
            text: qsTranslate("UserSettings", "Remember The Password", "记住密码")
            height: _root._lineHeight
            font.pointSize: _root.look.point(10.5)
        }
        GenCheckbox {
            text: qsTranslate("UserSettings", "Automatic Login", "自动登录")
            height: _root._lineHeight
            font.pointSize: _root.look.point(10.5)
        }
        Item {
            width: _forget.implicitWidth
            height: _root._lineHeight

            TextLink {
                id: _forget

                objectName: "forgetLink"
                anchors.verticalCenter: parent.verticalCenter
                text: qsTranslate("UserSettings", "Forget Password?", "忘记密码?")
                color: PageStyle.accountLink
                font.pointSize: _root.look.point(10.5)
                onClicked: _root.passwordForgotten()
            }
        }
    }
    Flow {
        width: parent.width
        spacing: 12

        GenCheckbox {
            text: qsTranslate("UserSettings", "Personal Privacy Policy and Agreement", "同意个人隐私政策与用户协议")
            height: _root._lineHeight
            font.pointSize: _root.look.point(10.5)
        }
        Item {
            width: _noAccount.implicitWidth
            height: _root._lineHeight

            TextLink {
                id: _noAccount

                objectName: "noAccountLink"
                anchors.verticalCenter: parent.verticalCenter
                text: qsTranslate("UserSettings", "No Account?", "没有账号?")
                color: PageStyle.accountLink
                font.pointSize: _root.look.point(10.5)
                onClicked: _root.registrationRequested()
            }
        }
    }
    Row {
        anchors.horizontalCenter: parent.horizontalCenter
        topPadding: _root.tight ? 0 : 8

        GenTextButton {
            objectName: "loginButton"
            primary: true
            minWidth: _root.compact ? 116 : 160
            text: qsTranslate("UserSettings", "Login In", "登录")
        }
    }
}
