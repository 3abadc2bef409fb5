// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import QtTest 1.12

import "qrc:/qml/toolsUI"

Item {
    id: _root

    width: 1200
    height: 700

    UserSettings { id: _page; anchors.fill: parent }

    TestCase {
        name: "UserSettings"
        when: windowShown

        function initTestCase() {
            GenApp.setLanguage(1)
        }

        function init() {
            _root.width = 1200
            _page.currentPage = _page.loginPage
        }

        // What is on the form that shows; the others hold parts of the same name.
        function visiblePart(item, name) {
            if (item.objectName === name && item.visible)
                return item
            for (var i = 0; i < item.children.length; ++i) {
                var found = visiblePart(item.children[i], name)
                if (found)
                    return found
            }
            return null
        }

        function test_linksAndBack_data() {
            return [
                { tag: "register", link: "noAccountLink", page: _page.registerPage },
                { tag: "password", link: "forgetLink", page: _page.resetPasswordPage }
            ]
        }

        function test_linksAndBack(data) {
            for (var key of [0, Qt.Key_Return]) {
                for (var step of [[data.link, data.page], ["backButton", _page.loginPage]]) {
                    var control = visiblePart(_page, step[0])
                    control.forceActiveFocus()
                    if (key)
                        keyClick(key)
                    else
                        mouseClick(control)
                    compare(_page.currentPage, step[1])
                }
            }
        }

        function test_passwordsAreHidden() {
            var name = visiblePart(visiblePart(_page, "loginName"), "input")
            var password = visiblePart(visiblePart(_page, "loginPassword"), "input")
            compare(name.echoMode, TextInput.Normal)
            compare(password.echoMode, TextInput.Password)
            password.forceActiveFocus()
            keyClick(Qt.Key_X)
            compare(password.text, "x")
        }

        function test_compact() {
            verify(!_page.compactLayout)
            compare(visiblePart(_page, "loginButton").width, 160)
            _root.width = 600
            verify(_page.compactLayout)
            compare(visiblePart(_page, "loginButton").width, 116)
        }
    }
}
