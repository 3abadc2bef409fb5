// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

namespace test {

/// A folder with shell scripts that stand in for other programs, first on PATH while it lives.
class ScriptFolder
{
public:
    ScriptFolder();
    ~ScriptFolder();
    Q_DISABLE_COPY(ScriptFolder)

    QString path(const QString& name) const { return m_folder.filePath(name); }
    /// Puts an executable shell script with the given \a body there and returns its path.
    QString add(const QString& name, const QByteArray& body) const;
    /// Like add(), but every call of the script first records its arguments for calls().
    QString addRecorder(const QString& name, const QByteArray& body) const;
    /// The arguments of each call of the recorder \a name so far.
    QList<QStringList> calls(const QString& name) const;

private:
    QTemporaryDir m_folder;
    const QByteArray m_pathBefore;
};

/// Whether a process with \a id exists and has not ended.
bool processRuns(qint64 id);

/// The process id that a script has written into the file \a path; 0 while there is none.
qint64 processIdIn(const QString& path);

} // namespace test
