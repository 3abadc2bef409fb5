// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "network/ReplyGuard.h"

#include <QObject>
#include <QString>
#include <QUrl>

class QFileDevice;
class QNetworkAccessManager;
class QNetworkReply;

/// Result of a transfer. The texts and the number are for the log.
struct TransferOutcome
{
    enum class End {
        Complete,     ///< Status 200 to 299, and a body that is neither empty nor shorter than announced.
        Incomplete,   ///< Any other answer, a broken connection, a time limit, or abort().
        TooLarge,     ///< The body is larger than the limit.
        TargetFailed, ///< The target refused bytes, for example on a full disk.
    };

    End end = End::Complete;
    /// Reason of any other end than Complete; else empty.
    QString reason;
    /// Body bytes received, including those that the target refused.
    qint64 bytes = 0;
    /// QNetworkReply::NetworkError of the reply, and its text or the limit that it broke.
    int error = 0;
    QString errorText;
};

/**
 * Streams the body of one HTTP GET into an open file, in constant memory and within limits. Redirects are
 * not followed. The caller opens the file and decides what becomes of it. Destroying the object aborts the
 * request. Lives on the thread of its network access manager.
 */
class HttpTransfer : public QObject
{
    Q_OBJECT

public:
    /// \a target is open for writing, and stays valid as long as this object.
    HttpTransfer(QFileDevice& target, const ReplyLimits& limits, QObject* parent);
    ~HttpTransfer() override;

    /// Requests \a url through \a network; ends in finished(), never within this call. Only HTTP and HTTPS
    /// are requested: Qt would read other addresses from this machine's own files.
    void start(QNetworkAccessManager& network, const QUrl& url);
    /// Ends a running transfer; emits finished() before it returns.
    void abort();

    const TransferOutcome& outcome() const { return m_outcome; }

Q_SIGNALS:
    /// Body bytes received and announced; \a total is -1 when the server announces no length.
    void progress(qint64 received, qint64 total);
    /// The one end of the transfer. Every received byte has left the target's buffer.
    void finished();

private:
    void onReadyRead();
    void onReplyFinished();
    /// Writes the received bytes; false when the transfer cannot continue.
    bool drain();
    /// Reason why the finished reply is not the complete file; empty when it is.
    QString refusal() const;
    void setEnd(TransferOutcome::End end, const QString& reason);

    QFileDevice& m_target;
    const ReplyLimits m_limits;
    QNetworkReply* m_reply = nullptr;
    ReplyGuard* m_guard = nullptr;
    TransferOutcome m_outcome;
};
