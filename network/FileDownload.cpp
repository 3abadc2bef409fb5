// SPDX-License-Identifier: GPL-3.0-or-later
#include "network/FileDownload.h"

#include <QTimer>

FileDownload::FileDownload(const QUrl& url, const QString& path, const ReplyLimits& limits, QObject* parent)
    : QObject(parent), m_url(url), m_path(path), m_file(path), m_transfer(m_file, limits, nullptr)
{
    connect(&m_transfer, &HttpTransfer::progress, this, &FileDownload::progress);
    connect(&m_transfer, &HttpTransfer::finished, this, &FileDownload::onTransferFinished);
}

void FileDownload::start(QNetworkAccessManager& network)
{
    if (m_file.open(QIODevice::WriteOnly)) {
        m_transfer.start(network, m_url);
        return;
    }
    m_outcome.errorText = m_file.errorString();
    QTimer::singleShot(0, this, &FileDownload::finished);
}

void FileDownload::onTransferFinished()
{
    const TransferOutcome& transfer = m_transfer.outcome();
    m_outcome.bytes = transfer.bytes;
    m_outcome.error = transfer.error;
    m_outcome.transferText = transfer.errorText;
    m_outcome.errorText = transfer.reason;
    const bool complete = transfer.end == TransferOutcome::End::Complete;
    if (!complete)
        m_file.cancelWriting();
    // Closes the file in either case. It gets its name only when everything was written.
    m_outcome.saved = m_file.commit() && complete;
    if (complete && !m_outcome.saved)
        m_outcome.errorText = m_file.errorString();
    Q_EMIT finished();
}
