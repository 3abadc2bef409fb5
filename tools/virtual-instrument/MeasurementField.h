// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "instrument/PacketCodec.h"

#include <QString>

/// One of the fourteen values of a measurement packet.
using MeasurementField = float PacketCodec::Measurement::*;

/// The value called \a name ("mainInputVoltage", "typeCMah", …), or null.
MeasurementField measurementField(const QString& name);

/// A measurement whose every value is \a value.
PacketCodec::Measurement uniformMeasurement(float value);
