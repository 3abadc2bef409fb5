// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "firmware/BootModeWatch.h"
#include "firmware/FirmwareCatalogue.h"
#include "platform/ChildProcess.h"
#include "storage/DebugLog.h"

#include <QObject>
#include <QStringList>
#include <QTimer>

#include <array>
#include <functional>
#include <memory>
#include <optional>

class FileDownload;
class QLockFile;
class QNetworkAccessManager;
class QTemporaryDir;

/// Pauses and limits of an upgrade in milliseconds.
struct UpgradeTimings
{
    int pauseBeforeDownloadsMs = 1000;
    int pauseAfterWritingMs = 2000;
    int downloadStallMs = 15000;
    /// Limit of one file, against a server that never quite stops sending.
    int downloadTimeoutMs = 15 * 60 * 1000;
    /// A flash tool that prints nothing for so long is ended.
    int toolSilenceMs = 60000;
    /// How long the end of a killed flash tool is waited for.
    int killGraceMs = 500;
};

/// Paths of the images of a firmware that is on this computer.
struct FirmwareImages
{
    QString boot;
    QString logo;
    QString exec;
};

/**
 * Upgrades the controller's firmware: checks the controller, downloads the images of one type into the cache
 * folder and writes them with three runs of the flash tool. On request it reads them back and compares. One
 * upgrade at a time, of all programs of this user; from its acceptance to its end it holds the claim on the
 * controller. Lives on the GUI thread.
 */
class FirmwareUpgrade : public QObject
{
    Q_OBJECT

public:
    enum class State {
        Idle,
        CheckingController,
        PausingBeforeDownloads,
        Downloading,
        WritingBoot,
        WritingLogo,
        WritingExec,
        ReadingBack,
        /// The flash tool was killed and has not ended yet.
        EndingTool,
        PausingAfterWriting,
    };
    Q_ENUM(State)

    /// \a watch outlives this object.
    FirmwareUpgrade(BootModeWatch& watch, std::function<QString()> flashToolPath,
                    const UpgradeTimings& timings, DebugLog log, QObject* parent = nullptr);
    ~FirmwareUpgrade() override;

    State state() const { return m_state; }
    /// The upgrade's progress, 0 to 100, when the flash tool has written \a percent of the present image; 0
    /// when no image is being written, 100 when they are read back.
    int progressAt(int percent) const;

    /// Upgrades to \a type of \a catalogue. Blocks while the controller is checked
    /// (BootModeWatch::checkNow()). A refusal (another upgrade runs, no controller, unknown type) is complete
    /// when the call returns and has no finished(); every accepted upgrade ends in finished().
    void start(const QString& type, const FirmwareCatalogue& catalogue);
    /// The same with images of this computer; refuses a file that is missing or empty.
    void start(const FirmwareImages& images);
    /// With \a on, the next upgrade reads the flash back and fails when an image is not what lies there.
    void setVerification(bool on) { m_verification = on; }
    /// Ends a running upgrade, with its signal, and its flash tool. Nothing starts afterwards.
    void stop();

    /// Logs and reports what the flash tool has printed.
    void readOutput();
    void readErrors();
    void onToolFinished(int exitCode, QProcess::ExitStatus status);

    /// The folder of the images; created.
    static QString cacheFolder();

Q_SIGNALS:
    /// What happens, one line at a time; also the output of the flash tool.
    void message(const QString& text);
    /// 0 to 100. The progress within an image is not reported here but in the tool's output: progressAt().
    void progress(int value);
    /// The one end of an accepted upgrade.
    void finished(bool ok);

private:
    bool isWriting() const;
    bool isToolRunning() const { return isWriting() || m_state == State::ReadingBack; }
    bool accept();
    void refuse(const QString& reason);
    void onTimeout();
    void downloadNext();
    void onDownloadProgress(qint64 received, qint64 total);
    void onDownloadFinished();
    void write(State stage);
    bool isUsable(const QString& path) const;
    void readBack(size_t image);
    void runTool(const QStringList& arguments);
    void onToolError(QProcess::ProcessError error);
    void onImageWritten();
    void onImageRead();
    void succeed();
    void onControllerGone();
    /// Kills the flash tool; its end, or the end of the grace, ends the upgrade.
    void endTool();
    void failWriting();
    void complete();
    void finish(bool ok);
    void emptyCache() const;
    platform::ChildProcess& tool();

    BootModeWatch& m_watch;
    const std::function<QString()> m_flashToolPath;
    const UpgradeTimings m_timings;
    const DebugLog m_log;
    bool m_stopped = false;
    bool m_verification = false;

    State m_state = State::Idle;
    /// The pause, silence or grace of the present state.
    QTimer m_timer;
    std::optional<BootModeWatch::Claim> m_claim;
    /// Held from acceptance to end, against other programs of this user.
    std::unique_ptr<QLockFile> m_lock;
    FirmwareFiles m_files;
    /// Paths of the boot, logo and exec image.
    std::array<QString, 3> m_images;
    /// The images are the user's own files and not downloads.
    bool m_local = false;
    /// Paths of the files that this upgrade has downloaded: no other file is written.
    QStringList m_downloaded;
    FileDownload* m_download = nullptr;
    /// Made with the first download.
    std::unique_ptr<QNetworkAccessManager> m_network;
    /// Made with the first run; one that cannot be killed is given up.
    platform::ChildProcessPointer m_tool;
    /// Where the flash is read to; null unless it is read back.
    std::unique_ptr<QTemporaryDir> m_readBackFolder;
    /// The image that is read back, an index of m_images.
    size_t m_readImage = 0;
    /// The end of what the running tool has printed.
    QString m_outputTail;
};
