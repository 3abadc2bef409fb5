// SPDX-License-Identifier: GPL-3.0-or-later
.pragma library

// Keeps a list model equal to a list of recorded readings while touching only the rows that changed, so
// that selection and scroll position survive a new reading.

function text(value, missing) {
    return value === undefined || value === null || value === "" ? missing : String(value)
}

// The model row of one recorded reading; `missing` stands for a value that it has not.
function modelRow(entry, missing) {
    return {
        dateTime: text(entry.dateTime, ""),
        VoltageValue: text(entry.VoltageValue, missing),
        ResistanceValue: text(entry.ResistanceValue, missing),
        CapacitanceValue: text(entry.CapacitanceValue, missing),
        DiodeValue: text(entry.DiodeValue, missing)
    }
}

function ids(entries) {
    var result = new Array(entries.length)
    for (var i = 0; i < entries.length; ++i)
        result[i] = entries[i].id
    return result
}

// Brings `model`, which shows the readings of `shownIds`, to show `entries`; returns their ids. Readings
// keep their order and never change, so new ones in front and removed ones are all that can differ;
// anything else rebuilds the model.
function sync(model, shownIds, entries, missing) {
    var newIds = ids(entries)
    var added = shownIds.length > 0 && model.count === shownIds.length ? _addedInFront(newIds, shownIds) : -1
    if (added < 0 || !_removeMissing(model, shownIds, newIds, added)) {
        _rebuild(model, entries, missing)
        return newIds
    }
    for (var i = added - 1; i >= 0; --i)
        model.insert(0, modelRow(entries[i], missing))
    return newIds
}

// The row to select once the rows of shownIds have become those of newIds: the same reading, or when it is gone the
// next one that is left, else the one before. -1 when no reading is left, or none was selected.
function selectionAfter(selected, shownIds, newIds) {
    if (selected < 0)
        return -1
    var candidates = shownIds.slice(selected).concat(shownIds.slice(0, selected).reverse())
    for (var i = 0; i < candidates.length; ++i) {
        var index = newIds.indexOf(candidates[i])
        if (index >= 0)
            return index
    }
    return -1
}

// How many ids stand before the first one that is shown already; -1 when none is, or one has no id.
function _addedInFront(newIds, shownIds) {
    var shown = {}
    for (var i = 0; i < shownIds.length; ++i) {
        if (shownIds[i] === undefined)
            return -1
        shown[shownIds[i]] = true
    }
    for (var j = 0; j < newIds.length; ++j) {
        if (shown[newIds[j]])
            return j
    }
    return -1
}

// Removes the shown rows that are gone; false, with nothing removed, when the rest is in another order.
function _removeMissing(model, shownIds, newIds, added) {
    var gone = []
    var next = added
    for (var i = 0; i < shownIds.length; ++i) {
        if (next < newIds.length && shownIds[i] === newIds[next])
            ++next
        else
            gone.push(i)
    }
    if (next !== newIds.length)
        return false
    for (var k = gone.length - 1; k >= 0; --k)
        model.remove(gone[k])
    return true
}

// All rows at once: a view hears of two changes and not of one per row.
function _rebuild(model, entries, missing) {
    var rows = new Array(entries.length)
    for (var i = 0; i < entries.length; ++i)
        rows[i] = modelRow(entries[i], missing)
    model.clear()
    if (rows.length > 0)
        model.append(rows)
}
