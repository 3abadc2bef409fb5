// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/InstanceEndpoint.h"

#include <QDir>

#include <windows.h>

namespace {

DWORD thisSession()
{
    DWORD session = 0;
    ::ProcessIdToSessionId(::GetCurrentProcessId(), &session);
    return session;
}

} // namespace

platform::InstanceEndpoint platform::instanceEndpoint(const QString& name)
{
    InstanceEndpoint endpoint;
    endpoint.server = name + QLatin1Char('-') + QString::number(thisSession());
    endpoint.lockFile = QDir::tempPath() + QLatin1Char('/') + endpoint.server + QLatin1String(".lock");
    endpoint.earlierServers = QStringList{name};
    return endpoint;
}

bool platform::servedByThisUser(qintptr descriptor)
{
    ULONG session = 0;
    return ::GetNamedPipeServerSessionId(reinterpret_cast<HANDLE>(descriptor), &session) != 0 &&
           session == thisSession();
}
