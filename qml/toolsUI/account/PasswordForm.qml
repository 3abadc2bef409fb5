// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12

/// Change of the password.
AccountForm {
    id: _root

    property bool compact: false

    signal backRequested()

    title: qsTranslate("UserSettings", "Modify Password", "修改密码")
    subtitle: qsTranslate("UserSettings", "Update your credentials securely before returning to login.")

    AccountField {
        look: _root.look
        label: qsTranslate("UserSettings", "User Name:", "用户名:")
    }
    AccountField {
        look: _root.look
        label: qsTranslate("UserSettings", "Old Password:", "旧密码:")
        secret: true
    }
    AccountField {
        look: _root.look
        label: qsTranslate("UserSettings", "New Password:", "新密码:")
        secret: true
    }
    AccountField {
        look: _root.look
        label: qsTranslate("UserSettings", "Confirm Password:", "确认密码:")
        secret: true
    }
    FormButtons {
        compact: _root.compact
        onBackClicked: _root.backRequested()
        text: qsTranslate("UserSettings", "Confirm", "确认")
    }
}
