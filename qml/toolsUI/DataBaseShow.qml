// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.15
import QtQuick.Layouts 1.15
import GenControl.ScreenTools 1.0

import "../customize"
import "common"
import "common/RowSync.js" as RowSync

/// The multimeter readings that are kept across runs.
MeasurementPage {
    id: root

    property var _shownIds: []

    function reloadHistory() {
        _shownIds = RowSync.sync(historyModel, _shownIds, hidLink.multimeterHistory, "")
    }

    ListModel {
        id: historyModel
    }

    ColumnLayout {
        anchors.fill: parent
        anchors.margins: ScreenTools.defaultFontPixelWidth * 2
        spacing: ScreenTools.defaultFontPixelWidth * 1.2

        Text {
            text: qsTr("History Data")
            color: PageStyle.titleText
            font.family: GenFontManager.mainFontFamily
            font.pointSize: 16
            font.bold: true
        }

        ReadingTable {
            Layout.fillWidth: true
            Layout.fillHeight: true
            model: historyModel
            backgroundOpacity: root.pageBackgroundOpacity
            columns: [
                { title: qsTr("Date Time"), role: "dateTime" },
                { title: qsTr("Voltage(V)"), role: "VoltageValue" },
                { title: qsTr("Resistance(Ω)"), role: "ResistanceValue" },
                { title: qsTr("Capacitance(pF)"), role: "CapacitanceValue" },
                { title: qsTr("Diode/Buzzer"), role: "DiodeValue" }
            ]
        }
    }

    Connections {
        target: root.hidLink
        function onMultimeterHistoryChanged() { root.reloadHistory() }
    }

    Component.onCompleted: reloadHistory()
}
