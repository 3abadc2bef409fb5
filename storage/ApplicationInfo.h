// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// The application version, for example "1.1.4"; the one place is the project's version in CMake.
inline QString applicationVersion()
{
    return QStringLiteral(QUORVEL_VERSION);
}

/// Local socket on which the running instance listens; a second one finds it there and gives up.
inline QString singleInstanceKey()
{
    return QStringLiteral("org.Quorvel.SingleInstance");
}
