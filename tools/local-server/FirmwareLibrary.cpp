// SPDX-License-Identifier: GPL-3.0-or-later
#include "FirmwareLibrary.h"

#include "TestContent.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

/// The images lie at 0x0, 0x6000 and 0x50000 of the flash: the first two must fit in front of the next.
constexpr int cBootBytes = 23 * 1024 + 512;
constexpr int cLogoBytes = 230 * 1024 + 77;

struct TypePlan
{
    const char* name;
    int programBytes;
};

constexpr TypePlan cTypes[] = {{"F1C100s-V1", 2600 * 1024 + 13}, {"F1C100s-V2", 3100 * 1024 + 301}};

QString imagePath(const FirmwareLibrary::Type& type, const FirmwareLibrary::Image& image)
{
    return QStringLiteral("/firmware/%1/%2").arg(type.name, image.name);
}

} // namespace

FirmwareLibrary::FirmwareLibrary()
{
    std::uint64_t seed = 1;
    for (const TypePlan& plan : cTypes) {
        Type type;
        type.name = QLatin1String(plan.name);
        type.images = {{QStringLiteral("boot.bin"), deterministicBytes(seed, cBootBytes)},
                       {QStringLiteral("logo.bin"), deterministicBytes(seed + 1, cLogoBytes)},
                       {QStringLiteral("f1c100s.bin"), deterministicBytes(seed + 2, plan.programBytes)}};
        seed += 3;
        m_types.append(type);
    }
}

QByteArray FirmwareLibrary::catalogue(const QString& baseUrl) const
{
    QJsonArray firmware;
    for (const Type& type : m_types) {
        QJsonArray files;
        for (const Image& image : type.images)
            files.append(QJsonObject{{QStringLiteral("name"), image.name},
                                     {QStringLiteral("url"), baseUrl + imagePath(type, image)},
                                     {QStringLiteral("size"), image.bytes.size()}});
        firmware.append(QJsonObject{{QStringLiteral("type"), type.name}, {QStringLiteral("files"), files}});
    }
    return QJsonDocument(QJsonObject{{QStringLiteral("firmware"), firmware}}).toJson();
}

QByteArray FirmwareLibrary::image(const QString& path) const
{
    for (const Type& type : m_types) {
        for (const Image& image : type.images) {
            if (imagePath(type, image) == path)
                return image.bytes;
        }
    }
    return {};
}
