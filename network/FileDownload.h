// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "network/ReplyGuard.h"

#include <QObject>
#include <QSaveFile>
#include <QString>
#include <QUrl>

class QNetworkAccessManager;
class QNetworkReply;

/// How a download ended; the texts and numbers are for the log.
struct DownloadOutcome
{
    /// The whole body stands under the target path. False leaves what was there before.
    bool saved = false;
    /// QNetworkReply::NetworkError of the transfer, and its text or why the transfer was cut off.
    int error = 0;
    QString transferText;
    /// Why the file was not saved; empty when it was.
    QString errorText;
    qint64 bytes = 0;
};

/**
 * Downloads one file over HTTP straight to disk in constant memory. The file appears under its name only
 * when it is complete: no error, a status of 200 to 299, a body that is neither empty nor shorter than
 * announced. Redirects are not followed. Destroying the object cuts the transfer off and leaves nothing.
 * Lives on the thread of its network access manager.
 */
class FileDownload : public QObject
{
    Q_OBJECT

public:
    FileDownload(const QUrl& url, const QString& path, const ReplyLimits& limits, QObject* parent);
    ~FileDownload() override;

    /// Sends the request through \a network; ends in finished(), never within this call.
    void start(QNetworkAccessManager& network);

    const QUrl& url() const { return m_url; }
    const QString& path() const { return m_path; }
    const DownloadOutcome& outcome() const { return m_outcome; }

Q_SIGNALS:
    /// Bytes so far and announced; the total is below 1 when the server does not say.
    void progress(qint64 received, qint64 total);
    /// The one end of the download; outcome() says how.
    void finished();

private:
    void onReadyRead();
    void onReplyFinished();
    /// Writes what the reply holds; false once the target cannot take it.
    bool drain();
    /// The reason why the finished reply is not the file; empty when it is.
    QString refusal() const;

    const QUrl m_url;
    const QString m_path;
    const ReplyLimits m_limits;
    QSaveFile m_file;
    QNetworkReply* m_reply = nullptr;
    ReplyGuard* m_guard = nullptr;
    QString m_saveError;
    DownloadOutcome m_outcome;
};
