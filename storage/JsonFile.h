// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QIODevice>
#include <QJsonDocument>
#include <QString>

class QSaveFile;

/// Reading JSON that anyone may have written, and replacing files whole.
namespace jsonfile {

/// What a JSON text may cost. Each bound is checked before the text is parsed.
struct Limits
{
    /// Size of the text in bytes.
    qint64 bytes;
    /// Commas in the text: a bound for its array elements and object members together.
    qint64 elements;
    /// Colons in the text: a bound for its object members, which cost far more than elements.
    qint64 members;
};

enum class Status {
    /// The document was parsed.
    Read,
    /// There is nothing at the path.
    Missing,
    /// Not a regular file, or it could not be opened or read.
    Unreadable,
    /// No JSON, or beyond the limits.
    Invalid,
};

struct Result
{
    Status status;
    QJsonDocument document;
};

/// Parses \a text; a null document when it is no JSON (including more than 1024 nested levels) or
/// exceeds \a limits.
QJsonDocument parse(const QByteArray& text, const Limits& limits);

/// Reads and parses the file at \a path. At most Limits::bytes are read, and never from anything but a
/// regular file: a pipe or a device would block or never end.
Result read(const QString& path, const Limits& limits);

/**
 * Opens \a file in \a mode and writes \a text to it up to the disk; all that is left to do is
 * QSaveFile::commit().
 *
 * False when anything of that failed. Without this, commit() replaces the old file by a truncated one when
 * the disk fills up with the last bytes, which QSaveFile buffers: it does not look at their failure.
 */
bool stage(QSaveFile& file, const QByteArray& text, QIODevice::OpenMode mode = QIODevice::WriteOnly);

} // namespace jsonfile
