// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QString>
#include <QUrl>

#include <atomic>

class HttpTransfer;
class QFile;
class QNetworkAccessManager;

/**
 * Downloads an update package into a file. Lives in the download thread of CUpgradeControl.
 *
 * Each transfer ends with one sigDownloadStatus() that is not UPC_Download, followed by one sigFinished().
 * A transfer without any byte for the stall time ends like any other broken one.
 */
class CDownWorkThread : public QObject
{
    Q_OBJECT

public:
    /// Maximum time without data, in milliseconds.
    static constexpr int cStallTimeoutMs = 30000;
    /// Maximum size of a package. A server that sends more is broken or hostile.
    static constexpr qint64 cMaximumPackageBytes = qint64(2) << 30;

    explicit CDownWorkThread(QObject* parent = nullptr);
    /// Removes the file of a transfer that has not ended.
    ~CDownWorkThread() override;

    /// The name under which the package is stored in the download folder.
    static QString installerFileName();
    /// Path of the package in the download folder \a folder.
    static QString packagePath(const QString& folder);
    /// received / total with six significant digits, for example "0.25"; the negated count of received
    /// bytes when the server names no length (\a total is -1) and "0" when nothing is expected.
    static QString progressText(qint64 received, qint64 total);

    /// Call the next three only while no transfer runs.
    void setPackageUrl(const QString& url) { m_packageUrl = url; }
    void setDownloadDir(const QString& folder) { m_downloadDir = folder; }
    void setStallTimeout(int timeoutMs) { m_stallTimeoutMs = timeoutMs; }

    /// Asks the running transfer to end; may be called from any thread.
    void requestStop();
    /// Forgets an earlier requestStop(), from any thread.
    void clearStop() { m_stopRequested = false; }
    bool isStopRequested() const { return m_stopRequested; }
    /// True while a transfer runs. A thread that reads false sees everything that the transfer wrote.
    bool isTransferring() const { return m_transferring; }

Q_SIGNALS:
    /// \a name is the path of the downloaded file, empty when nothing usable was downloaded.
    void sigFinished(const QString& name);
    /// \a status is a CUpgradeControl::UPC_Status.
    void sigDownloadStatus(int status);
    void emitdownloadProgress(const QString& progress);
    /// Emitted by requestStop() so that the worker reacts on its own thread.
    void stopNoticed();

public Q_SLOTS:
    /// Starts the download of the package.
    void processMount();
    /// Requests the package of the last processMount() once more; its progress comes without a status.
    void updatefile();

private:
    bool openPackageFile();
    void startTransfer(bool reportStatus);
    void onProgress(qint64 received, qint64 total, bool reportStatus);
    void onTransferFinished();
    /// Reports the end of a transfer.
    void end(int status, const QString& name);
    void endIfStopped();

    QNetworkAccessManager* m_network = nullptr;
    QFile* m_file = nullptr;
    qint64 m_bytesTotal = 0;
    QUrl m_requestUrl;
    QString m_packageUrl;
    QString m_downloadDir;
    /// Written by the GUI thread, read here.
    std::atomic_bool m_stopRequested{false};
    /// Written here, read by the GUI thread.
    std::atomic_bool m_transferring{false};

    /// The running transfer; null when none runs.
    HttpTransfer* m_transfer = nullptr;
    int m_stallTimeoutMs = cStallTimeoutMs;
};
