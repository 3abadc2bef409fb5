// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12

/// Registration of a new account.
AccountForm {
    id: _root

    title: qsTranslate("UserSettings", "User Register", "用户注册")
    subtitle: qsTranslate("UserSettings", "Create a new account for this workstation.")

    AccountField {
        page: _root.page
        label: qsTranslate("UserSettings", "User Name:", "用户名:")
    }
    AccountField {
        page: _root.page
        label: qsTranslate("UserSettings", "Password:", "密码:")
        secret: true
    }
    AccountField {
        page: _root.page
        label: qsTranslate("UserSettings", "Confirm Password:", "确认密码:")
        secret: true
    }
    AccountField {
        page: _root.page
        label: qsTranslate("UserSettings", "Email:")
    }
    FormButtons {
        page: _root.page
        text: qsTranslate("UserSettings", "Register", "注册")
    }
}
