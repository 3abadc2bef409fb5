// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import QtQuick.Layouts 1.12
import GenToolbox 1.0

/// Shows one tool page at a time. Only the current page exists: leaving it destroys it.
StackLayout {
    id: rightStack

    property bool loadPages: false
    property bool resizingWindow: false
    // Null while the page loads.
    property Item currentPage: null

    clip: true

    Repeater {
        id: _loaders

        model: GenToolbox.toolsManager.settingsPages

        Loader {
            id: pageLoader

            readonly property bool _wanted: rightStack.loadPages && index === rightStack.currentIndex
            property bool _loading: false

            asynchronous: true
            // A page that is left while it loads is loaded to its end first: taking half-made controls apart
            // crashes in the toolkit.
            active: _wanted || _loading
            source: active ? modelData.url : ""
            onStatusChanged: {
                if (status === Loader.Loading)
                    _loading = true
                else
                    Qt.callLater(_endLoading)
            }
            onLoaded: {
                _passResizing()
                if (_wanted)
                    rightStack.currentPage = item
            }

            function _endLoading() {
                _loading = status === Loader.Loading
            }

            function _passResizing() {
                if (item && item.resizingWindow !== undefined)
                    item.resizingWindow = rightStack.resizingWindow
            }

            Connections {
                target: rightStack
                function onResizingWindowChanged() { pageLoader._passResizing() }
            }
        }
    }

    // The same holds for a page that loads while the program ends.
    Connections {
        target: Qt.application
        function onAboutToQuit() {
            for (var i = 0; i < _loaders.count; ++i)
                _loaders.itemAt(i).asynchronous = false
        }
    }
}
