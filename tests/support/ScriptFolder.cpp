// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/ScriptFolder.h"

#include "tests/support/TestCase.h"

#include <QFile>

namespace test {

namespace {

QString recordOf(const QString& script)
{
    return script + QStringLiteral(".calls");
}

} // namespace

ScriptFolder::ScriptFolder() : m_pathBefore(qgetenv("PATH"))
{
    qputenv("PATH", QFile::encodeName(m_folder.path()) + ':' + m_pathBefore);
}

ScriptFolder::~ScriptFolder()
{
    qputenv("PATH", m_pathBefore);
}

QString ScriptFolder::add(const QString& name, const QByteArray& body) const
{
    if (!writeFile(path(name), "#!/bin/sh\n" + body + "\n"))
        qFatal("a script could not be written");
    QFile::setPermissions(path(name), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    return path(name);
}

QString ScriptFolder::addRecorder(const QString& name, const QByteArray& body) const
{
    // Arguments end in NUL and calls in an empty argument, so that any text survives.
    const QByteArray record = QFile::encodeName(recordOf(path(name)));
    return add(name, "printf '%s\\0' \"$@\" '' >> '" + record + "'\n" + body);
}

QList<QStringList> ScriptFolder::calls(const QString& name) const
{
    QList<QStringList> calls;
    QStringList call;
    QList<QByteArray> arguments = contentOf(recordOf(path(name))).split('\0');
    arguments.removeLast();
    for (const QByteArray& argument : qAsConst(arguments)) {
        if (argument.isEmpty()) {
            calls.append(call);
            call.clear();
        } else {
            call.append(QString::fromUtf8(argument));
        }
    }
    return calls;
}

bool processRuns(qint64 id)
{
    const QByteArray line = contentOf(QStringLiteral("/proc/%1/stat").arg(id));
    // "42 (name) S ...": a Z is one that has ended and waits for its parent.
    return !line.isEmpty() && line.mid(line.lastIndexOf(')') + 2, 1) != "Z";
}

qint64 processIdIn(const QString& path)
{
    return contentOf(path).trimmed().toLongLong();
}

} // namespace test
