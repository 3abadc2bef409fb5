// SPDX-License-Identifier: GPL-3.0-or-later
#include "upgrade/FileDigest.h"

#include "platform/Sha256.h"

#include <QFile>

#include <array>

namespace {

constexpr int cBlockBytes = 8192;

} // namespace

QString sha256OfFile(const QString& path)
{
    QFile file(path);
    if (path.isEmpty() || !file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return {};
    platform::Sha256 hash;
    std::array<char, cBlockBytes> block{};
    for (;;) {
        const qint64 count = file.read(block.data(), qint64(block.size()));
        if (count < 0)
            return {};
        if (count == 0)
            break;
        hash.addData(block.data(), int(count));
    }
    return QString::fromLatin1(hash.result().toHex());
}
