// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// The font families of the design.
namespace design {

QString normalFontFamily();
QString boldFontFamily();
/// The system's fixed-pitch family; "Consolas" when there is no application object to ask.
QString fixedFontFamily();
/// Descent, in pixels, of the normal family at \a pointSize.
double fontDescent(int pointSize);

} // namespace design
