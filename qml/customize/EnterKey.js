// SPDX-License-Identifier: GPL-3.0-or-later
.pragma library

// Calls action when the key event is of Return or Enter, and accepts the event.
function activate(event, action) {
    if (event.key !== Qt.Key_Return && event.key !== Qt.Key_Enter)
        return
    event.accepted = true
    action()
}
