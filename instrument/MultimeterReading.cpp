// SPDX-License-Identifier: GPL-3.0-or-later
#include "instrument/MultimeterReading.h"

#include <QRegularExpression>

namespace {

struct UnitWord
{
    QRegularExpression word;
    QString sign;
};

} // namespace

MultimeterReading MultimeterReading::fromText(int mode, const QString& text)
{
    MultimeterReading reading;
    reading.mode = mode;
    reading.value = normalizeUnits(text);
    reading.splitMultimeterValue();
    return reading;
}

void MultimeterReading::splitMultimeterValue()
{
    static const QRegularExpression valueAndUnit(
        QStringLiteral("^\\s*([+-]?(?:\\d+(?:\\.\\d+)?|\\.\\d+))\\s*(.*)\\s*$"));

    const QString trimmed = value.trimmed();
    const QRegularExpressionMatch match = valueAndUnit.match(trimmed);
    numericValue = match.hasMatch() ? match.captured(1).trimmed() : trimmed;
    unit = match.hasMatch() ? match.captured(2).trimmed() : QString();
}

QString MultimeterReading::normalizeUnits(QString text)
{
    // The prefixed words come first: the bare word would match inside them.
    static const UnitWord unitWords[] = {
        {QRegularExpression(QStringLiteral("M[Oo][Hh][Mm]")), QStringLiteral("MΩ")},
        {QRegularExpression(QStringLiteral("[Kk][Oo][Hh][Mm]")), QStringLiteral("kΩ")},
        {QRegularExpression(QStringLiteral("m[Oo][Hh][Mm]")), QStringLiteral("mΩ")},
        {QRegularExpression(QStringLiteral("[Oo][Hh][Mm]")), QStringLiteral("Ω")},
    };
    if (!text.contains(QLatin1String("ohm"), Qt::CaseInsensitive))
        return text;
    for (const UnitWord& unit : unitWords)
        text.replace(unit.word, unit.sign);
    return text;
}

QString MultimeterReading::columnOfMode(int mode)
{
    switch (mode) {
    case Voltage:
        return QStringLiteral("VoltageValue");
    case Resistance:
        return QStringLiteral("ResistanceValue");
    case Capacitance:
        return QStringLiteral("CapacitanceValue");
    case Diode:
    case Buzzer:
        return QStringLiteral("DiodeValue");
    default:
        return {};
    }
}
