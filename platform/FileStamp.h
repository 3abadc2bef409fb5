// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace platform {

/// What the file system says of a file without opening it. Two equal stamps mean an unchanged file, unless it
/// was changed twice within one step of the file system's clock.
struct FileStamp
{
    /// Last change, in nanoseconds since 1970 (UTC).
    qint64 modifiedNs = 0;
    /// In bytes; -1 when there is no file.
    qint64 size = -1;
    /// Differs from that of the file which this one replaced; 0 where the system has none.
    quint64 id = 0;

    bool operator==(const FileStamp& other) const
    {
        return modifiedNs == other.modifiedNs && size == other.size && id == other.id;
    }
};

/// The stamp of the file at \a path; a default one when there is none. Any thread may call it; it takes about
/// a microsecond on a local disk.
FileStamp fileStamp(const QString& path);

} // namespace platform
