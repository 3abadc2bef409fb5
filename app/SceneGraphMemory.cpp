// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/SceneGraphMemory.h"

#include "platform/UserFolders.h"
#include "storage/JsonFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonObject>

#include <cstdlib>

namespace {

constexpr jsonfile::Limits cLimits{16384, 32, 32};
constexpr const char* cStateNames[] = {"works", "trying", "unusable"};

} // namespace

QString SceneGraphMemory::path()
{
    return platform::userFolder(platform::UserFolder::Cache) + QStringLiteral("/Quorvel/graphics.json");
}

std::optional<SceneGraphMemory> SceneGraphMemory::read(const QString& fingerprint, const QDateTime& now)
{
    const QJsonObject object = jsonfile::read(path(), cLimits).document.object();
    SceneGraphMemory memory;
    const QString state = object.value(QLatin1String("state")).toString();
    int index = 0;
    while (index < 3 && state != QLatin1String(cStateNames[index]))
        ++index;
    if (index == 3)
        return {};
    memory.state = State(index);
    memory.fingerprint = object.value(QLatin1String("fingerprint")).toString();
    memory.renderer = object.value(QLatin1String("renderer")).toString();
    memory.driver = object.value(QLatin1String("driver")).toString();
    memory.written = QDateTime::fromString(object.value(QLatin1String("written")).toString(), Qt::ISODate);
    if (memory.fingerprint != fingerprint || !memory.written.isValid())
        return {};
    // A clock that was set back makes it older than it is, never younger.
    if (memory.state == State::Unusable && std::abs(memory.written.daysTo(now)) >= cUnusableDays)
        return {};
    return memory;
}

bool SceneGraphMemory::write() const
{
    const QJsonObject object{{QStringLiteral("state"), QLatin1String(cStateNames[int(state)])},
                             {QStringLiteral("fingerprint"), fingerprint},
                             {QStringLiteral("renderer"), renderer},
                             {QStringLiteral("driver"), driver},
                             {QStringLiteral("written"), written.toString(Qt::ISODate)}};
    // Without waiting for the disk: a torn file is read as no memory.
    QFile file(path());
    QDir().mkpath(QFileInfo(file).path());
    const QByteArray text = QJsonDocument(object).toJson();
    return file.open(QIODevice::WriteOnly) && file.write(text) == text.size();
}
