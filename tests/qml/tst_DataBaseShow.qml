// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.12
import QtTest 1.12
import GenToolbox 1.0

import "qrc:/qml/toolsUI/common/RowSync.js" as RowSync

Item {
    id: _root

    width: 900
    height: 600

    ListModel { id: _model }
    SignalSpy { id: _resets; target: _model; signalName: "modelReset" }

    PageTestCase {
        name: "DataBaseShow"

        function entries(ids) {
            return ids.split("").map(function(id) { return { id: id, dateTime: "t" + id, VoltageValue: id + "V" } })
        }

        function shown() {
            var texts = ""
            for (var i = 0; i < _model.count; ++i)
                texts += _model.get(i).VoltageValue[0]
            return texts
        }

        function test_persistentHistoryIsShown() {
            GenToolbox.genSettings.setValue("saveMultimeterHistoryToFile", true, "sysSettings")
            TestInstrument.plugIn()
            TestInstrument.read(2, "4.7kOhm", 5)
            openPage("DataBaseShow.qml")
            compare(page._shownIds.length, 1)
            TestInstrument.read(3, "220nF", 5)
            compare(page._shownIds.length, 2)
            GenToolbox.hidLink.clearMultimeterHistory()
            GenToolbox.genSettings.setValue("saveMultimeterHistoryToFile", false, "sysSettings")
            compare(page._shownIds.length, 0)
        }

        function test_modelFollowsTheList_data() {
            return [{ tag: "first", from: "", to: "a" },
                    { tag: "new in front", from: "cba", to: "edcba" },
                    { tag: "new in front, oldest dropped", from: "cba", to: "dcb" },
                    { tag: "removed at once", from: "edcba", to: "eca" },
                    { tag: "new and removed", from: "dcba", to: "feda" },
                    { tag: "all gone", from: "cba", to: "" },
                    { tag: "all others", from: "cba", to: "xyz" },
                    { tag: "other order", from: "abc", to: "bac" },
                    { tag: "inserted behind", from: "cba", to: "cxba" }]
        }

        function test_modelFollowsTheList(data) {
            var ids = RowSync.sync(_model, RowSync.sync(_model, [], entries(data.from), "--"), entries(data.to), "--")
            compare(shown(), data.to)
            compare(ids.join(""), data.to)
            if (_model.count > 0)
                compare([_model.get(0).ResistanceValue, _model.get(0).dateTime], ["--", "t" + data.to[0]])
            RowSync.sync(_model, ids, [], "--")
            compare(_model.count, 0)
        }

        function test_rowsWithoutIdAreShown() {
            var ids = RowSync.sync(_model, [], [{ VoltageValue: "1V" }], "")
            ids = RowSync.sync(_model, ids, [{ VoltageValue: "2V" }, { VoltageValue: "1V" }], "")
            compare(shown(), "21")
            compare(_model.get(0).dateTime, "")
        }
    }
}
