// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import QtQuick.Layouts 1.12
import GenToolbox 1.0
import GenControl.ScreenTools 1.0

import "../customize"
import "common"
import "common/RowSync.js" as RowSync

/// The multimeter readings that are kept across runs.
MeasurementPage {
    id: root

    property var _shownIds: []

    function reloadHistory() {
        _shownIds = RowSync.sync(historyModel, _shownIds, GenToolbox.hidLink.multimeterHistory, "")
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
            color: root.bgColor(PageStyle.card, 1)
            headerColor: root.bgColor("#1A252E", 1)
            evenRowColor: root.bgColor(PageStyle.card, 1)
            oddRowColor: root.bgColor("#141F28", 1)
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
        target: GenToolbox.hidLink
        function onMultimeterHistoryChanged() { root.reloadHistory() }
    }

    Component.onCompleted: reloadHistory()
}
