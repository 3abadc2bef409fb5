// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import QtTest 1.12

/// Base of tests that find parts of a page by their properties. The language is English; the page fills the parent.
TestCase {
    property var page: null

    when: windowShown

    function openPage(document, properties) {
        var component = Qt.createComponent("qrc:/qml/toolsUI/" + document)
        compare(component.status, Component.Ready, component.errorString())
        page = component.createObject(parent, Object.assign({ width: parent.width, height: parent.height }, properties))
    }

    // The first item at or below `item` for which `matches` is true, or null.
    function find(item, matches) {
        if (matches(item))
            return item
        for (var i = 0; i < item.children.length; ++i) {
            var found = find(item.children[i], matches)
            if (found)
                return found
        }
        return null
    }

    function having(item, property) {
        return find(item, function(candidate) { return candidate[property] !== undefined })
    }

    function button(text) {
        return find(page, function(item) { return item.text === text && item.clicked !== undefined })
    }

    function initTestCase() {
        GenApp.setLanguage(1)
    }

    function cleanup() {
        if (page)
            page.destroy()
        page = null
        TestInstrument.unplug()
        wait(0)
    }
}
