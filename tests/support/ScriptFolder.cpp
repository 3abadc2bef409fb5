// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/ScriptFolder.h"

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
    QFile file(path(name));
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        qFatal("a script could not be written");
    file.write("#!/bin/sh\n" + body + "\n");
    file.close();
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    return file.fileName();
}

QString ScriptFolder::addRecorder(const QString& name, const QByteArray& body) const
{
    // Arguments end in NUL and calls in an empty argument, so that any text survives.
    const QByteArray record = QFile::encodeName(recordOf(path(name)));
    return add(name, "printf '%s\\0' \"$@\" '' >> '" + record + "'\n" + body);
}

QList<QStringList> ScriptFolder::calls(const QString& name) const
{
    QFile file(recordOf(path(name)));
    QList<QStringList> calls;
    if (!file.open(QIODevice::ReadOnly))
        return calls;
    QStringList call;
    QList<QByteArray> arguments = file.readAll().split('\0');
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
    QFile status(QStringLiteral("/proc/%1/stat").arg(id));
    if (!status.open(QIODevice::ReadOnly))
        return false;
    const QByteArray line = status.readAll();
    // "42 (name) S ...": a Z is one that has ended and waits for its parent.
    return line.mid(line.lastIndexOf(')') + 2, 1) != "Z";
}

qint64 processIdIn(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll().trimmed().toLongLong() : 0;
}

} // namespace test
