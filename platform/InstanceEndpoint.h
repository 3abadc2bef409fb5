// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

namespace platform {

/// Local socket and lock file through which the instances of one user find each other.
struct InstanceEndpoint
{
    /// Name for QLocalServer: an absolute path on Linux, the name of a pipe on Windows. Empty when the user
    /// has no folder for it.
    QString server;
    /// Endpoints of earlier versions, which may still run. Other users can listen there too, so an answer
    /// counts only when servedByThisUser() returns true.
    QStringList earlierServers;
    /// Held while an instance looks for another one and starts to listen.
    QString lockFile;
    /// When server is empty: the folder that cannot be used.
    QString refusedFolder;
};

/**
 * Returns the endpoint called \a name of the current user.
 *
 * On Linux the endpoint is a socket in the user's runtime folder, or in a folder below the temporary one that
 * only this user can write. A folder of another user is never used. On Windows the name of the pipe contains
 * the session, which has one user.
 */
InstanceEndpoint instanceEndpoint(const QString& name);

/// Returns true when the process at the other end of the connected local socket \a descriptor belongs to this
/// user (on Windows: to this session). Returns false also when the system does not know.
bool servedByThisUser(qintptr descriptor);

} // namespace platform
