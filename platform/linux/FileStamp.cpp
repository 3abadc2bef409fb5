// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/FileStamp.h"

#include <QFile>

#include <sys/stat.h>

namespace platform {

FileStamp fileStamp(const QString& path)
{
    constexpr qint64 cNsPerSecond = 1000000000;
    struct stat status = {};
    if (::stat(QFile::encodeName(path).constData(), &status) != 0)
        return {};
    return {status.st_mtim.tv_sec * cNsPerSecond + status.st_mtim.tv_nsec, status.st_size, status.st_ino};
}

} // namespace platform
