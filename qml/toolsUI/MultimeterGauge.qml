// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.15
import QtQuick.Layouts 1.15
import GenToolbox 1.0
import GenControl.ScreenTools 1.0

import "../customize"
import "../customize/Format.js" as Format
import "common"
import "common/RowSync.js" as RowSync
import "multimeter"
import "multimeter/MultimeterModes.js" as Modes

/// The multimeter's reading, the choice of its function, and the readings recorded so far.
MeasurementPage {
    id: multimeterRoot

    property int _selectedGaugeMode: Modes.none
    // The buzzer was chosen here, and no reading has shown yet that the instrument follows.
    property bool _buzzerRequested: false
    property bool _historyTableVisible: GenToolbox.genSettings.bValue("historyTableVisible", true, "multimeterGauge")
    property int _contextMenuRow: -1
    property real _contextMenuX: 0
    property real _contextMenuY: 0
    property bool _contextMenuVisible: false
    property int _valueSize: 15
    readonly property real historyTableExpandedHeight: Math.max(ScreenTools.defaultFontPixelWidth * 18, height * 0.42)

    property string _numericValue
    property string _unit
    property int _measuredMode: Modes.none
    property var _shownIds: []
    // How far the table is unfolded, 0 to 1.
    property real _tableShare: _historyTableVisible ? 1 : 0
    // Reading and table take fixed shares of the height. What they leave in a low page is for the two rows of
    // buttons first.
    readonly property real _margin: Format.clamp((height * 0.26 - 76) / 5, ScreenTools.defaultFontPixelWidth * 0.55,
                                                 ScreenTools.defaultFontPixelWidth * 1.2)

    Behavior on _tableShare {
        NumberAnimation { duration: 160 }
    }

    function modeLabel(mode) {
        switch (mode) {
        case 1: return qsTr("Voltage Gear")
        case 2: return qsTr("Resistance Gear")
        case 3: return qsTr("Capacitance Gear")
        case 4: return qsTr("Diode Gear")
        case 5: return qsTr("Buzzer Gear")
        }
        return qsTr("Disable")
    }

    function modeButtonText(mode) {
        switch (mode) {
        case 1: return qsTr("Voltage")
        case 2: return qsTr("Resistance")
        case 3: return qsTr("Capacitance")
        case 4: return qsTr("Diode")
        case 5: return qsTr("Buzzer")
        }
        return qsTr("Disable")
    }

    function effectiveGaugeMode() {
        return _selectedGaugeMode > Modes.none ? _selectedGaugeMode : _measuredMode
    }

    function selectGaugeMode(mode) {
        var layer1 = Modes.layer1OfMode(mode)
        if (layer1 === Modes.layerNotGiven)
            return
        _selectedGaugeMode = mode
        _buzzerRequested = mode === Modes.buzzer
        hidLink.sendUiControlPacket(Modes.screen, layer1, Modes.layerNotGiven, Modes.layerNotGiven, Modes.fromHost)
    }

    function applyMeasuredMode(mode) {
        // A reading of the former function may come after the click and take the choice with it.
        if (mode === Modes.diode && _buzzerRequested)
            _selectedGaugeMode = Modes.buzzer
        else
            _selectedGaugeMode = Modes.modeAfterReading(_selectedGaugeMode, mode)
        _buzzerRequested = _buzzerRequested && mode !== Modes.diode
    }

    function reloadHistory() {
        var menuId = _contextMenuRow >= 0 ? _shownIds[_contextMenuRow] : undefined
        var before = _shownIds
        var selected = _table.currentIndex
        _shownIds = RowSync.sync(historyModel, before, hidLink.multimeterCurrentTable, "--")
        // Always assigned: otherwise a view that was empty selects its first row.
        _table.currentIndex = RowSync.selectionAfter(selected, before, _shownIds)
        if (menuId === undefined)
            return
        // The menu stays with its reading when others arrive above it.
        _contextMenuRow = _shownIds.indexOf(menuId)
        if (_contextMenuRow < 0)
            hideContextMenu()
    }

    function toggleHistoryTable() {
        hideContextMenu()
        _historyTableVisible = !_historyTableVisible
        GenToolbox.genSettings.setValue("historyTableVisible", _historyTableVisible, "multimeterGauge")
    }

    function showTableContextMenu(row, x, y) {
        if (row < 0)
            return
        _contextMenuRow = row
        _table.currentIndex = row
        _contextMenuX = Modes.menuEdge(x, _menu.width, width)
        _contextMenuY = Modes.menuEdge(y, _menu.height, height)
        _contextMenuVisible = true
        _menu.forceActiveFocus()
    }

    function hideContextMenu() {
        if (_contextMenuVisible)
            _table.listView.forceActiveFocus()
        _contextMenuVisible = false
        _contextMenuRow = -1
    }

    function deleteContextMenuRow() {
        if (_contextMenuRow >= 0 && _contextMenuRow < historyModel.count)
            hidLink.removeMultimeterCurrentTableRow(_contextMenuRow)
        _contextMenuRow = -1
        hideContextMenu()
    }

    function _takeReading() {
        var link = hidLink
        _numericValue = connected ? link.multimeterNumericValue : ""
        _unit = connected ? link.multimeterUnit : ""
        _measuredMode = link.multimeterMode
    }

    onConnectedChanged: {
        _buzzerRequested = false
        _gate.flush()
    }
    onWidthChanged: hideContextMenu()
    onHeightChanged: hideContextMenu()

    UpdateGate {
        id: _gate

        onPassed: multimeterRoot._takeReading()
    }

    ListModel {
        id: historyModel
    }

    ColumnLayout {
        anchors.fill: parent
        anchors.margins: multimeterRoot._margin
        spacing: multimeterRoot._margin

        ReadingPanel {
            Layout.fillWidth: true
            Layout.preferredHeight: multimeterRoot.height * (0.52 - 0.2 * multimeterRoot._tableShare)
            heading: multimeterRoot.modeLabel(multimeterRoot.effectiveGaugeMode())
            value: multimeterRoot._numericValue.length > 0 ? multimeterRoot._numericValue : "--"
            unit: multimeterRoot._unit.length > 0 ? multimeterRoot._unit : " "
            headingSize: multimeterRoot._valueSize
            connected: multimeterRoot.connected
            connectionText: connected ? qsTr("Connected") : qsTr("Not Connected")
            backgroundOpacity: multimeterRoot.pageBackgroundOpacity
        }

        RowLayout {
            Layout.fillWidth: true
            Layout.fillHeight: true
            Layout.minimumHeight: 34
            Layout.maximumHeight: Math.max(76, multimeterRoot.height * 0.16)
            spacing: multimeterRoot._margin * 0.8

            Repeater {
                model: Modes.functionCount

                FunctionButton {
                    required property int index

                    Layout.fillWidth: true
                    Layout.fillHeight: true
                    Layout.preferredWidth: 1
                    mode: index + 1
                    text: multimeterRoot.modeButtonText(mode)
                    active: mode === multimeterRoot.effectiveGaugeMode()
                    backgroundOpacity: multimeterRoot.pageBackgroundOpacity
                    onClicked: multimeterRoot.selectGaugeMode(mode)
                }
            }
        }

        RecordsBar {
            Layout.fillWidth: true
            expanded: multimeterRoot._historyTableVisible
            toggleText: expanded ? qsTr("Hide Records") : qsTr("Show Records")
            clearText: qsTr("Clear")
            clearEnabled: historyModel.count > 0
            backgroundOpacity: multimeterRoot.pageBackgroundOpacity
            onToggled: multimeterRoot.toggleHistoryTable()
            onClearClicked: multimeterRoot.hidLink.clearMultimeterCurrentTable()
        }

        ReadingTable {
            id: _table

            Layout.fillWidth: true
            Layout.preferredHeight: multimeterRoot.historyTableExpandedHeight * multimeterRoot._tableShare
            Layout.minimumHeight: 0
            visible: opacity > 0
            opacity: multimeterRoot._tableShare
            interactive: true
            model: historyModel
            backgroundOpacity: multimeterRoot.pageBackgroundOpacity
            columns: [
                { title: qsTr("Date Time"), role: "dateTime" },
                { title: qsTr("Voltage"), role: "VoltageValue" },
                { title: qsTr("Resistance"), role: "ResistanceValue" },
                { title: qsTr("Capacitance"), role: "CapacitanceValue" },
                { title: qsTr("Diode/Buzzer"), role: "DiodeValue" }
            ]
            onMenuRequested: function(row, x, y) {
                var place = mapToItem(multimeterRoot, x, y)
                multimeterRoot.showTableContextMenu(row, place.x, place.y)
            }
            onDeleteRequested: function(row) { multimeterRoot.hidLink.removeMultimeterCurrentTableRow(row) }
        }

        Item {
            Layout.fillHeight: !multimeterRoot._historyTableVisible
            visible: !multimeterRoot._historyTableVisible
        }
    }

    RowMenu {
        id: _menu

        x: multimeterRoot._contextMenuX
        y: multimeterRoot._contextMenuY
        width: implicitWidth
        height: implicitHeight
        visible: multimeterRoot._contextMenuVisible
        text: qsTr("Delete Item")
        onTriggered: multimeterRoot.deleteContextMenuRow()
        onDismissed: multimeterRoot.hideContextMenu()
    }

    Connections {
        target: multimeterRoot.hidLink
        function onMultimeterChanged() {
            multimeterRoot.applyMeasuredMode(multimeterRoot.hidLink.multimeterMode)
            _gate.request()
        }
        function onMultimeterCurrentTableChanged() { multimeterRoot.reloadHistory() }
        function onUiControlRequested(direction, layer0, layer1, layer2, layer3) {
            var mode = Modes.modeOfLayers(layer0, layer1)
            if (mode === Modes.none)
                return
            multimeterRoot._selectedGaugeMode = mode
            multimeterRoot._buzzerRequested = false
        }
    }

    Component.onCompleted: {
        _takeReading()
        applyMeasuredMode(_measuredMode)
        reloadHistory()
    }
}
