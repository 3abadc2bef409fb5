// SPDX-License-Identifier: GPL-3.0-or-later
#include "storage/DataFolders.h"

#include "platform/UserFolders.h"

#include <QDir>

#include <chrono>
#include <mutex>

namespace folders {

namespace {

QString pathOf(QLatin1String name)
{
    // Looked up once a second: Qt reads a file of the desktop for it, and logs ask for it with each line.
    constexpr std::chrono::seconds cLookInterval(1);
    static std::mutex mutex;
    static QString documents;
    static std::chrono::steady_clock::time_point lookedAt;
    const std::lock_guard<std::mutex> lock(mutex);
    const auto now = std::chrono::steady_clock::now();
    if (documents.isEmpty() || now - lookedAt >= cLookInterval) {
        documents = platform::userFolder(platform::UserFolder::Documents);
        lookedAt = now;
    }
    return documents + QLatin1String("/Quorvel/") + name;
}

QString ensured(const QString& folder)
{
    QDir().mkpath(folder);
    return folder;
}

} // namespace

QString logs()
{
    return ensured(logsPath());
}
QString logsPath()
{
    return pathOf(QLatin1String("Logs"));
}
QString database()
{
    return ensured(pathOf(QLatin1String("Database")));
}
QString curves()
{
    return ensured(pathOf(QLatin1String("Curves")));
}
QString recordings()
{
    return ensured(pathOf(QLatin1String("Recordings")));
}

} // namespace folders
