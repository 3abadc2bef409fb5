// SPDX-License-Identifier: GPL-3.0-or-later
#include "upgrade/CUpgradeControl.h"

#include "network/ServerAddress.h"
#include "platform/InstallerLauncher.h"
#include "storage/ApplicationInfo.h"
#include "storage/SettingsFile.h"
#include "upgrade/CDownWorkThread.h"
#include "upgrade/FileDigest.h"
#include "upgrade/UpdateAnswer.h"
#include "upgrade/UpdateVersion.h"

#include <QCoreApplication>
#include <QDebug>
#include <QFile>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QPointer>
#include <QScopedValueRollback>
#include <QStandardPaths>
#include <QThread>
#include <QTimer>
#include <QUrl>

#include <utility>

namespace {

/// Time limit of a check. A check without an answer counts as a network error.
constexpr int cCheckTimeoutMs = 30000;
/// An answer has a few hundred bytes. A server that sends more is broken or hostile.
constexpr qint64 cMaximumAnswerBytes = qint64(1) << 20;
/// Time limit for the end of the download thread, and the extra time after an interruption request.
constexpr int cThreadQuitTimeoutMs = 1500;
constexpr int cThreadInsistTimeoutMs = 500;

QString checkPath()
{
    return QStringLiteral("/api/check_version");
}
QString upgradeGroup()
{
    return QLatin1String(setting::ignoredVersion.group);
}
QString ignoredVersionKey()
{
    return QLatin1String(setting::ignoredVersion.key);
}

/// Where the package is stored until it is started.
QString downloadDir()
{
    return QStandardPaths::writableLocation(QStandardPaths::TempLocation);
}

} // namespace

CUpgradeControl::CUpgradeControl(std::shared_ptr<SettingsFile> settings, QObject* parent,
                                 int autoCheckDelayMs)
    : QObject(parent), m_settings(std::move(settings))
{
    if (autoCheckDelayMs >= 0)
        QTimer::singleShot(autoCheckDelayMs, this,
                           [this] { requestCheckUpdate(apiUrl(checkPath()), false); });
}

CUpgradeControl::~CUpgradeControl()
{
    if (m_workerThread == nullptr)
        return;
    const QPointer<CDownWorkThread> worker(m_worker);
    m_worker->requestStop();
    m_worker->deleteLater();
    m_workerThread->quit();
    bool ended = m_workerThread->wait(cThreadQuitTimeoutMs);
    if (!ended) {
        m_workerThread->requestInterruption();
        m_workerThread->quit();
        ended = m_workerThread->wait(cThreadInsistTimeoutMs);
    }
    if (!ended) {
        m_workerThread->terminate();
        m_workerThread->wait(cThreadInsistTimeoutMs);
    }
    // A thread that was already ending does not run the queued deletion.
    if (ended)
        delete worker.data();
    delete m_workerThread;
    // Nobody needs a package that was not checked or not started.
    if (m_downloading || m_verified)
        QFile::remove(CDownWorkThread::packagePath(downloadDir()));
}

void CUpgradeControl::checkUpdateNow()
{
    requestCheckUpdate(apiUrl(checkPath()), true);
}

void CUpgradeControl::checkUpdate(const QString& apiUrl)
{
    requestCheckUpdate(apiUrl, false);
}

QString CUpgradeControl::serverBaseUrl() const
{
    QString host = server::defaultServerAddress();
    if (m_settings != nullptr)
        host = m_settings->value(server::settingsGroup(), server::hostKey(), host).toString();
    return server::normalizeServerHost(host);
}

QString CUpgradeControl::apiUrl(const QString& path) const
{
    int port = server::cDefaultApiPort;
    if (m_settings != nullptr)
        port = server::portOr(m_settings->value(server::settingsGroup(), server::apiPortKey(), port).toInt(),
                              port);
    return server::url(serverBaseUrl(), port, path);
}

