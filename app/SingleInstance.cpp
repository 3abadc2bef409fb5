// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/SingleInstance.h"

#include "platform/InstanceEndpoint.h"
#include "storage/ApplicationInfo.h"

#include <QLocalSocket>
#include <QLockFile>

#include <limits>

namespace {

constexpr int cProbeTimeoutMs = 30;
/// How long another instance may take between looking for others and listening.
constexpr int cLockTimeoutMs = 2000;
/// How long a new instance waits for the end of the one that started it.
constexpr int cPredecessorTimeoutMs = 10000;

/// Whether an instance of this user listens on \a server and still does \a patienceMs later.
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
    // Not for the programs that this one starts.
    qunsetenv(cRestartVariable);

    const platform::InstanceEndpoint endpoint = platform::instanceEndpoint(singleInstanceKey());
    if (endpoint.server.isEmpty()) {
        m_error = QStringLiteral("%1 cannot be used: it belongs to another user or cannot be created")
                      .arg(endpoint.refusedFolder);
        return Claim::Failed;
    }
    // Two instances that start at the same time must not both find nobody. It goes on without the lock when
    // another instance hangs.
    QLockFile lock(endpoint.lockFile);
    lock.tryLock(cLockTimeoutMs);
    const QStringList servers = QStringList{endpoint.server} + endpoint.earlierServers;
    for (const QString& server : servers) {
        if (instanceListens(server, patienceMs))
            return Claim::AnotherRuns;
    }
    // Left behind by an instance that crashed.
    QLocalServer::removeServer(endpoint.server);
    // With a limit, enough later instances would end the listening.
    m_server.setMaxPendingConnections(std::numeric_limits<int>::max());
    m_server.setSocketOptions(QLocalServer::UserAccessOption);
    if (m_server.listen(endpoint.server))
        return Claim::First;
    m_error = QStringLiteral("%1: %2").arg(endpoint.server, m_server.errorString());
    return Claim::Failed;
}
