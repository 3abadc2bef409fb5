// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/ScriptFolder.h"
#include "tests/support/TestCase.h"

#include <csignal>

bool test::processRuns(qint64 id)
{
    const QByteArray line = contentOf(QStringLiteral("/proc/%1/stat").arg(id));
    // "42 (name) S ...": a Z is one that has ended and waits for its parent.
    return !line.isEmpty() && line.mid(line.lastIndexOf(')') + 2, 1) != "Z";
}

QString test::ScriptFolder::opener()
{
    return QStringLiteral("xdg-open");
}

QString test::ScriptFolder::openerArgument(const QString& path)
{
    return path;
}

int test::ScriptFolder::crashExitCode()
{
    return SIGKILL;
}