void CUpgradeControl::requestCheckUpdate(const QString& url, bool manual)
{
    if (m_network == nullptr)
        m_network = new QNetworkAccessManager(this);
    const int number = ++m_lastNumber;
    if (manual)
        m_operation = number;
    QNetworkRequest request{QUrl(url)};
    request.setHeader(QNetworkRequest::ContentTypeHeader, QStringLiteral("application/json"));
    QNetworkReply* reply = m_network->post(request, versionCheckBody(applicationVersion()));
    qDebug() << "CUpgradeControl::requestCheckUpdate"
             << "check update start";
    connect(reply, &QNetworkReply::finished, this, [this, reply, number, manual] {
        handleCheckReply(reply, number, manual);
        reply->deleteLater();
    });
    // With the limit on the buffer nothing beyond it is taken off the wire, however fast the server is.
    reply->setReadBufferSize(cMaximumAnswerBytes);
    connect(reply, &QNetworkReply::readyRead, reply, [reply] {
        if (reply->bytesAvailable() >= cMaximumAnswerBytes)
            reply->abort();
    });
    QTimer::singleShot(cCheckTimeoutMs, reply, [reply] { reply->abort(); });
}

void CUpgradeControl::handleCheckReply(QNetworkReply* reply, int number, bool manual)
{
    const QScopedValueRollback<int> reporting(m_reporting, number);
    const QString current = applicationVersion();
    if (reply->error() != QNetworkReply::NoError) {
        qDebug() << "network error:" << reply->errorString();
        Q_EMIT updateStatus(UPC_NetworkError);
        if (manual)
            Q_EMIT manualCheckFinished(false, current, {}, {}, {}, reply->errorString());
        return;
    }
    const QByteArray body = reply->readAll();
    qDebug() << "update reply:" << body;
    const UpdateAnswer answer = UpdateAnswer::fromJson(body);
    if (!answer.isValid) {
        if (manual)
            Q_EMIT manualCheckFinished(false, current, {}, {}, {},
                                       QStringLiteral("Invalid update response."));
        return;
    }
    if (!answer.needUpdate) {
        qDebug() << "already latest version";
        if (manual)
            Q_EMIT manualCheckFinished(false, current, current, {}, {},
                                       QStringLiteral("Already latest version."));
        return;
    }
    m_downloadUrl = answer.url;
    m_latestVersion = answer.latestVersion;
    m_packageSha256 = answer.sha256;
    qDebug() << "curVersion" << current;
    qDebug() << "new version:" << m_latestVersion;
    qDebug() << "sha256:" << m_packageSha256;

    if (!manual && m_settings != nullptr &&
        m_settings->value(upgradeGroup(), ignoredVersionKey(), {}).toString() == m_latestVersion) {
        qDebug() << "update ignored version:" << m_latestVersion;
        return;
    }
    if (isNewerVersion(current, m_latestVersion)) {
        if (manual)
            Q_EMIT manualCheckFinished(true, current, m_latestVersion, answer.description, m_downloadUrl, {});
        else
            Q_EMIT needUpdate2(m_latestVersion, answer.description);
        return;
    }
    qDebug() << "already latest";
    if (manual)
        Q_EMIT manualCheckFinished(false, current, m_latestVersion, answer.description, m_downloadUrl,
                                   QStringLiteral("Already latest version."));
}

void CUpgradeControl::ignoreVersion(const QString& version)
{
    const QString trimmed = version.trimmed();
    if (trimmed.isEmpty() || m_settings == nullptr)
        return;
    m_settings->setValue(upgradeGroup(), ignoredVersionKey(), trimmed);
}

void CUpgradeControl::createWorker()
{
    m_workerThread = new QThread;
    m_workerThread->setObjectName(QStringLiteral("update download"));
    m_worker = new CDownWorkThread;
    m_worker->setDownloadDir(downloadDir());
    connect(m_workerThread, &QThread::started, m_worker, &CDownWorkThread::processMount);
    connect(m_worker, &CDownWorkThread::sigFinished, this, &CUpgradeControl::slotDownloadFinish);
    connect(m_worker, &CDownWorkThread::emitdownloadProgress, this, [this](const QString& progress) {
        const QScopedValueRollback<int> reporting(m_reporting, m_transfer.number);
        Q_EMIT emitdownloadProgress(progress);
    });
    connect(m_worker, &CDownWorkThread::sigDownloadStatus, this, [this](int status) {
        m_failed = status == UPC_Access || status == UPC_Canceled;
        reportStatus(m_transfer.number, status);
    });
    connect(m_workerThread, &QThread::finished, this, [this] {
        if (m_nextTransfer.number != 0)
            beginDownload();
    });
    m_worker->moveToThread(m_workerThread);
}

