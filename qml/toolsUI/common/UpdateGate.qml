// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.15

/// Thins out a burst of requests: the first one passes at once, those that follow within the interval
/// are answered together at its end. The instrument may send a thousand values per second.
Item {
    id: _root

    property int interval: 33

    signal passed()

    property bool _waiting: false

    function request() {
        if (_timer.running) {
            _waiting = true
            return
        }
        _timer.start()
        passed()
    }

    /// Answers a waiting request now.
    function flush() {
        _timer.restart()
        _waiting = false
        passed()
    }

    Timer {
        id: _timer

        interval: _root.interval
        onTriggered: {
            if (!_root._waiting)
                return
            _root._waiting = false
            _root.request()
        }
    }
}
