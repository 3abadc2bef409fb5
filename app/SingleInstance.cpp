// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/SingleInstance.h"

#include "platform/InstanceEndpoint.h"
#include "storage/ApplicationInfo.h"

#include <QLocalSocket>
#include <QLockFile>

#include <limits>

namespace {

constexpr int cProbeTimeoutMs = 30;
/// Maximum time of another instance between its search for others and listening.
constexpr int cLockTimeoutMs = 2000;
/// Maximum time that a new instance waits for the end of the one that started it.
constexpr int cPredecessorTimeoutMs = 10000;

/// Returns true when an instance of this user listens on \a server and still does so \a patienceMs later.
bool instanceListens(const QString& server, int patienceMs)
{
    QLocalSocket probe;
    probe.connectToServer(server, QIODevice::ReadWrite);
    if (!probe.waitForConnected(cProbeTimeoutMs) || !platform::servedByThisUser(probe.socketDescriptor()))
        return false;
    // The connection breaks when the other instance ends.
    if (patienceMs > 0 &&
        (probe.waitForDisconnected(patienceMs) || probe.state() != QLocalSocket::ConnectedState))
        return false;
    probe.disconnectFromServer();
    return true;
}

} // namespace

SingleInstance::Claim SingleInstance::claim()
{
    const int patienceMs = qEnvironmentVariableIsSet(cRestartVariable) ? cPredecessorTimeoutMs : 0;
    // Programs that this one starts must not get the variable.
    qunsetenv(cRestartVariable);

    const platform::InstanceEndpoint endpoint = platform::instanceEndpoint(singleInstanceKey());
    if (endpoint.server.isEmpty()) {
        m_error = QStringLiteral("%1 cannot be used: it belongs to another user or cannot be created")
                      .arg(endpoint.refusedFolder);
        return Claim::Failed;
    }
    // The lock prevents that two instances start at the same time and neither finds the other. When another
    // instance hangs, this one continues without the lock.
    QLockFile lock(endpoint.lockFile);
    lock.tryLock(cLockTimeoutMs);
    const QStringList servers = QStringList{endpoint.server} + endpoint.earlierServers;
    for (const QString& server : servers) {
        if (instanceListens(server, patienceMs))
            return Claim::AnotherRuns;
    }
    // Removes the socket of an instance that crashed.
    QLocalServer::removeServer(endpoint.server);
    // A limit would end the listening after many later instances.
    m_server.setMaxPendingConnections(std::numeric_limits<int>::max());
    m_server.setSocketOptions(QLocalServer::UserAccessOption);
    if (m_server.listen(endpoint.server))
        return Claim::First;
    m_error = QStringLiteral("%1: %2").arg(endpoint.server, m_server.errorString());
    return Claim::Failed;
}
