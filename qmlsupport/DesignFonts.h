// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// The font families of the design.
namespace design {

QString normalFontFamily();
QString boldFontFamily();
/// Returns the system's fixed-pitch family; "Consolas" without an application object.
QString fixedFontFamily();
/// Returns the descent, in pixels, of the normal family at \a pointSize.
double fontDescent(int pointSize);

} // namespace design
