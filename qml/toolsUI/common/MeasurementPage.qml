// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.15

/// Base of the pages that show readings of the instrument.
PageBase {
    readonly property bool connected: hidLink.connected
}
