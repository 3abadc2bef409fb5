// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QString>

/// One reading as the multimeter reports it: the instrument's function and the text on its display.
struct MultimeterReading
{
    Q_GADGET

public:
    /// The instrument's functions, as the mode byte of a reading names them.
    enum Mode { None = 0, Voltage = 1, Resistance = 2, Capacitance = 3, Diode = 4, Buzzer = 5 };
    Q_ENUM(Mode)

    /// \a text as received, with its unit words normalised and split into number and unit.
    static MultimeterReading fromText(int mode, const QString& text);

    /**
     * \a text with "MOhm", "kOhm", "mOhm" and "Ohm" turned into "MΩ", "kΩ", "mΩ" and "Ω". Letters are
     * compared without regard to case, except that the prefixes M and m stay apart.
     */
    static QString normalizeUnits(QString text);

    /// The row column that receives a reading of \a mode, for example "VoltageValue"; empty for none.
    static QString columnOfMode(int mode);

    /// Fills numericValue and unit from value.
    void splitMultimeterValue();

    int mode = None;
    /// The reading text after unit normalisation, white space as received.
    QString value;
    /// The leading number ("." is the only decimal point), or the whole reading when it has none.
    QString numericValue;
    /// What follows the number, or empty.
    QString unit;
};
