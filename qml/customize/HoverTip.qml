// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12

/// The tool tip of `target`, shown while `shown` holds. The pop-up exists only then: it is not cheap.
Loader {
    property Item target: null
    property string text: ""
    property bool shown: false
    /// To the right of the target instead of above it.
    property bool beside: false
    /// Below the target instead of above it.
    property bool below: false

    source: shown && text.length > 0 ? "GenToolTip.qml" : ""
    onLoaded: item.tip = this
}
