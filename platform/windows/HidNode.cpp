// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/HidNode.h"

#include <windows.h>

namespace platform {

QString hidAccessAdvice(const QByteArray& path)
{
    const std::wstring node = QString::fromUtf8(path).toStdWString();
    const HANDLE handle =
        ::CreateFileW(node.c_str(), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                      OPEN_EXISTING, 0, nullptr);
    if (handle != INVALID_HANDLE_VALUE) {
        ::CloseHandle(handle);
        return {};
    }
    const DWORD error = ::GetLastError();
    if (error != ERROR_ACCESS_DENIED && error != ERROR_SHARING_VIOLATION)
        return {};
    return QStringLiteral("The instrument is connected, but %1 cannot be opened (access denied). Close other "
                          "programs that use the instrument and plug it in again.")
        .arg(QString::fromUtf8(path));
}

QStringList hidNodeUsers(const QByteArray& /*path*/)
{
    return {};
}

} // namespace platform
