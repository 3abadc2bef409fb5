// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// The application version, for example "1.1.4"; the one place is the project's version in CMake.
inline QString applicationVersion()
{
    return QStringLiteral(QUORVEL_VERSION);
}

/// Name of the local socket on which the running instance of a user listens; a second one finds it and gives
/// up.
inline QString singleInstanceKey()
{
    return QStringLiteral("org.Quorvel.SingleInstance");
}

/// Environment variable of a process that an instance starts to take its own place: it waits for that one's
/// end. The value has no meaning.
inline constexpr const char* cRestartVariable = "QUORVEL_RESTARTED";
