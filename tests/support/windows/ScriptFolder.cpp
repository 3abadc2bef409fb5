// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/ScriptFolder.h"

#include <windows.h>

bool test::processRuns(qint64 id)
{
    const HANDLE process = ::OpenProcess(SYNCHRONIZE, FALSE, DWORD(id));
    if (process == nullptr)
        return false;
    const bool runs = ::WaitForSingleObject(process, 0) == WAIT_TIMEOUT;
    ::CloseHandle(process);
    return runs;
}

QString test::ScriptFolder::opener()
{
    return QStringLiteral("explorer");
}

QString test::ScriptFolder::openerArgument(const QString& path)
{
    return QStringLiteral("file:///") + path;
}

int test::ScriptFolder::crashExitCode()
{
    return int(STATUS_ACCESS_VIOLATION);
}
