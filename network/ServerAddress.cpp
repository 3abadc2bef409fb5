// SPDX-License-Identifier: GPL-3.0-or-later
#include "network/ServerAddress.h"

QString server::normalizeServerHost(const QString& host)
{
    QString base = host.trimmed();
    if (base.isEmpty())
        base = defaultServerAddress();
    while (base.endsWith(QLatin1Char('/')))
        base.chop(1);
    if (!base.startsWith(QLatin1String("http://")) && !base.startsWith(QLatin1String("https://")))
        base.prepend(QLatin1String("http://"));
    return base;
}

QString server::url(const QString& host, int port, const QString& path)
{
    const QString slash = path.startsWith(QLatin1Char('/')) ? QString() : QStringLiteral("/");
    return normalizeServerHost(host) + QLatin1Char(':') + QString::number(port) + slash + path;
}
