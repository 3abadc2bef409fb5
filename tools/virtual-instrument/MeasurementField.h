// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "instrument/PacketCodec.h"

#include <QString>

/// A value of a measurement packet; there are fourteen.
using MeasurementField = float protocol::Measurement::*;

/// Returns the value with \a name ("mainInputVoltage", "typeCMah", …), or null.
MeasurementField measurementField(const QString& name);

/// Returns a measurement with all values equal to \a value.
protocol::Measurement uniformMeasurement(float value);
