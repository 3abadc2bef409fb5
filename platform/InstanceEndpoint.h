// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

namespace platform {

/// Where the instances of one user find each other. Other users have endpoints of their own.
struct InstanceEndpoint
{
    /// What QLocalServer listens on: an absolute path on Linux, the name of a pipe on Windows. Empty when the
    /// user has no folder for it.
    QString server;
    /// Endpoints of earlier versions, on which one of them may still listen. Anybody may listen there, so the
    /// answer counts only when servedByThisUser() says so.
    QStringList earlierServers;
    /// Held while an instance looks for another one and starts to listen.
    QString lockFile;
    /// The folder that cannot be used, when server is empty.
    QString refusedFolder;
};

/**
 * The endpoint called \a name of the current user.
 *
 * On Linux it is a socket in the user's runtime folder, or in a folder below the temporary one that only this
 * user may write; a folder that belongs to somebody else is never used. On Windows the pipe's name holds the
 * session, which has one user.
 */
InstanceEndpoint instanceEndpoint(const QString& name);

/// Whether the process at the other end of the connected local socket \a descriptor belongs to this user (on
/// Windows: to this session). False also when the system does not say.
bool servedByThisUser(qintptr descriptor);

} // namespace platform
