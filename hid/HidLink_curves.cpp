// SPDX-License-Identifier: GPL-3.0-or-later
#include "hid/HidLink.h"
#include "instrument/CurveArchive.h"
#include "platform/FileManager.h"
#include "storage/DataFolders.h"

#include <QFileInfo>

QString HidLink::archiveCurrentCurve(const QVariantList& voltageSamples, const QVariantList& currentSamples,
                                     double sampleIntervalSec)
{
    const QString folder = folders::curves();
    if (!QFileInfo(folder).isDir()) {
        Q_EMIT errorOccurred(QStringLiteral("Failed to create archive directory: %1").arg(folder));
        return {};
    }

    const QDateTime now = wallTime();
    CurveArchive archive;
    archive.createdAt = now.toString(Qt::ISODate);
    archive.deviceId = deviceId();
    archive.deviceVersion = deviceVersion();
    archive.sampleIntervalSec = sampleIntervalSec;
    archive.voltageSamples = voltageSamples;
    archive.currentSamples = currentSamples;

    const QString path = folder + QLatin1Char('/') + CurveArchive::fileName(now);
    if (!archive.save(path)) {
        Q_EMIT errorOccurred(QStringLiteral("Failed to write curve archive: %1").arg(path));
        return {};
    }
    Q_EMIT curveArchived(path);
    return path;
}

QVariantMap HidLink::loadCurveArchive(const QString& filePath)
{
    CurveArchive archive;
    switch (CurveArchive::load(filePath, archive)) {
    case CurveArchive::LoadStatus::NotOpened:
        Q_EMIT errorOccurred(QStringLiteral("Failed to open curve archive: %1").arg(filePath));
        return {};
    case CurveArchive::LoadStatus::Invalid:
        Q_EMIT errorOccurred(QStringLiteral("Invalid curve archive: %1").arg(filePath));
        return {};
    case CurveArchive::LoadStatus::Loaded:
        break;
    }
    Q_EMIT curveArchiveLoaded(filePath);
    return archive.toMap(filePath);
}

bool HidLink::revealPath(const QString& filePath)
{
    if (filePath.isEmpty())
        return false;
    if (!QFileInfo::exists(filePath)) {
        Q_EMIT errorOccurred(QStringLiteral("File does not exist: %1").arg(filePath));
        return false;
    }
    return platform::showInFileManager(filePath);
}
