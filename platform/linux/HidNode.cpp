// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/HidNode.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

namespace platform {

QString hidAccessAdvice(const QByteArray& path)
{
    // Opens the node like hidapi. Only an attempt shows what the system permits.
    const int node = ::open(path.constData(), O_RDWR | O_CLOEXEC | O_NONBLOCK);
    const int reason = errno;
    if (node >= 0)
        ::close(node);
    if (node >= 0 || (reason != EACCES && reason != EPERM))
        return {};
    return QStringLiteral("The instrument is connected, but this user may not open %1 (permission denied). "
                          "Copy packaging/linux/70-quorvel.rules to /etc/udev/rules.d, run "
                          "\"sudo udevadm control --reload\" and plug the instrument in again.")
        .arg(QString::fromLocal8Bit(path));
}

QStringList hidNodeUsers(const QByteArray& path)
{
    const QString node = QFile::decodeName(path);
    const QString self = QString::number(QCoreApplication::applicationPid());
    QStringList users;
    const QStringList processes = QDir(QStringLiteral("/proc")).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString& process : processes) {
        bool isProcess = false;
        process.toInt(&isProcess);
        if (!isProcess || process == self)
            continue;
        // The folder of another user's process cannot be read, and is empty then.
        const QFileInfoList files = QDir(QStringLiteral("/proc/%1/fd").arg(process))
                                        .entryInfoList(QDir::Files | QDir::System | QDir::NoDotAndDotDot);
        for (const QFileInfo& file : files) {
            if (file.symLinkTarget() != node)
                continue;
            QFile name(QStringLiteral("/proc/%1/comm").arg(process));
            if (name.open(QIODevice::ReadOnly))
                users << QString::fromLocal8Bit(name.readAll()).trimmed();
        }
    }
    users.removeDuplicates();
    return users;
}

} // namespace platform
