// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

namespace test {

/// A folder with programs that stand in for others, first on PATH while it lives. The steps that they play
/// are described in stand-in/main.cpp.
class ScriptFolder
{
public:
    ScriptFolder();
    ~ScriptFolder();
    Q_DISABLE_COPY(ScriptFolder)

    /// Path of the file \a name in the folder.
    QString path(const QString& name) const { return m_folder.filePath(name); }
    /// Path of the program \a name, which need not exist.
    QString program(const QString& name) const;
    /// Puts a program there that plays \a steps, one a line, and returns its path. A program of that name
    /// plays the new ones when it is started the next time.
    QString add(const QString& name, const QByteArray& steps = {}) const;
    /// Like add(), but every call of the program first records its arguments for calls().
    QString addRecorder(const QString& name, const QByteArray& steps = {}) const;
    /// Returns the arguments of each call of the recorder \a name.
    QList<QStringList> calls(const QString& name) const;

    /// What opens files on this system's desktop, and the argument with which it opens the file \a path.
    static QString opener();
    static QString openerArgument(const QString& path);
    /// Exit code that QProcess reports for a stand-in that takes the step "crash".
    static int crashExitCode();

private:
    QTemporaryDir m_folder;
    const QByteArray m_pathBefore;
    const QByteArray m_foldersBefore;
};

/// Returns true when a process with \a id exists and has not ended.
bool processRuns(qint64 id);

/// Returns the process id that a program has written into the file \a path; 0 without one.
qint64 processIdIn(const QString& path);

} // namespace test
