// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "tools/virtual-instrument/ChargerModel.h"
#include "tools/virtual-instrument/MeasurementField.h"
#include "tools/virtual-instrument/MultimeterModel.h"
#include "tools/virtual-instrument/SupplyModel.h"

#include <QStringList>

#include <utility>
#include <vector>

/// Everything that the instrument measures and shows, as a value: the supply, the charger, the multimeter
/// and the screen. Time passes only in advance(), so that it can run at any speed.
class BenchModel
{
public:
    /// Lets \a seconds pass.
    void advance(double seconds);

    /// The present values, held ones included.
    PacketCodec::Measurement measurement() const;
    /// Holds one value until it is released.
    void hold(MeasurementField field, float value);
    /// Lets the bench play the value again; null stands for all of them.
    void release(MeasurementField field);

    MultimeterModel& multimeter() { return m_multimeter; }
    const MultimeterModel& multimeter() const { return m_multimeter; }

    PacketCodec::Screen screen() const { return m_screen; }
    /// Turns the screen from the instrument's side.
    void setScreen(PacketCodec::Screen screen) { m_screen = screen; }

    /// Follows the host's request for a screen and, on the multimeter's, a function; values that name none
    /// ask for nothing. Whether the request named a screen.
    bool followHost(const PacketCodec::UiControl& request);

    /// What the instrument has to say since the last call: its own log lines.
    QStringList takeLogLines();

private:
    SupplyModel m_supply;
    ChargerModel m_charger;
    MultimeterModel m_multimeter;
    PacketCodec::Screen m_screen = PacketCodec::MainSupplyScreen;
    std::vector<std::pair<MeasurementField, float>> m_held;
    QStringList m_logLines;
};
