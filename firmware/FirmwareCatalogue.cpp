// SPDX-License-Identifier: GPL-3.0-or-later
#include "firmware/FirmwareCatalogue.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QRegularExpression>
#include <QUrl>

#include <algorithm>

namespace {

constexpr int cMaxFileNameLength = 200;

} // namespace

FirmwareCatalogue FirmwareCatalogue::fromJson(const QByteArray& json)
{
    FirmwareCatalogue catalogue;
    const QJsonArray elements =
        QJsonDocument::fromJson(json).object().value(QLatin1String("firmware")).toArray();
    catalogue.types.reserve(elements.size());
    for (const QJsonValue& element : elements) {
        const QJsonObject entry = element.toObject();
        const QString type = entry.value(QLatin1String("type")).toString();
        catalogue.types.append(type);
        catalogue.byType.insert(type, entry);
    }
    return catalogue;
}

FirmwareFiles FirmwareFiles::fromEntry(const QJsonObject& entry)
{
    FirmwareFiles files;
    const QJsonArray elements = entry.value(QLatin1String("files")).toArray();
    for (const QJsonValue& element : elements) {
        const QJsonObject file = element.toObject();
        const QString name = file.value(QLatin1String("name")).toString();
        if (name.contains(QLatin1String("boot")))
            files.bootFileName = name;
        files.urls.append(file.value(QLatin1String("url")).toString());
    }
    return files;
}

bool firmware::isPlainFileName(const QString& name)
{
    // Device names are reserved on Windows whatever follows a dot; so are names that end in dot or blank.
    static const QRegularExpression device(QStringLiteral("^(CON|PRN|AUX|NUL|COM[0-9]|LPT[0-9])(\\..*)?$"),
                                           QRegularExpression::CaseInsensitiveOption);
    static const QString separators = QStringLiteral("/\\:*?\"<>|");
    if (name.isEmpty() || name.size() > cMaxFileNameLength || name.endsWith(QLatin1Char('.')) ||
        name.endsWith(QLatin1Char(' ')))
        return false;
    const bool clean = std::all_of(name.cbegin(), name.cend(), [](QChar character) {
        return character.isPrint() && !separators.contains(character);
    });
    return clean && !device.match(name).hasMatch();
}

QString firmware::fileNameOf(const QString& url)
{
    return QFileInfo(QUrl(url).path()).fileName();
}
