// SPDX-License-Identifier: GPL-3.0-or-later
#include "network/HttpTransfer.h"

#include <QFileDevice>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QTimer>

namespace {

/// Maximum number of body bytes in memory when the disk is slower than the network.
constexpr qint64 cReadBufferSize = 1024 * 1024;
constexpr int cFirstSuccessStatus = 200;
constexpr int cFirstRedirectStatus = 300;

bool isHttp(const QUrl& url)
{
    return url.isValid() && !url.host().isEmpty() &&
           (url.scheme() == QLatin1String("http") || url.scheme() == QLatin1String("https"));
}

} // namespace

HttpTransfer::HttpTransfer(QFileDevice& target, const ReplyLimits& limits, QObject* parent)
    : QObject(parent), m_target(target), m_limits(limits)
{}

HttpTransfer::~HttpTransfer()
{
    if (m_reply == nullptr)
        return;
    m_reply->disconnect(this);
    m_reply->abort();
    m_reply->deleteLater();
}

void HttpTransfer::start(QNetworkAccessManager& network, const QUrl& url)
{
    if (!isHttp(url)) {
        setEnd(TransferOutcome::End::Incomplete, QStringLiteral("not an HTTP address"));
        QTimer::singleShot(0, this, &HttpTransfer::finished);
        return;
    }
    m_reply = network.get(QNetworkRequest(url));
    m_reply->setReadBufferSize(cReadBufferSize);
    m_guard = new ReplyGuard(m_reply, m_limits);
    connect(m_reply, &QNetworkReply::readyRead, this, &HttpTransfer::onReadyRead);
    connect(m_reply, &QNetworkReply::downloadProgress, this, &HttpTransfer::progress);
    connect(m_reply, &QNetworkReply::finished, this, &HttpTransfer::onReplyFinished);
}

void HttpTransfer::abort()
{
    if (m_reply != nullptr)
        m_reply->abort();
}

void HttpTransfer::setEnd(TransferOutcome::End end, const QString& reason)
{
    m_outcome.end = end;
    m_outcome.reason = reason;
}

bool HttpTransfer::drain()
{
    using End = TransferOutcome::End;
    while (m_outcome.end == End::Complete && m_reply->bytesAvailable() > 0) {
        const QByteArray chunk = m_reply->read(cReadBufferSize);
        m_outcome.bytes += chunk.size();
        if (chunk.isEmpty())
            setEnd(End::Incomplete, m_reply->errorString());
        else if (m_outcome.bytes > m_limits.maxBytes)
            setEnd(End::TooLarge, QStringLiteral("more than %1 bytes").arg(m_limits.maxBytes));
        else if (m_target.write(chunk) != chunk.size())
            setEnd(End::TargetFailed, m_target.errorString());
    }
    return m_outcome.end == End::Complete;
}

void HttpTransfer::onReadyRead()
{
    // The reply's guard sees the data first and may have ended the reply.
    if (m_reply != nullptr && !drain())
        abort();
}

QString HttpTransfer::refusal() const
{
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

void HttpTransfer::onReplyFinished()
{
    using End = TransferOutcome::End;
    // After an error the rest of the body is not part of a file.
    if (m_reply->error() == QNetworkReply::NoError)
        drain();
    m_outcome.error = int(m_reply->error());
    m_outcome.errorText = m_guard->cutReason().isEmpty() ? m_reply->errorString() : m_guard->cutReason();
    if (m_outcome.end == End::Complete) {
        // A full disk may show only when the last bytes leave the buffer.
        if (!m_target.flush())
            setEnd(End::TargetFailed, m_target.errorString());
        else if (const QString reason = refusal(); !reason.isEmpty())
            setEnd(End::Incomplete, reason);
    }
    m_reply->deleteLater();
    m_reply = nullptr;
    Q_EMIT finished();
}
