// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/InstanceEndpoint.h"

#include <QDir>
#include <QFile>

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

/// Returns true when \a path is a folder of this user in which no other user can create or replace a file.
/// Returns false for a symbolic link: another user may have made it.
bool isOwnFolder(const QString& path)
{
    struct stat status = {};
    return ::lstat(QFile::encodeName(path).constData(), &status) == 0 && S_ISDIR(status.st_mode) &&
           status.st_uid == ::geteuid() && (status.st_mode & (S_IWGRP | S_IWOTH)) == 0;
}

/// Returns true when a socket can have this path. The system's limit is about a hundred bytes.
bool fitsSocketAddress(const QString& path)
{
    return std::size_t(QFile::encodeName(path).size()) < sizeof(sockaddr_un::sun_path);
}

} // namespace

platform::InstanceEndpoint platform::instanceEndpoint(const QString& name)
{
    const QString user = QString::number(::geteuid());
    // Creates the folder where the system has no runtime folders. A folder of another user is not used.
    const QString ownFolder = QDir::tempPath() + QLatin1String("/quorvel-") + user;
    InstanceEndpoint endpoint;
    for (const QString& folder :
         {qEnvironmentVariable("XDG_RUNTIME_DIR"), QLatin1String("/run/user/") + user, ownFolder}) {
        const QString path = folder + QLatin1Char('/') + name;
        if (!QDir::isAbsolutePath(folder) || !fitsSocketAddress(path))
            continue;
        if (folder == ownFolder)
            ::mkdir(QFile::encodeName(folder).constData(), S_IRWXU);
        if (!isOwnFolder(folder))
            continue;
        endpoint.server = path;
        endpoint.lockFile = path + QLatin1String(".lock");
        endpoint.earlierServers = QStringList{QDir::tempPath() + QLatin1Char('/') + name};
        return endpoint;
    }
    endpoint.refusedFolder = ownFolder;
    return endpoint;
}

bool platform::servedByThisUser(qintptr descriptor)
{
    ucred peer = {};
    socklen_t size = sizeof(peer);
    return ::getsockopt(int(descriptor), SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 &&
           peer.uid == ::geteuid();
}
