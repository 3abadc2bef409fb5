// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/LogArchive.h"

#include <QByteArray>
#include <QDeadlineTimer>
#include <QDir>
#include <QDirIterator>
#include <QFile>

#include <quazip.h>
#include <quazipfile.h>
#include <quazipnewinfo.h>

#include <cstdio>
#include <zlib.h>

namespace platform {

namespace {

constexpr qint64 cChunkSize = 256 * 1024;
/// Exit codes of packing, for the log.
constexpr int cDone = 0;
constexpr int cFailed = 1;

/// Copies \a source into the open entry \a target. Returns the reason of a failure, else an empty text.
QString copyInto(QFile& source, QuaZipFile& target, const QDeadlineTimer& deadline)
{
    QByteArray chunk(int(cChunkSize), Qt::Uninitialized);
    for (;;) {
        if (deadline.hasExpired())
            return QStringLiteral("there was no time to pack the rest");
        const qint64 count = source.read(chunk.data(), chunk.size());
        if (count < 0)
            return source.errorString();
        if (count == 0)
            return {};
        if (target.write(chunk.constData(), count) != count)
            return target.errorString();
    }
}

/// Adds \a path to \a zip under \a name. Returns the reason of a failure, else an empty text.
QString addFile(QuaZip& zip, const QString& path, const QString& name, const QDeadlineTimer& deadline)
{
    QFile source(path);
    if (!source.open(QIODevice::ReadOnly))
        return path + QStringLiteral(": ") + source.errorString();
    QuaZipFile entry(&zip);
    if (!entry.open(QIODevice::WriteOnly, QuaZipNewInfo(name, path), nullptr, 0, Z_DEFLATED, Z_BEST_SPEED))
        return name + QStringLiteral(": ") + entry.errorString();
    const QString error = copyInto(source, entry, deadline);
    entry.close();
    if (!error.isEmpty())
        return name + QStringLiteral(": ") + error;
    return entry.getZipError() == UNZ_OK ? QString() : name + QStringLiteral(": ") + entry.errorString();
}

/// Packs every file under \a folder into \a archive. Returns the reason of a failure, else an empty text.
QString packFolder(const QString& folder, const QString& archive, const QDeadlineTimer& deadline)
{
    QuaZip zip(archive);
    zip.setUtf8Enabled(true);
    zip.setZip64Enabled(true);
    if (!zip.open(QuaZip::mdCreate))
        return QStringLiteral("%1 cannot be written (%2)").arg(archive, QString::number(zip.getZipError()));
    const QDir root(folder);
    QDirIterator files(folder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    QString error = files.hasNext() ? QString() : QStringLiteral("%1 holds no files").arg(folder);
    while (error.isEmpty() && files.hasNext()) {
        const QString path = files.next();
        error = addFile(zip, path, root.relativeFilePath(path), deadline);
    }
    zip.close();
    if (error.isEmpty() && zip.getZipError() != UNZ_OK)
        error =
            QStringLiteral("%1 could not be finished (%2)").arg(archive, QString::number(zip.getZipError()));
    return error;
}

} // namespace

ArchiveOutcome archiveFolder(const QString& folder, const QString& archive, const ProcessRun&,
                             int timeLimitMs)
{
    const QString partial = archive + QStringLiteral(".part");
    ArchiveOutcome outcome;
    outcome.ran = true;
    outcome.standardError = packFolder(folder, partial, QDeadlineTimer(timeLimitMs));
    // rename() of the C library replaces the target atomically.
    if (outcome.standardError.isEmpty() &&
        std::rename(QFile::encodeName(partial).constData(), QFile::encodeName(archive).constData()) != 0)
        outcome.standardError = QStringLiteral("%1 cannot be renamed").arg(partial);
    outcome.complete = outcome.standardError.isEmpty();
    outcome.exitCode = outcome.complete ? cDone : cFailed;
    if (!outcome.complete)
        QFile::remove(partial);
    return outcome;
}

} // namespace platform
