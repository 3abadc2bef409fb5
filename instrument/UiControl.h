// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

/// The numbers of a UI-control packet. QML knows them as the type Instrument of the module Instrument 1.0.
namespace protocol {
Q_NAMESPACE

/// Who asks whom.
enum UiDirection { HostRequest = 1, InstrumentReport = 2 };
Q_ENUM_NS(UiDirection)
/// The instrument's screens, layer0.
enum Screen { MainSupplyScreen = 1, TypeCScreen = 2, WaveScreen = 3, MultimeterScreen = 4 };
Q_ENUM_NS(Screen)
/// The multimeter's functions, layer1 for the multimeter screen.
enum MultimeterFunction {
    VoltageFunction,
    ResistanceFunction,
    CapacitanceFunction,
    DiodeFunction,
    BuzzerFunction
};
Q_ENUM_NS(MultimeterFunction)
/// A layer that the packet does not give.
enum Layer { LayerNotGiven = 255 };
Q_ENUM_NS(Layer)

constexpr int cLayerNotGiven = LayerNotGiven;

} // namespace protocol
