// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "tools/virtual-instrument/ChargerModel.h"
#include "tools/virtual-instrument/MeasurementField.h"
#include "tools/virtual-instrument/MultimeterModel.h"
#include "tools/virtual-instrument/SupplyModel.h"

#include <QStringList>

#include <utility>
#include <vector>

/// The state of the bench: supply, charger, multimeter and screen. Time passes only in advance(), so that the
/// model can run at any speed.
class BenchModel
{
public:
    /// Advances the time by \a seconds.
    void advance(double seconds);

    /// Returns the current values, held ones included.
    protocol::Measurement measurement() const;
    /// Holds a value until it is released.
    void hold(MeasurementField field, float value);
    /// Releases a held value; null releases all of them.
    void release(MeasurementField field);

    MultimeterModel& multimeter() { return m_multimeter; }
    const MultimeterModel& multimeter() const { return m_multimeter; }

    protocol::Screen screen() const { return m_screen; }
    /// Changes the screen as the user of the instrument does.
    void setScreen(protocol::Screen screen) { m_screen = screen; }

    /// Follows a request of the host for a screen and, on the multimeter screen, for a function. Other values
    /// are ignored. Returns true when the request named a screen.
    bool followHost(const protocol::UiControl& request);

    /// Returns the log lines of the instrument since the last call.
    QStringList takeLogLines();

private:
    SupplyModel m_supply;
    ChargerModel m_charger;
    MultimeterModel m_multimeter;
    protocol::Screen m_screen = protocol::MainSupplyScreen;
    std::vector<std::pair<MeasurementField, float>> m_held;
    QStringList m_logLines;
};
