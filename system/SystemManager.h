// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "network/ServerAddress.h"
#include "platform/ChildProcess.h"
#include "qmlsupport/GenTool.h"
#include "storage/DailyLog.h"
#include "system/SystemServices.h"

#include <QAbstractNativeEventFilter>
#include <QFuture>
#include <QJsonObject>
#include <QMap>
#include <QPointer>
#include <QStringList>

#include <atomic>
#include <memory>
#include <optional>

class FileDownload;
class SettingsFile;
class QNetworkAccessManager;
class QNetworkReply;
class QTimer;
enum class DriverJob;

namespace platform {
class DeviceNotice;
}

/**
 * The services around the instrument: its own log, the server's state, the firmware catalogue, flashing
 * the controller in its boot mode ("FEL"), noticing that mode on USB, and its driver. In QML the toolbox's
 * "systemManager". Lives on the GUI thread; slow checks run on the global thread pool and never outlive it.
 */
class SystemManager : public GenTool, public QAbstractNativeEventFilter
{
    Q_OBJECT
    Q_PROPERTY(QStringList mcuTypes READ mcuTypes NOTIFY mcuTypesChanged)
    Q_PROPERTY(bool usbConnected READ usbConnected NOTIFY usbConnectedChanged)
    Q_PROPERTY(bool felReady READ felReady NOTIFY felReadyChanged)
    Q_PROPERTY(bool serverConnected READ serverConnected NOTIFY serverConnectedChanged)
    Q_PROPERTY(QString serverHost READ serverHost NOTIFY serverHostChanged)
    Q_PROPERTY(int docsPort READ docsPort NOTIFY docsPortChanged)
    Q_PROPERTY(int apiPort READ apiPort NOTIFY apiPortChanged)
    Q_PROPERTY(bool felDriverInstallBusy READ felDriverInstallBusy NOTIFY felDriverInstallBusyChanged)

public:
    SystemManager(GenApplication* app, GenToolbox* toolbox, std::shared_ptr<SettingsFile> settings = {},
                  SystemServices services = {}, const SystemTimings& timings = {});
    ~SystemManager() override;

    void setToolbox(GenToolbox* toolbox) override;
    /// Never consumes an event; a device-change message of Windows starts a presence check.
    bool nativeEventFilter(const QByteArray& eventType, void* message, long* result) override;

    /// Firmware types in the server's order; empty without a catalogue.
    QStringList mcuTypes() const { return m_mcuTypes; }
    /// Whether the controller in boot mode is on the USB bus.
    bool usbConnected() const { return m_usbConnected; }
    /// Whether that controller also answers the flash tool.
    bool felReady() const { return m_felReady; }
    /// Whether the last status check reached the server.
    bool serverConnected() const { return m_serverConnected; }
    /// Whether a driver job runs.
    bool felDriverInstallBusy() const { return m_felDriverInstallBusy; }

    /// Fetches the firmware catalogue from the URL \a api, or from the configured server when it is empty.
    /// Ends in mcuTypesChanged; a failure leaves an empty list.
    Q_INVOKABLE void requestMcuTypes(const QString& api);
    /// Downloads the images of the firmware \a type and writes them into the controller's flash. Ends in
    /// upgradeFinished once the downloads have begun; before that, a refusal (another upgrade runs, no
    /// controller in boot mode, unknown type) is only logged.
    Q_INVOKABLE void startUpgrade(const QString& type);
    /// Today's log file of this object; creates its folder.
    Q_INVOKABLE QString systemLogFilePath();
    /// Packs the log folder into "Quorvel_logs.zip" on the desktop. The archive's path, or an empty text on
    /// failure, which leaves no archive (without a log folder, an earlier one stays). The interface keeps
    /// painting meanwhile but takes no input.
    Q_INVOKABLE QString exportLogsArchive();
    /// The server's base URL, normalised.
    Q_INVOKABLE QString serverHost() const { return m_serverHost; }
    /// Normalises and stores the server's host or base URL, then asks the new server.
    Q_INVOKABLE void setServerHost(const QString& host);
    /// Port of the manuals, 1 to 65535.
    Q_INVOKABLE int docsPort() const { return m_docsPort; }
    /// Stores the port of the manuals; anything outside 1 to 65535 becomes the default.
    Q_INVOKABLE void setDocsPort(int port);
    /// Port of the programming interface, 1 to 65535.
    Q_INVOKABLE int apiPort() const { return m_apiPort; }
    /// Stores the port of the programming interface, the default for anything outside 1 to 65535, then
    /// asks the server there.
    Q_INVOKABLE void setApiPort(int port);
    /// Address of the Chinese and of the English manual.
    Q_INVOKABLE QString docsZhUrl() const;
    Q_INVOKABLE QString docsEnUrl() const;
    /// Installs or removes the boot-mode driver with administrator rights; nothing happens while such a job
    /// runs. Ends in felDriverInstallFinished after up to three minutes.
    Q_INVOKABLE void installFelDriver();
    Q_INVOKABLE void uninstallFelDriver();
    /// Starts the interactive driver installer when it is beside the application.
    Q_INVOKABLE void launchLegacyFelDriverInstaller();

Q_SIGNALS:
    void logMessage(const QString& msg);
    void upgradeFinished(bool ok);
    /// Progress of the upgrade, 0 to 100.
    void progressChanged(int value);
    void mcuTypesChanged();
    void usbConnectedChanged();
    void felReadyChanged();
    void serverConnectedChanged();
    void serverHostChanged();
    void docsPortChanged();
    void apiPortChanged();
    void felDriverInstallBusyChanged();
    void felDriverInstallFinished(bool ok, const QString& message);

private Q_SLOTS:
    void slotlogMessage(const QString& msg);
    void onReadStdout();
    void onReadStderr();
    void onProcessFinished(int exitCode, QProcess::ExitStatus status);

private:
    // Core and log (SystemManager.cpp)
    void deferredInit();
    /// Ends everything that runs, with its terminal signal, and waits for the pool. Once; nothing starts
    /// afterwards.
    void stop();
    /// Appends a line to the daily log while USB debugging is on. Any thread.
    void writeLog(const QString& message);
    /// The part of writeLog() on this object's thread, which alone asks the settings store: the toolbox
    /// deletes the store there while a pool task may still have something to say.
    void appendToLog(const QString& message, const QDateTime& now);
    bool runProcessAndWait(const QString& program, const QStringList& arguments, QString* stdoutOut,
                           QString* stderrOut, int* exitCodeOut, int timeoutMs) const;
    platform::ProcessRun processRun() const;
    void storeSetting(const QString& key, const QVariant& value);

