// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "network/HttpTransfer.h"

#include <QObject>
#include <QSaveFile>
#include <QString>
#include <QUrl>

class QNetworkAccessManager;

/// Result of a download. The texts and the numbers are for the log.
struct DownloadOutcome
{
    /// True when the complete body was saved. If false, the previous file is unchanged.
    bool saved = false;
    /// QNetworkReply::NetworkError of the transfer, and its text or the limit that it broke.
    int error = 0;
    QString transferText;
    /// Reason why the file was not saved; empty when it was.
    QString errorText;
    qint64 bytes = 0;
};

/**
 * Downloads one file over HTTP. The file appears under its name only when the transfer is complete
 * (TransferOutcome::End::Complete). Destroying the object aborts the transfer and leaves nothing. Lives on
 * the thread of its network access manager.
 */
class FileDownload : public QObject
{
    Q_OBJECT

public:
    FileDownload(const QUrl& url, const QString& path, const ReplyLimits& limits, QObject* parent);

    /// Sends the request through \a network; ends in finished(), never within this call.
    void start(QNetworkAccessManager& network);

    const QUrl& url() const { return m_url; }
    const QString& path() const { return m_path; }
    const DownloadOutcome& outcome() const { return m_outcome; }

Q_SIGNALS:
    /// Bytes received and announced; the total is below 1 when the server announces none.
    void progress(qint64 received, qint64 total);
    /// The one end of the download; outcome() has its result.
    void finished();

private:
    void onTransferFinished();

    const QUrl m_url;
    const QString m_path;
    QSaveFile m_file;
    HttpTransfer m_transfer;
    DownloadOutcome m_outcome;
};
