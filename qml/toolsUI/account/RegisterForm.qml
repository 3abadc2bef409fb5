// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12

/// Registration of a new account.
AccountForm {
    id: _root

    property bool compact: false

    signal backRequested()

    title: qsTranslate("UserSettings", "User Register", "用户注册")
    subtitle: qsTranslate("UserSettings", "Create a new account for this workstation.")

    AccountField {
        look: _root.look
        label: qsTranslate("UserSettings", "User Name:", "用户名:")
    }
    AccountField {
        look: _root.look
        label: qsTranslate("UserSettings", "Password:", "密码:")
        secret: true
    }
    AccountField {
        look: _root.look
        label: qsTranslate("UserSettings", "Confirm Password:", "确认密码:")
        secret: true
    }
    AccountField {
        look: _root.look
        label: qsTranslate("UserSettings", "Email:")
    }
    FormButtons {
        compact: _root.compact
        onBackClicked: _root.backRequested()
        text: qsTranslate("UserSettings", "Register", "注册")
    }
}
