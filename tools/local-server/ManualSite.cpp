// SPDX-License-Identifier: GPL-3.0-or-later
#include "ManualSite.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

const char* contentType(const QString& suffix)
{
    static constexpr struct
    {
        const char* suffix;
        const char* type;
    } cTypes[] = {
        {"html", "text/html; charset=utf-8"},     {"css", "text/css; charset=utf-8"},
        {"js", "text/javascript; charset=utf-8"}, {"svg", "image/svg+xml"},
        {"txt", "text/plain; charset=utf-8"},     {"png", "image/png"},
    };
    for (const auto& entry : cTypes) {
        if (suffix == QLatin1String(entry.suffix))
            return entry.type;
    }
    return "application/octet-stream";
}

} // namespace

ManualSite::ManualSite(const QString& folder) : m_folder(folder) {}

bool ManualSite::isBuilt() const
{
    return QFileInfo(m_folder, QStringLiteral("index.html")).isFile();
}

ManualSite::File ManualSite::file(const QString& path) const
{
    const QString place =
        inside(path.endsWith(QLatin1Char('/')) ? path + QStringLiteral("index.html") : path);
    QFile file(place);
    if (place.isEmpty() || !QFileInfo(place).isFile() || !file.open(QIODevice::ReadOnly))
        return {};
    return {true, file.readAll(), contentType(QFileInfo(place).suffix())};
}

bool ManualSite::needsSlash(const QString& path) const
{
    const QString place = inside(path);
    return !path.endsWith(QLatin1Char('/')) && !place.isEmpty() && QFileInfo(place).isDir();
}

QString ManualSite::inside(const QString& path) const
{
    const QString root = QFileInfo(m_folder).canonicalFilePath();
    const QString place = QFileInfo(m_folder + path).canonicalFilePath();
    return !root.isEmpty() && place.startsWith(root + QLatin1Char('/')) ? place : QString();
}
