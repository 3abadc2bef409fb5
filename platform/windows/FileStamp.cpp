// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/FileStamp.h"

#include <windows.h>

namespace platform {

FileStamp fileStamp(const QString& path)
{
    // File times count steps of 100 ns since 1601.
    constexpr qint64 cNsPerStep = 100;
    constexpr qint64 cStepsTo1970 = 116444736000000000;
    WIN32_FILE_ATTRIBUTE_DATA data = {};
    const std::wstring name = path.toStdWString();
    if (::GetFileAttributesExW(name.c_str(), GetFileExInfoStandard, &data) == 0)
        return {};
    const auto joined = [](DWORD high, DWORD low) { return (qint64(high) << 32) | qint64(low); };
    const qint64 modified = joined(data.ftLastWriteTime.dwHighDateTime, data.ftLastWriteTime.dwLowDateTime);
    return {(modified - cStepsTo1970) * cNsPerStep, joined(data.nFileSizeHigh, data.nFileSizeLow), 0};
}

} // namespace platform
