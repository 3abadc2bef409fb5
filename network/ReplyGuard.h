// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QString>
#include <QTimer>

class QNetworkReply;

/// Limits of one network reply.
struct ReplyLimits
{
    /// Maximum time without data, in milliseconds.
    int stallMs = 0;
    /// Maximum duration of the reply, in milliseconds; 0 is no limit.
    int totalMs = 0;
    /// Maximum unread body bytes; with discardBody, the maximum body size.
    qint64 maxBytes = 0;
    /// Discards the body on arrival.
    bool discardBody = false;
};

/**
 * Aborts a reply that breaks its limits, so that finished() always comes. Child of the reply, on its thread.
 */
class ReplyGuard : public QObject
{
    Q_OBJECT

public:
    ReplyGuard(QNetworkReply* reply, const ReplyLimits& limits);

    /// Reason of the abort; empty when the guard did not abort the reply.
    const QString& cutReason() const { return m_cutReason; }

private:
    void onActivity();
    void onReadyRead();
    void cut(const QString& reason);

    QNetworkReply* m_reply;
    const ReplyLimits m_limits;
    QTimer m_stall;
    QTimer m_total;
    qint64 m_discarded = 0;
    QString m_cutReason;
};
