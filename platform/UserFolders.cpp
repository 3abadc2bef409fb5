// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/UserFolders.h"

#include <QStandardPaths>

namespace {

/// The folder that tests put in place of the user's; null in the application.
QString& redirection()
{
    static QString home;
    return home;
}

} // namespace

QString platform::userFolder(UserFolder folder)
{
    const QString& home = redirection();
    switch (folder) {
    case UserFolder::Documents:
        return home.isNull() ? QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation)
                             : home + QStringLiteral("/Documents");
    case UserFolder::Desktop:
        return home.isNull() ? QStandardPaths::writableLocation(QStandardPaths::DesktopLocation)
                             : home + QStringLiteral("/Desktop");
    case UserFolder::Cache:
        return home.isNull() ? QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation)
                             : home + QStringLiteral("/.cache");
    case UserFolder::LocalData:
        break;
    }
    return home.isNull() ? QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation)
                         : home + QStringLiteral("/AppData");
}

void platform::redirectUserFolders(const QString& home)
{
    redirection() = home;
}
