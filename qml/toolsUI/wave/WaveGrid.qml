// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick 2.15

import "../../customize"

/// The grid behind a chart. It never moves, so the chart need not paint it with every tick.
Item {
    id: _grid

    property int columns: 21
    property int rows: 6

    Repeater {
        model: _grid.columns

        Rectangle {
            required property int index

            x: Math.round(index * (_grid.width - 1) / (_grid.columns - 1))
            width: 1
            height: _grid.height
            color: index === 0 || index === _grid.columns - 1 ? PageStyle.panelBorder : PageStyle.waveGridColumn
        }
    }

    Repeater {
        model: _grid.rows

        Rectangle {
            required property int index

            y: Math.round(index * (_grid.height - 1) / (_grid.rows - 1))
            width: _grid.width
            height: 1
            color: index === _grid.rows - 1 ? PageStyle.panelBorder : PageStyle.waveGridRow
        }
    }
}
