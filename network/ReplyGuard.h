// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QString>
#include <QTimer>

class QNetworkReply;

/// Limits of one network reply.
struct ReplyLimits
{
    /// Longest silence, in milliseconds.
    int stallMs = 0;
    /// Longest life, in milliseconds.
    int totalMs = 0;
    /// Most body bytes that may wait unread or, when they are discarded, pass by in all.
    qint64 maxBytes = 0;
    /// Throw the body away as it comes.
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

    /// Why the reply was aborted; empty when it was not.
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
