// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "instrument/PacketCodec.h"

#include <QString>

#include <random>

/// The multimeter of the bench. The probe touches one object after the other. Each reading is first open or
/// over range, then settles with noise, then stays constant, so that the host can record a stable reading.
class MultimeterModel
{
public:
    using Function = protocol::MultimeterFunction;
    enum class Contact { Open, Settling, Steady };

    /// Advances the time by \a seconds.
    void advance(double seconds);

    Function function() const { return m_function; }
    /// Switches the function. The probe is lifted and the cycle starts again.
    void setFunction(Function function);

    Contact contact() const;
    /// Returns the reading with its unit; the text is constant during steady contact. The mode is 1 (voltage)
    /// to 4 (diode); the buzzer function reports 4.
    protocol::MultimeterReading reading();

    /// Holds the reading at \a text. An empty text releases it.
    void holdReading(const QString& text) { m_heldReading = text; }

private:
    QString readingText();

    Function m_function = protocol::VoltageFunction;
    double m_contactSec = 0;
    int m_specimen = 0;
    QString m_heldReading;
    std::minstd_rand m_random{3};
};
