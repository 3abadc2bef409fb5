// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/HidNode.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

namespace platform {

QString hidAccessAdvice(const QByteArray& path)
{
    // As hidapi opens it: only an attempt tells what the system really allows.
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

} // namespace platform
