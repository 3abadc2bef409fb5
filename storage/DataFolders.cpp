// SPDX-License-Identifier: GPL-3.0-or-later
#include "storage/DataFolders.h"

#include "platform/UserFolders.h"

#include <QDir>

namespace folders {

namespace {

QString pathOf(QLatin1String name)
{
    return platform::userFolder(platform::UserFolder::Documents) + QLatin1String("/Quorvel/") + name;
}

QString ensured(const QString& folder)
{
    QDir().mkpath(folder);
    return folder;
}

} // namespace

QString logs()
{
    return ensured(logsPath());
}
QString logsPath()
{
    return pathOf(QLatin1String("Logs"));
}
QString database()
{
    return ensured(pathOf(QLatin1String("Database")));
}
QString curves()
{
    return ensured(pathOf(QLatin1String("Curves")));
}
QString recordings()
{
    return ensured(pathOf(QLatin1String("Recordings")));
}

} // namespace folders
