// SPDX-License-Identifier: GPL-3.0-or-later
#include "recording/RunningRecordings.h"

#include "storage/DataFolders.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace running {

namespace {

/// A note holds one path.
constexpr qint64 cMaxNoteBytes = 32768;

QString folder()
{
    const QString path = folders::database() + QStringLiteral("/running");
    QDir().mkpath(path);
    return path;
}

/// One small file for each recording: programs that start at the same time cannot overwrite each other's.
QString notePath(const QString& absolutePath)
{
    const QByteArray hash = QCryptographicHash::hash(absolutePath.toUtf8(), QCryptographicHash::Sha1).toHex();
    return folder() + QLatin1Char('/') + QString::fromLatin1(hash);
}

QStringList announced()
{
    QStringList paths;
    const QFileInfoList notes = QDir(folder()).entryInfoList(QDir::Files, QDir::Time | QDir::Reversed);
    for (const QFileInfo& note : notes) {
        QFile file(note.filePath());
        if (!file.open(QIODevice::ReadOnly))
            continue;
        const QString path = QString::fromUtf8(file.read(cMaxNoteBytes));
        if (notePath(path) != note.filePath())
            continue;
        if (QFileInfo::exists(path))
            paths << path;
    }
    return paths;
}

QStringList announced(bool locked)
{
    QStringList paths;
    const QStringList all = announced();
    for (const QString& path : all)
        if (isLocked(path) == locked)
            paths << path;
    return paths;
}

} // namespace

std::unique_ptr<QLockFile> lock(const QString& path, recording::Error& error)
{
    auto file = std::make_unique<QLockFile>(path + QStringLiteral(".lock"));
    // A recording may last for weeks: only the end of its program makes the lock void.
    file->setStaleLockTime(0);
    if (file->tryLock(0))
        return file;
    const bool busy = file->error() == QLockFile::LockFailedError;
    error = {busy ? recording::Failure::Busy : recording::Failure::NoPermission, path, {}};
    return nullptr;
}

bool isLocked(const QString& path)
{
    // Trying the lock is the only way to learn whether its program still runs.
    if (!QFileInfo::exists(path + QStringLiteral(".lock")))
        return false;
    recording::Error error;
    return !lock(path, error) && error.failure == recording::Failure::Busy;
}

bool announce(const QString& path)
{
    const QString absolutePath = QFileInfo(path).absoluteFilePath();
    QSaveFile note(notePath(absolutePath));
    const QByteArray content = absolutePath.toUtf8();
    return note.open(QIODevice::WriteOnly) && note.write(content) == content.size() && note.commit();
}

void withdraw(const QString& path)
{
    QFile::remove(notePath(QFileInfo(path).absoluteFilePath()));
}

QStringList current()
{
    return announced(true);
}

QStringList interrupted()
{
    return announced(false);
}

} // namespace running
