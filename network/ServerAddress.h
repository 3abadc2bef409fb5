// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "storage/SettingsTable.h"

#include <QString>

/// The address rule of the one server that everything asks: firmware catalogue, update check, manuals.
namespace server {

constexpr int cDefaultApiPort = setting::apiPort.byDefault;
constexpr int cDefaultDocsPort = setting::docsPort.byDefault;

/// Base URL of the server that is asked while nothing else is configured.
inline QString defaultServerAddress()
{
    return QLatin1String(setting::serverHost.byDefault);
}

/// The settings group and keys under which the address is stored.
inline QString settingsGroup()
{
    return QLatin1String(setting::serverHost.group);
}
inline QString hostKey()
{
    return QLatin1String(setting::serverHost.key);
}
inline QString apiPortKey()
{
    return QLatin1String(setting::apiPort.key);
}
inline QString docsPortKey()
{
    return QLatin1String(setting::docsPort.key);
}

/// The base URL that \a host stands for: trimmed, the default address when empty, without trailing
/// slashes, with "http://" in front unless it starts with "http://" or "https://" (case-sensitive).
QString normalizeServerHost(const QString& host);

/// \a port when it is a TCP port (1 to 65535), else \a fallback.
constexpr int portOr(int port, int fallback)
{
    return port >= 1 && port <= 65535 ? port : fallback;
}

/// The URL of \a path on \a port of \a host, for example "http://127.0.0.1:8078/api/check_version".
/// The host is normalised, and a leading slash is added to the path when it has none.
QString url(const QString& host, int port, const QString& path);

} // namespace server
