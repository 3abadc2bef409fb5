// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "instrument/PacketCodec.h"

#include <QString>

#include <random>

/// The bench's multimeter: the probe touches one thing after the other, and each reading is first open or
/// over range, then settles with noise, then stands still, so that a host that waits for steady readings
/// sees some.
class MultimeterModel
{
public:
    using Function = PacketCodec::MultimeterFunction;
    enum class Contact { Open, Settling, Steady };

    /// Lets \a seconds pass.
    void advance(double seconds);

    Function function() const { return m_function; }
    /// Switches the function; the probe starts again, open.
    void setFunction(Function function);

    Contact contact() const;
    /// The reading with its unit; it repeats exactly while the contact is steady. The mode is 1 for voltage
    /// to 4 for diode; the buzzer function reports 4 as well.
    PacketCodec::MultimeterReading reading();

    /// Holds the reading at \a text; an empty text lets the bench play it again.
    void holdReading(const QString& text) { m_heldReading = text; }

private:
    QString readingText();

    Function m_function = PacketCodec::VoltageFunction;
    double m_contactSec = 0;
    int m_specimen = 0;
    QString m_heldReading;
    std::minstd_rand m_random{3};
};
