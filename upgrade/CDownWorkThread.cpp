// SPDX-License-Identifier: GPL-3.0-or-later
#include "upgrade/CDownWorkThread.h"

#include "upgrade/CUpgradeControl.h"

#include <QDebug>
#include <QFile>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QTimer>

namespace {

/// How much the network may run ahead of the disk.
constexpr qint64 cReadAheadBytes = 256 * 1024;

/// Only these lead to a server; the others that Qt knows read this machine's own files.
bool isWebAddress(const QUrl& url)
{
    return url.isValid() && (url.scheme() == QLatin1String("http") || url.scheme() == QLatin1String("https"));
}

} // namespace

CDownWorkThread::CDownWorkThread(QObject* parent) : QObject(parent)
{
    connect(this, &CDownWorkThread::stopNoticed, this, &CDownWorkThread::endIfStopped, Qt::QueuedConnection);
}

CDownWorkThread::~CDownWorkThread()
{
    if (m_reply == nullptr)
        return;
    m_reply->disconnect(this);
    m_file->close();
    m_file->remove();
}

QString CDownWorkThread::installerFileName()
{
    return QStringLiteral("Quorvel-installer.exe");
}

QString CDownWorkThread::packagePath(const QString& folder)
{
    return folder + QLatin1Char('/') + installerFileName();
}

QString CDownWorkThread::progressText(qint64 received, qint64 total)
{
    const double fraction = total != 0 ? double(received) / double(total) : 0.0;
    return QStringLiteral("%1").arg(fraction);
}

void CDownWorkThread::requestStop()
{
    m_stopRequested = true;
    // The flag alone acts with the next data. A silent server sends none, so look at the flag at once.
    Q_EMIT stopNoticed();
}

void CDownWorkThread::endIfStopped()
{
    // The news may arrive after the end, when the next thread may already prepare the next transfer.
    if (m_stopRequested && m_transferring)
        endTransfer();
}

void CDownWorkThread::processMount()
{
    m_requestUrl = QUrl(m_packageUrl);
    const QString path = packagePath(m_downloadDir);
    qDebug() << "url = " << m_requestUrl << "pathpackage = " << path;
    if (m_network == nullptr)
        m_network = new QNetworkAccessManager(this);
    if (m_file == nullptr)
        m_file = new QFile(path, this);
    else
        m_file->setFileName(path);
    if (!openPackageFile()) {
        qDebug() << "open file fail";
        Q_EMIT sigDownloadStatus(CUpgradeControl::UPC_Access);
        Q_EMIT sigFinished(QString());
        return;
    }
    startTransfer(true);
}

void CDownWorkThread::updatefile()
{
    // Nothing to repeat before the first download, nothing to disturb during one.
    if (m_file == nullptr || m_reply != nullptr)
        return;
    if (!openPackageFile()) {
        Q_EMIT sigDownloadStatus(CUpgradeControl::UPC_Access);
        Q_EMIT sigFinished(QString());
        return;
    }
    startTransfer(false);
}

bool CDownWorkThread::openPackageFile()
{
    // The name is known to everyone who can write into the temporary folder: only a file made by this very
    // call is used, never one, or a link, that was laid there.
    m_file->remove();
    return m_file->open(QIODevice::WriteOnly | QIODevice::NewOnly);
}

void CDownWorkThread::startTransfer(bool reportStatus)
{
    m_transferring = true;
    m_received = 0;
    m_end = End::Transferred;
    if (!isWebAddress(m_requestUrl)) {
        // The empty file fails its check like every other broken transfer.
        onTransferFinished();
        return;
    }
    if (m_stallTimer == nullptr) {
        m_stallTimer = new QTimer(this);
        m_stallTimer->setSingleShot(true);
        connect(m_stallTimer, &QTimer::timeout, this, &CDownWorkThread::endTransfer);
    }
    m_reply = m_network->get(QNetworkRequest(m_requestUrl));
    m_reply->setReadBufferSize(cReadAheadBytes);
    connect(m_reply, &QNetworkReply::readyRead, this, &CDownWorkThread::appendAvailable);
    connect(
        m_reply, &QNetworkReply::downloadProgress, this,
        [this, reportStatus](qint64 received, qint64 total) { onProgress(received, total, reportStatus); });
    connect(m_reply, &QNetworkReply::finished, this, &CDownWorkThread::onTransferFinished);
    m_stallTimer->start(m_stallTimeoutMs);
}

void CDownWorkThread::appendAvailable()
{
    m_stallTimer->start(m_stallTimeoutMs);
    while (m_reply->bytesAvailable() > 0) {
        const QByteArray data = m_reply->readAll();
        m_received += data.size();
        if (m_stopRequested) {
            endTransfer();
            return;
        }
        if (m_received > cMaximumPackageBytes) {
            giveUp(End::TooLarge);
            return;
        }
        if (m_file->write(data) != data.size()) {
            giveUp(End::WriteFailed);
            return;
        }
    }
}

void CDownWorkThread::onProgress(qint64 received, qint64 total, bool reportStatus)
{
    if (reportStatus) {
        m_bytesTotal = total;
        Q_EMIT sigDownloadStatus(CUpgradeControl::UPC_Download);
    }
    Q_EMIT emitdownloadProgress(progressText(received, m_bytesTotal));
}

void CDownWorkThread::giveUp(End end)
{
    qDebug() << "CDownWorkThread::giveUp" << m_file->fileName() << "after" << m_received
             << "bytes:" << (end == End::WriteFailed ? m_file->errorString() : QStringLiteral("too large"));
    m_end = end;
    m_file->close();
    m_file->remove();
    endTransfer();
}

void CDownWorkThread::endTransfer()
{
    // Comes back through onTransferFinished() before it returns.
    if (m_reply != nullptr)
        m_reply->abort();
}

void CDownWorkThread::onTransferFinished()
{
    if (m_reply != nullptr) {
        m_stallTimer->stop();
        m_reply->deleteLater();
        m_reply = nullptr;
    }
    // A full disk may show only when the last bytes leave the buffer.
    if (m_end == End::Transferred && m_file->isOpen() && !m_file->flush())
        m_end = End::WriteFailed;
    m_file->close();
    int status = CUpgradeControl::UPC_Finished;
    if (m_stopRequested)
        status = CUpgradeControl::UPC_Canceled;
    else if (m_end == End::WriteFailed)
        status = CUpgradeControl::UPC_Access;
    const bool usable = status == CUpgradeControl::UPC_Finished;
    // How the reply ended does not matter: what is on disk has to pass its check anyway.
    const QString name = usable ? m_file->fileName() : QString();
    if (!usable && m_received > 0)
        m_file->remove();
    m_transferring = false;
    Q_EMIT sigDownloadStatus(status);
    Q_EMIT sigFinished(name);
}
