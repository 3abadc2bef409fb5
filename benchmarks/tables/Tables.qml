// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import QtQuick.Window 2.12
import GenToolbox 1.0

import "qrc:/qml/toolsUI"

Window {
    visible: true
    width: 1280
    height: 720

    /// The page takes over what changed in the table.
    function reload() {
        _page.reloadHistory()
        return _page._shownIds.length
    }

    /// The floor: the same rows into a list model that nothing shows.
    function fill() {
        var table = GenToolbox.hidLink.multimeterCurrentTable
        _model.clear()
        for (var i = 0; i < table.length; ++i) {
            var row = table[i]
            _model.append({ dateTime: row.dateTime, VoltageValue: row.VoltageValue, ResistanceValue: row.ResistanceValue,
                            CapacitanceValue: row.CapacitanceValue, DiodeValue: row.DiodeValue })
        }
        return _model.count
    }

    ListModel { id: _model }

    MultimeterGauge { id: _page; anchors.fill: parent }
}
