// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/DataFolders.h"

#include <QDir>
#include <QStandardPaths>

namespace DataFolders {

namespace {

QString ensured(QLatin1String name)
{
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation) +
                           QLatin1String("/Quorvel/") + name;
    QDir().mkpath(folder);
    return folder;
}

} // namespace

QString logs()
{
    return ensured(QLatin1String("Logs"));
}
QString database()
{
    return ensured(QLatin1String("Database"));
}
QString curves()
{
    return ensured(QLatin1String("Curves"));
}

} // namespace DataFolders
