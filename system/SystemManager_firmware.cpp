// SPDX-License-Identifier: GPL-3.0-or-later
#include "firmware/FirmwareCatalogue.h"
#include "firmware/FlashProgress.h"
#include "network/FileDownload.h"
#include "network/ReplyGuard.h"
#include "system/SystemManager.h"

#include <QDir>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QStandardPaths>

namespace {

constexpr qint64 cMaxCatalogueBytes = 16 * 1024 * 1024;
/// Several times the largest serial flash.
constexpr qint64 cMaxImageBytes = 256 * 1024 * 1024;

} // namespace

void SystemManager::requestMcuTypes(const QString& api)
{
    if (m_stopping)
        return;
    const QString url = api.isEmpty() ? apiUrl(QStringLiteral("/api/mcu/firmware_list")) : api;
    writeLog(QStringLiteral("requestMcuTypes: %1").arg(url));
    QNetworkReply* reply = network()->get(QNetworkRequest(QUrl(url)));
    ReplyLimits limits;
    limits.stallMs = m_timings.catalogueStallMs;
    limits.totalMs = m_timings.catalogueTimeoutMs;
    limits.maxBytes = cMaxCatalogueBytes;
    const auto* guard = new ReplyGuard(reply, limits);
    ++m_catalogueRequests;
    connect(reply, &QNetworkReply::finished, this,
            [this, reply, guard] { onCatalogueFinished(reply, guard->cutReason()); });
}

void SystemManager::onCatalogueFinished(QNetworkReply* reply, const QString& cutReason)
{
    --m_catalogueRequests;
    // A reply that was cut off is closed.
    const QByteArray body = reply->isReadable() ? reply->readAll() : QByteArray();
    writeLog(QStringLiteral("requestMcuTypes finished. error=%1(%2) bytes=%3")
                 .arg(QString::number(int(reply->error())),
                      cutReason.isEmpty() ? reply->errorString() : cutReason, QString::number(body.size())));
    m_catalogueMissing = reply->error() != QNetworkReply::NoError;
    // The page of an error is no catalogue, whatever it says.
    FirmwareCatalogue catalogue = FirmwareCatalogue::fromJson(m_catalogueMissing ? QByteArray() : body);
    m_mcuTypes = std::move(catalogue.types);
    m_firmwareByType = std::move(catalogue.byType);
    reply->deleteLater();
    Q_EMIT mcuTypesChanged();
}

QString SystemManager::firmwareCacheDir() const
{
    const QString folder =
        QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation) + QStringLiteral("/firmware");
    QDir().mkpath(folder);
    return folder;
}

void SystemManager::emptyFirmwareCache()
{
    QDir cache(firmwareCacheDir());
    const QStringList images =
        cache.entryList({QStringLiteral("*.bin")}, QDir::Files | QDir::Hidden | QDir::System);
    for (const QString& image : images) {
        if (!cache.remove(image))
            writeLog(QStringLiteral("firmware cache: cannot remove %1").arg(cache.filePath(image)));
    }
}

void SystemManager::downloadNext()
{
    if (m_downloadIndex >= m_downloadUrls.size()) {
        Q_EMIT logMessage(QStringLiteral("Firmware download completed."));
        startFelUpgrade();
        return;
    }
    const QString url = m_downloadUrls.at(m_downloadIndex);
    writeLog(QStringLiteral("downloadNext: index=%1 url=%2").arg(QString::number(m_downloadIndex), url));
    const QString name = firmware::fileNameOf(url);
    const QString path = firmwareCacheDir() + QLatin1Char('/') + name;
    ReplyLimits limits;
    limits.stallMs = m_timings.downloadStallMs;
    limits.totalMs = m_timings.downloadTimeoutMs;
    limits.maxBytes = cMaxImageBytes;
    // An address without HTTP is refused by the download; so is a name that could leave the cache folder.
    const bool plain = firmware::isPlainFileName(name);
    if (!plain)
        writeLog(QStringLiteral("downloadNext: no usable file name: %1").arg(name));
    m_download = new FileDownload(plain ? QUrl(url) : QUrl(), path, limits, this);
    connect(m_download, &FileDownload::progress, this, &SystemManager::onDownloadProgress);
    connect(m_download, &FileDownload::finished, this, &SystemManager::onDownloadFinished);
    m_download->start(*network());
}

void SystemManager::onDownloadProgress(qint64 received, qint64 total)
{
    if (total < 1 || m_download == nullptr)
        return;
    const int overall = flash::downloadProgress(m_downloadIndex, m_downloadUrls.size(), received, total);
    Q_EMIT logMessage(QStringLiteral("Download: %1 %2%")
                          .arg(firmware::fileNameOf(m_downloadUrls.at(m_downloadIndex)),
                               QString::number(flash::downloadPercent(received, total))));
    Q_EMIT progressChanged(overall);
}

void SystemManager::onDownloadFinished()
{
    const QString url = m_downloadUrls.at(m_downloadIndex);
    const DownloadOutcome outcome = m_download->outcome();
    const QString path = m_download->path();
    m_download->deleteLater();
    m_download = nullptr;
    writeLog(
        QStringLiteral("download finished: url=%1 error=%2(%3) bytes=%4")
            .arg(url, QString::number(outcome.error), outcome.transferText, QString::number(outcome.bytes)));
    writeLog(QStringLiteral("download target path=%1").arg(path));
    if (!outcome.saved) {
        writeLog(QStringLiteral("download save failed: path=%1 error=%2").arg(path, outcome.errorText));
        Q_EMIT logMessage(QStringLiteral("Failed to save firmware file: ") + path);
        finishUpgrade(false);
        return;
    }
    Q_EMIT logMessage(QStringLiteral("Downloaded: ") + firmware::fileNameOf(url));
    ++m_downloadIndex;
    downloadNext();
}
