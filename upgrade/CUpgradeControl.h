// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QString>

#include <memory>

class CDownWorkThread;
class QNetworkAccessManager;
class QNetworkReply;
class QThread;
class SettingsFile;

/**
 * Finds, downloads, verifies and starts a new version of the application; the QML singleton
 * "CUpgradeControl". Lives on the GUI thread; the transfer runs in a thread that it owns.
 *
 * It asks the server once by itself, 1800 ms after its construction, and whenever the user asks. Only a
 * package whose SHA-256 equals the one that the server announced is ever started.
 *
 * Each check and each download is an operation with a number of its own. The newest one that the user
 * started is the current operation, until abandonOperation(). The signals of all operations look alike;
 * while one is delivered, reportsCurrentOperation() says whether it belongs to the current operation.
 */
class CUpgradeControl : public QObject
{
    Q_OBJECT

public:
    /// The stages that updateStatus() reports.
    enum UPC_Status {
        UPC_Unknow = 0,       ///< Never reported.
        UPC_Start = 1,        ///< A download begins.
        UPC_Download = 2,     ///< Comes with every progress report.
        UPC_Finished = 3,     ///< The transfer has ended, and once more when the package passed its check.
        UPC_Canceled = 4,     ///< A stopped download has ended.
        UPC_Access = 5,       ///< The installer file cannot be written.
        UPC_NetworkError = 6, ///< A version check failed, or the package failed its check.
        UPC_Install = 7       ///< Never reported.
    };
    Q_ENUM(UPC_Status)

    /// Delay of the automatic check, in milliseconds.
    static constexpr int cAutoCheckDelayMs = 1800;

    /// Without \a settings the default server is asked and no version is ignored. A negative
    /// \a autoCheckDelayMs switches the automatic check off.
    explicit CUpgradeControl(std::shared_ptr<SettingsFile> settings = {}, QObject* parent = nullptr,
                             int autoCheckDelayMs = cAutoCheckDelayMs);
    /// Ends a running transfer and its thread; blocks for at most 2.5 s, in practice for milliseconds.
    /// Deletes a package that was not started.
    ~CUpgradeControl() override;

    /// Downloads the package that the last positive check announced; \a url is not used. Ends with exactly
    /// one of UPC_Finished (verified), UPC_NetworkError, UPC_Canceled and UPC_Access. A download of the same
    /// package that is under way becomes the current operation again. Another one, or one that is being
    /// stopped, ends first; what it still reports does not belong to the current operation.
    Q_INVOKABLE void startUpdate(const QString& url);
    /// Asks the running download to end, which it reports with UPC_Canceled. Nothing without one.
    Q_INVOKABLE void stopUpdate();
    /// The user has left the current operation: stops a download, deletes a package that was not started.
    /// What the operation still reports does not belong to the current operation, which is none from now on.
    Q_INVOKABLE void abandonOperation();
    /// Returns false while a signal of another operation than the current one is delivered: of an automatic
    /// check, or of a check or download that was replaced or abandoned. Otherwise returns true.
    Q_INVOKABLE bool reportsCurrentOperation() const;
    /// Starts the verified installer and leaves the event loop. The package is checked again first; without
    /// a verified one, or when it cannot be started, reports UPC_NetworkError and stays.
    Q_INVOKABLE void startInstall();
    /// Checks against the full address \a apiUrl and reports like the automatic check: needUpdate2() when
    /// there is a newer version that the user does not ignore, else nothing.
    Q_INVOKABLE void checkUpdate(const QString& apiUrl);
    /// Checks against the configured server; always ends with manualCheckFinished().
    Q_INVOKABLE void checkUpdateNow();
    /// Never announce \a version by itself again. A blank text is not stored.
    Q_INVOKABLE void ignoreVersion(const QString& version);

Q_SIGNALS:
    /// \a status is a UPC_Status.
    void updateStatus(int status);
    /// The downloaded fraction as text, for example "0.25"; the negated byte count without a known size.
    void emitdownloadProgress(const QString& progress);
    void needUpdate2(const QString& version, const QString& desc);
    void manualCheckFinished(bool needUpdate, const QString& currentVersion, const QString& latestVersion,
                             const QString& desc, const QString& downloadUrl, const QString& message);

public Q_SLOTS:
    /// Verifies the downloaded package \a name, which is empty when nothing usable was downloaded, and
    /// deletes it when it fails. Any other file than the download's own is left alone and reported as
    /// UPC_NetworkError.
    void slotDownloadFinish(const QString& name);

private:
    /// A download, with what the server had announced when the user asked for it.
    struct Transfer
    {
        /// Of the operation; 0 without one.
        int number = 0;
        QString url;
        QString sha256;
    };

    void requestCheckUpdate(const QString& url, bool manual);
    void handleCheckReply(QNetworkReply* reply, int number, bool manual);
    QString apiUrl(const QString& path) const;
    QString serverBaseUrl() const;
    void createWorker();
    /// Starts m_nextTransfer. The thread of the last transfer has ended or is ending.
    void beginDownload();
    /// Emits updateStatus(\a status) as a report of the operation \a number.
    void reportStatus(int number, int status);
    /// Returns whether the file at \a path is exactly what the server announced for m_transfer.
    bool verifyPackage(const QString& path) const;

    const std::shared_ptr<SettingsFile> m_settings;
    QString m_downloadUrl;
    QString m_installerPath;
    QThread* m_workerThread = nullptr;
    CDownWorkThread* m_worker = nullptr;
    QNetworkAccessManager* m_network = nullptr;
    QString m_packageSha256;
    QString m_latestVersion;

    /// Number of the newest operation.
    int m_lastNumber = 0;
    /// Number of the current operation; 0 without one.
    int m_operation = 0;
    /// Number of the operation whose signal is being delivered; 0 outside of signals.
    int m_reporting = 0;

    /// The last transfer that was begun.
    Transfer m_transfer;
    /// Begins as soon as the thread of m_transfer has ended.
    Transfer m_nextTransfer;
    /// m_transfer is under way: from beginDownload() until slotDownloadFinish().
    bool m_downloading = false;
    /// m_transfer has failed, but slotDownloadFinish() is still to come.
    bool m_failed = false;
    /// m_installerPath passed its check and has not been started.
    bool m_verified = false;
};
