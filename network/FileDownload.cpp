// SPDX-License-Identifier: GPL-3.0-or-later
#include "network/FileDownload.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QTimer>

namespace {

/// How much of the body waits in memory when the disk is slower than the network.
constexpr qint64 cReadBufferSize = 1024 * 1024;
constexpr int cFirstSuccessStatus = 200;
constexpr int cFirstRedirectStatus = 300;

bool isHttp(const QUrl& url)
{
    return url.isValid() && !url.host().isEmpty() &&
           (url.scheme() == QLatin1String("http") || url.scheme() == QLatin1String("https"));
}

} // namespace

FileDownload::FileDownload(const QUrl& url, const QString& path, const ReplyLimits& limits, QObject* parent)
    : QObject(parent), m_url(url), m_path(path), m_limits(limits), m_file(path)
{}

FileDownload::~FileDownload()
{
    if (m_reply == nullptr)
        return;
    m_reply->disconnect(this);
    m_reply->abort();
    m_reply->deleteLater();
}

void FileDownload::start(QNetworkAccessManager& network)
{
    if (!isHttp(m_url))
        m_outcome.errorText = QStringLiteral("not an HTTP address");
    else if (!m_file.open(QIODevice::WriteOnly))
        m_outcome.errorText = m_file.errorString();
    if (!m_outcome.errorText.isEmpty()) {
        QTimer::singleShot(0, this, &FileDownload::finished);
        return;
    }
    m_reply = network.get(QNetworkRequest(m_url));
    m_reply->setReadBufferSize(cReadBufferSize);
    m_guard = new ReplyGuard(m_reply, m_limits);
    connect(m_reply, &QNetworkReply::readyRead, this, &FileDownload::onReadyRead);
    connect(m_reply, &QNetworkReply::downloadProgress, this, &FileDownload::progress);
    connect(m_reply, &QNetworkReply::finished, this, &FileDownload::onReplyFinished);
}

bool FileDownload::drain()
{
    while (m_saveError.isEmpty() && m_reply->bytesAvailable() > 0) {
        const QByteArray chunk = m_reply->read(cReadBufferSize);
        m_outcome.bytes += chunk.size();
        if (chunk.isEmpty())
            m_saveError = m_reply->errorString();
        else if (m_outcome.bytes > m_limits.maxBytes)
            m_saveError = QStringLiteral("more than %1 bytes").arg(m_limits.maxBytes);
        else if (m_file.write(chunk) != chunk.size())
            m_saveError = m_file.errorString();
    }
    return m_saveError.isEmpty();
}

void FileDownload::onReadyRead()
{
    // The reply's guard sees the data first and may have ended it.
    if (m_reply != nullptr && !drain())
        m_reply->abort();
}

QString FileDownload::refusal() const
{
    if (!m_saveError.isEmpty())
        return m_saveError;
    if (!m_guard->cutReason().isEmpty())
        return m_guard->cutReason();
    if (m_reply->error() != QNetworkReply::NoError)
        return m_reply->errorString();
    const int status = m_reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    if (status < cFirstSuccessStatus || status >= cFirstRedirectStatus)
        return QStringLiteral("HTTP status %1").arg(status);
    if (m_outcome.bytes == 0)
        return QStringLiteral("the file is empty");
    // With a content encoding the length is that of the encoded body.
    const QVariant announced = m_reply->header(QNetworkRequest::ContentLengthHeader);
    if (announced.isValid() && !m_reply->hasRawHeader("Content-Encoding") &&
        announced.toLongLong() != m_outcome.bytes)
        return QStringLiteral("%1 bytes were announced").arg(announced.toLongLong());
    return {};
}

void FileDownload::onReplyFinished()
{
    // After an error the rest of the body is no part of a file.
    if (m_reply->error() == QNetworkReply::NoError)
        drain();
    m_outcome.error = int(m_reply->error());
    m_outcome.transferText = m_guard->cutReason().isEmpty() ? m_reply->errorString() : m_guard->cutReason();
    m_outcome.errorText = refusal();
    // commit() does not notice when the last, buffered bytes do not fit on the disk: flush() does.
    if (!m_outcome.errorText.isEmpty() || !m_file.flush())
        m_file.cancelWriting();
    // Closes the file in either case; it takes its name only when everything was written.
    m_outcome.saved = m_file.commit() && m_outcome.errorText.isEmpty();
    if (!m_outcome.saved && m_outcome.errorText.isEmpty())
        m_outcome.errorText = m_file.errorString();
    m_reply->deleteLater();
    m_reply = nullptr;
    Q_EMIT finished();
}
