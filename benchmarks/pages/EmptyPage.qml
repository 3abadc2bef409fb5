// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12

/// The floor: a page with nothing on it.
Item {}
