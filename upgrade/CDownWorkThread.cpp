// SPDX-License-Identifier: GPL-3.0-or-later
#include "upgrade/CDownWorkThread.h"

#include "network/HttpTransfer.h"
#include "upgrade/CUpgradeControl.h"

#include <QDebug>
#include <QFile>
#include <QNetworkAccessManager>

CDownWorkThread::CDownWorkThread(QObject* parent) : QObject(parent)
{
    connect(this, &CDownWorkThread::stopNoticed, this, &CDownWorkThread::endIfStopped, Qt::QueuedConnection);
}

CDownWorkThread::~CDownWorkThread()
{
    if (m_transfer == nullptr)
        return;
    delete m_transfer;
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
    // The flag decides how the transfer is reported; the signal ends it at once, even when no data arrives.
    Q_EMIT stopNoticed();
}

void CDownWorkThread::endIfStopped()
{
    // The signal may arrive after the end, when a new thread already prepares the next transfer.
    // m_transferring is read first, because it is atomic.
    if (m_stopRequested && m_transferring && m_transfer != nullptr)
        m_transfer->abort();
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
    startTransfer(true);
}

void CDownWorkThread::updatefile()
{
    // Nothing to repeat before the first download, nothing to disturb during one.
    if (m_file == nullptr || m_transfer != nullptr)
        return;
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
    if (!openPackageFile()) {
        qDebug() << "open file fail";
        end(CUpgradeControl::UPC_Access, {});
        return;
    }
    ReplyLimits limits;
    limits.stallMs = m_stallTimeoutMs;
    limits.maxBytes = cMaximumPackageBytes;
    m_transfer = new HttpTransfer(*m_file, limits, this);
    connect(m_transfer, &HttpTransfer::progress, this, [this, reportStatus](qint64 received, qint64 total) {
        onProgress(received, total, reportStatus);
    });
    connect(m_transfer, &HttpTransfer::finished, this, &CDownWorkThread::onTransferFinished);
    m_transfer->start(*m_network, m_requestUrl);
}

void CDownWorkThread::onProgress(qint64 received, qint64 total, bool reportStatus)
{
    if (reportStatus) {
        m_bytesTotal = total;
        Q_EMIT sigDownloadStatus(CUpgradeControl::UPC_Download);
    }
    Q_EMIT emitdownloadProgress(progressText(received, m_bytesTotal));
}

void CDownWorkThread::onTransferFinished()
{
    using End = TransferOutcome::End;
    const TransferOutcome outcome = m_transfer->outcome();
    m_transfer->deleteLater();
    m_transfer = nullptr;
    m_file->close();
    if (outcome.end != End::Complete)
        qDebug() << "CDownWorkThread::onTransferFinished" << outcome.bytes << "bytes:" << outcome.reason;

    int status = CUpgradeControl::UPC_Finished;
    if (m_stopRequested)
        status = CUpgradeControl::UPC_Canceled;
    else if (outcome.end == End::TargetFailed)
        status = CUpgradeControl::UPC_Access;
    // An incomplete body keeps its file: the checksum decides. One that is too large need not be checked.
    const bool usable = status == CUpgradeControl::UPC_Finished;
    if (outcome.end == End::TooLarge || (!usable && outcome.bytes > 0))
        m_file->remove();
    end(status, usable ? m_file->fileName() : QString());
}

void CDownWorkThread::end(int status, const QString& name)
{
    m_transferring = false;
    Q_EMIT sigDownloadStatus(status);
    Q_EMIT sigFinished(name);
}
