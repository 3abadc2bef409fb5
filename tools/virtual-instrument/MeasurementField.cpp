// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/virtual-instrument/MeasurementField.h"

namespace {

struct NamedField
{
    const char* name;
    MeasurementField field;
};

using protocol::Measurement;

constexpr NamedField cFields[] = {
    {"mainInputVoltage", &Measurement::mainInputVoltage},
    {"mainOutputCurrent", &Measurement::mainOutputCurrent},
    {"mainPower", &Measurement::mainPower},
    {"mainMah", &Measurement::mainMah},
    {"mainTimeSec", &Measurement::mainTimeSec},
    {"typeCInputVoltage", &Measurement::typeCInputVoltage},
    {"typeCInputCurrent", &Measurement::typeCInputCurrent},
    {"typeCInputPower", &Measurement::typeCInputPower},
    {"typeCDPlusVoltage", &Measurement::typeCDPlusVoltage},
    {"typeCDMinusVoltage", &Measurement::typeCDMinusVoltage},
    {"typeCCC1Voltage", &Measurement::typeCCC1Voltage},
    {"typeCCC2Voltage", &Measurement::typeCCC2Voltage},
    {"typeCMah", &Measurement::typeCMah},
    {"typeCTimeSec", &Measurement::typeCTimeSec},
};

} // namespace

MeasurementField measurementField(const QString& name)
{
    for (const NamedField& entry : cFields) {
        if (name == QLatin1String(entry.name))
            return entry.field;
    }
    return nullptr;
}

protocol::Measurement uniformMeasurement(float value)
{
    Measurement measurement;
    for (const NamedField& entry : cFields)
        measurement.*entry.field = value;
    return measurement;
}
