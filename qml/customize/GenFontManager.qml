// SPDX-License-Identifier: GPL-3.0-or-later
pragma Singleton

import QtQuick 2.12

/// The text font of the interface.
Item {
    readonly property string mainFontFamily: _loader.name.length > 0 ? _loader.name : "Microsoft YaHei"

    visible: false

    FontLoader {
        id: _loader

        source: "qrc:/fonts/HarmonyOS_Sans_SC_Medium.ttf"
    }

    // The same family: texts in bold find it by themselves.
    FontLoader { source: "qrc:/fonts/HarmonyOS_Sans_SC_Bold.ttf" }
}