    // Server (SystemManager_server.cpp)
    void loadServerSettings();
    QString apiUrl(const QString& path) const;
    QNetworkAccessManager* network();
    void askServer();
    void requestServerStatus();
    void onStatusFinished(QNetworkReply* reply, const QString& cutReason);

    // Catalogue and downloads (SystemManager_firmware.cpp)
    void onCatalogueFinished(QNetworkReply* reply, const QString& cutReason);
    QString firmwareCacheDir() const;
    void downloadNext();
    void onDownloadProgress(qint64 received, qint64 total);
    void onDownloadFinished();

    // Flashing (SystemManager_flash.cpp)
    void startFelUpgrade();
    void runFel(const QString& address, const QString& fileName);
    void nextFlashStage();
    void onFlashError(QProcess::ProcessError error);
    void onFlashSilence();
    void failFlashing();
    /// Says that the running upgrade is cut off and ends it; nothing without one.
    void cutUpgrade();
    /// The success at the end of the pause after the last image; nothing when it was told already.
    void completeUpgrade();
    void finishUpgrade(bool ok);
    void emptyFirmwareCache();
    /// Runs the event loop for \a ms milliseconds. False when this object died or the application quits.
    bool waitProcessingEvents(int ms);

    // Presence (SystemManager_presence.cpp)
    struct ConnectionCheckResult
    {
        bool force = false;
        bool usb = false;
        bool fel = false;
    };
    void onDeviceChange(quint64 code);
    void requestConnectionStateRefresh(bool force);
    void updateConnectionStates(bool force);
    /// Looks at the bus and asks the flash tool; \a felWhileFlashing takes the place of its answer.
    ConnectionCheckResult checkConnection(bool force, std::optional<bool> felWhileFlashing);
    void applyConnectionStates(const ConnectionCheckResult& result);
    bool checkUsbDevice(const QString& vid, const QString& pid);
    bool checkFelDevice();

    // Driver (SystemManager_driver.cpp)
    struct DriverJobResult
    {
        bool ran = false;
        QString stdoutText;
        QString stderrText;
        int exitCode = -1;
    };
    void startDriverJob(DriverJob job);
    void onDriverJobFinished(DriverJob job, const DriverJobResult& result);

    const SystemServices m_services;
    const SystemTimings m_timings;
    /// Null without a store: defaults are then used and nothing is logged.
    const std::shared_ptr<SettingsFile> m_settings;
    const DailyLog m_log{QStringLiteral("system_manager_%1.log")};
    /// Ends pool tasks and the processes that they wait for; the only member that they read.
    std::atomic_bool m_stopping{false};

    platform::ChildProcess m_flashProcess;
    qint32 m_upgradeStage = 0;
    /// From the acceptance of an upgrade to its end, downloads and pauses included.
    bool m_upgradeActive = false;
    /// The last image is written; what is left is the pause after it.
    bool m_upgradeWritten = false;
    /// What the running stage has printed last, to recognise a refusal that ends with exit code 0.
    QString m_flashOutputTail;
    QTimer* m_flashSilenceTimer = nullptr;

    QNetworkAccessManager* m_network = nullptr;
    QStringList m_mcuTypes;
    QMap<QString, QJsonObject> m_firmwareByType;
    int m_catalogueRequests = 0;
    /// The last catalogue request failed: ask again when the server is back.
    bool m_catalogueMissing = false;
    qint32 m_downloadIndex = 0;
    QString m_currentType;
    QStringList m_downloadUrls;
    FileDownload* m_download = nullptr;
    QString m_bootFileName;

    bool m_usbConnected = false;
    bool m_felReady = false;
    bool m_serverConnected = false;
    bool m_connectionCheckBusy = false;
    /// A device changed during the running check, which may have looked before the change.
    bool m_deviceChangedMeanwhile = false;
    /// The last check found the controller being written and did not disturb it.
    bool m_felNotAsked = false;
    QString m_serverHost = server::defaultServerAddress();
    qint32 m_docsPort = server::cDefaultDocsPort;
    qint32 m_apiPort = server::cDefaultApiPort;
    QTimer* m_statusTimer = nullptr;
    bool m_felDriverInstallBusy = false;
    bool m_exporting = false;

    std::unique_ptr<platform::DeviceNotice> m_deviceNotice;
    // Pool tasks that use this object; stop() waits for them.
    QFuture<void> m_presenceCheck;
    QFuture<void> m_driverJob;
    QFuture<void> m_archiveJob;
};
