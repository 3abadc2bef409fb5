// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12

import "../../customize"

/// Takes the digits of a TCP port; empty is allowed and stands for the default.
GenTextField {
    width: Math.min(parent.width, 140)
    inputHint: Qt.ImhDigitsOnly
    maximumLength: 5
    validator: RegExpValidator { regExp: /[0-9]*/ }
}
