// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/ScriptFolder.h"

#include "tests/support/TestCase.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QThread>

namespace test {

namespace {

constexpr int cRemovalTimeoutMs = 10000;
constexpr int cRemovalPollMs = 10;
constexpr auto cFolderVariable = "QUORVEL_STAND_INS";

} // namespace

ScriptFolder::ScriptFolder() : m_pathBefore(qgetenv("PATH")), m_foldersBefore(qgetenv(cFolderVariable))
{
    const QByteArray folder = QFile::encodeName(QDir::toNativeSeparators(m_folder.path()));
    qputenv("PATH", folder + QFile::encodeName(QDir::listSeparator()) + m_pathBefore);
    qputenv(cFolderVariable, m_folder.path().toUtf8());
}

ScriptFolder::~ScriptFolder()
{
    qputenv("PATH", m_pathBefore);
    qputenv(cFolderVariable, m_foldersBefore);
    // Windows keeps the file of a program that was killed locked until the program is gone.
    m_folder.setAutoRemove(false);
    const QDeadlineTimer deadline(cRemovalTimeoutMs);
    while (!QDir(m_folder.path()).removeRecursively() && !deadline.hasExpired())
        QThread::msleep(cRemovalPollMs);
}

QString ScriptFolder::program(const QString& name) const
{
    return path(name) + QLatin1String(QUORVEL_PROGRAM_SUFFIX);
}

QString ScriptFolder::add(const QString& name, const QByteArray& steps) const
{
    const QString copy = program(name);
    if ((!QFile::exists(copy) && !QFile::copy(QStringLiteral(QUORVEL_STAND_IN), copy)) ||
        !writeFile(path(name + QStringLiteral(".steps")), steps))
        qFatal("a stand-in could not be written");
    return copy;
}

QString ScriptFolder::addRecorder(const QString& name, const QByteArray& steps) const
{
    return add(name, "record\n" + steps);
}

QList<QStringList> ScriptFolder::calls(const QString& name) const
{
    QList<QStringList> calls;
    QStringList call;
    QList<QByteArray> arguments = contentOf(path(name + QStringLiteral(".calls"))).split('\0');
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

qint64 processIdIn(const QString& path)
{
    return contentOf(path).trimmed().toLongLong();
}

} // namespace test
