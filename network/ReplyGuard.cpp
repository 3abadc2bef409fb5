// SPDX-License-Identifier: GPL-3.0-or-later
#include "network/ReplyGuard.h"

#include <QNetworkReply>

ReplyGuard::ReplyGuard(QNetworkReply* reply, const ReplyLimits& limits)
    : QObject(reply), m_reply(reply), m_limits(limits)
{
    m_stall.setSingleShot(true);
    m_total.setSingleShot(true);
    connect(&m_stall, &QTimer::timeout, this,
            [this] { cut(QStringLiteral("no data for %1 ms").arg(m_limits.stallMs)); });
    connect(&m_total, &QTimer::timeout, this,
            [this] { cut(QStringLiteral("not finished after %1 ms").arg(m_limits.totalMs)); });
    connect(reply, &QNetworkReply::metaDataChanged, this, &ReplyGuard::onActivity);
    connect(reply, &QNetworkReply::readyRead, this, &ReplyGuard::onReadyRead);
    connect(reply, &QNetworkReply::finished, this, [this] {
        m_stall.stop();
        m_total.stop();
    });
    m_stall.start(m_limits.stallMs);
    if (m_limits.totalMs > 0)
        m_total.start(m_limits.totalMs);
}

void ReplyGuard::onActivity()
{
    m_stall.start(m_limits.stallMs);
}

void ReplyGuard::onReadyRead()
{
    onActivity();
    if (m_limits.discardBody)
        m_discarded += m_reply->skip(m_reply->bytesAvailable());
    if (m_discarded + m_reply->bytesAvailable() > m_limits.maxBytes)
        cut(QStringLiteral("more than %1 bytes").arg(m_limits.maxBytes));
}

void ReplyGuard::cut(const QString& reason)
{
    if (!m_cutReason.isEmpty() || m_reply->isFinished())
        return;
    m_cutReason = reason;
    m_reply->abort();
}