void CUpgradeControl::startUpdate(const QString& url)
{
    Q_UNUSED(url)
    if (m_workerThread == nullptr)
        createWorker();
    const bool underWay = m_downloading && !m_failed && !m_worker->isStopRequested() &&
                          m_transfer.url == m_downloadUrl && m_transfer.sha256 == m_packageSha256;
    if (underWay) {
        m_operation = m_transfer.number;
        reportStatus(m_operation, UPC_Start);
        return;
    }
    m_nextTransfer = {++m_lastNumber, m_downloadUrl, m_packageSha256};
    m_operation = m_nextTransfer.number;
    if (m_downloading)
        m_worker->requestStop();
    else if (!m_workerThread->isRunning())
        beginDownload();
}

void CUpgradeControl::beginDownload()
{
    m_transfer = std::exchange(m_nextTransfer, {});
    m_verified = false;
    m_installerPath.clear();
    m_failed = false;
    // slotDownloadFinish() from outside may have ended the thread of a running transfer.
    if (m_worker->isTransferring()) {
        reportStatus(m_transfer.number, UPC_NetworkError);
        return;
    }
    m_worker->clearStop();
    m_worker->setPackageUrl(m_transfer.url);
    m_downloading = true;
    reportStatus(m_transfer.number, UPC_Start);
    m_workerThread->start();
}

void CUpgradeControl::reportStatus(int number, int status)
{
    const QScopedValueRollback<int> reporting(m_reporting, number);
    Q_EMIT updateStatus(status);
}

bool CUpgradeControl::reportsCurrentOperation() const
{
    return m_reporting == 0 || m_reporting == m_operation;
}

void CUpgradeControl::abandonOperation()
{
    m_operation = 0;
    stopUpdate();
    if (m_verified) {
        m_verified = false;
        QFile::remove(m_installerPath);
    }
}

void CUpgradeControl::stopUpdate()
{
    m_nextTransfer = {};
    if (m_worker != nullptr)
        m_worker->requestStop();
}

void CUpgradeControl::slotDownloadFinish(const QString& name)
{
    qDebug() << "CUpgradeControl::slotDownloadFinish"
             << "download finished";
    // A file that fails its check is deleted, so only the download's own file is ever checked.
    if (!name.isEmpty() && name != CDownWorkThread::packagePath(downloadDir())) {
        qWarning() << "CUpgradeControl::slotDownloadFinish" << name << "is not the downloaded package";
        reportStatus(m_transfer.number, UPC_NetworkError);
        return;
    }
    const bool stopped = m_downloading && m_worker->isStopRequested();
    if (!m_downloading)
        m_transfer = {0, m_downloadUrl, m_packageSha256};
    m_installerPath = name;
    m_verified = false;
    if (m_workerThread != nullptr)
        m_workerThread->exit(0);
    m_downloading = false;
    // The end of the thread starts the next transfer.
    if (m_nextTransfer.number != 0 || name.isEmpty())
        return;
    // The stop came after the last byte.
    if (stopped) {
        QFile::remove(name);
        reportStatus(m_transfer.number, UPC_Canceled);
        return;
    }
    m_verified = verifyPackage(name);
    if (m_verified) {
        qDebug() << "sha256 verify success";
        reportStatus(m_transfer.number, UPC_Finished);
        return;
    }
    qDebug() << "sha256 verify failed";
    QFile::remove(name);
    reportStatus(m_transfer.number, UPC_NetworkError);
}

bool CUpgradeControl::verifyPackage(const QString& path) const
{
    const QString digest = sha256OfFile(path);
    qDebug() << "server sha256:" << m_transfer.sha256;
    qDebug() << "local  sha256:" << digest;
    // A file that cannot be read equals nothing, not even the checksum that a server did not name.
    return !digest.isEmpty() && m_transfer.sha256.compare(digest, Qt::CaseInsensitive) == 0;
}

void CUpgradeControl::startInstall()
{
    qDebug() << "CUpgradeControl::startInstall" << m_installerPath;
    // The file lay in the temporary folder since its check: whatever replaced it there must not run.
    const bool intact = m_verified && verifyPackage(m_installerPath);
    m_verified = false;
    if (intact && platform::openInstaller(m_installerPath)) {
        QCoreApplication::quit();
        return;
    }
    if (intact)
        QFile::remove(m_installerPath);
    // The user has just asked for it, in whatever operation this is.
    reportStatus(m_operation, UPC_NetworkError);
}
