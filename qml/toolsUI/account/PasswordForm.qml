// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12

/// Change of the password.
AccountForm {
    id: _root

    title: qsTranslate("UserSettings", "Modify Password", "修改密码")
    subtitle: qsTranslate("UserSettings", "Update your credentials securely before returning to login.")

    AccountField {
        page: _root.page
        label: qsTranslate("UserSettings", "User Name:", "用户名:")
    }
    AccountField {
        page: _root.page
        label: qsTranslate("UserSettings", "Old Password:", "旧密码:")
        secret: true
    }
    AccountField {
        page: _root.page
        label: qsTranslate("UserSettings", "New Password:", "新密码:")
        secret: true
    }
    AccountField {
        page: _root.page
        label: qsTranslate("UserSettings", "Confirm Password:", "确认密码:")
        secret: true
    }
    FormButtons {
        page: _root.page
        text: qsTranslate("UserSettings", "Confirm", "确认")
    }
}
