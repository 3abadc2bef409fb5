// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "firmware/DriverRunner.h"
#include "qmlsupport/GenTool.h"
#include "storage/DebugLog.h"
#include "system/SystemServices.h"

#include <QAbstractNativeEventFilter>
#include <QProcess>
#include <QStringList>

#include <memory>

class SettingsFile;

/**
 * The services around the instrument for QML, where this is the toolbox's "systemManager": log export, the
 * firmware server, the controller in boot mode ("FEL"), its upgrade and its driver. A facade: what happens in
 * time belongs to the objects that it holds. Lives on the GUI thread.
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
                  const SystemServices& services = {}, const SystemTimings& timings = {});
    ~SystemManager() override;

    void setToolbox(GenToolbox* toolbox) override;
    /// Never consumes an event; a device-change message of Windows starts a presence check.
    bool nativeEventFilter(const QByteArray& eventType, void* message, long* result) override;

    /// Firmware types in the server's order; empty without a catalogue.
    QStringList mcuTypes() const { return m_server.catalogue().types; }
    /// Whether the controller in boot mode is on the USB bus.
    bool usbConnected() const { return m_watch.usbConnected(); }
    /// Whether that controller also answers the flash tool.
    bool felReady() const { return m_watch.felReady(); }
    /// Whether the last status check reached the server.
    bool serverConnected() const { return m_server.isConnected(); }
    /// Whether a driver job runs.
    bool felDriverInstallBusy() const { return m_driverRunner.isBusy(); }

    /// Fetches the firmware catalogue from the URL \a api, or from the configured server when it is empty.
    /// Ends in mcuTypesChanged; a failure leaves an empty list.
    Q_INVOKABLE void requestMcuTypes(const QString& api);
    /// Downloads the images of the firmware \a type and writes them into the controller's flash. Blocks while
    /// the controller is checked, up to 5.8 s. A refusal (another upgrade runs, no controller in boot mode,
    /// unknown type) is complete when the call returns; every other upgrade ends in upgradeFinished.
    Q_INVOKABLE void startUpgrade(const QString& type);
    /// Today's log file of this object; creates its folder.
    Q_INVOKABLE QString systemLogFilePath();
    /// Packs the log folder into "Quorvel_logs.zip" on the desktop; blocks for up to 3.5 s. Returns the
    /// archive's path, or an empty text on failure, which leaves no archive (without a log folder, an earlier
    /// one stays).
    Q_INVOKABLE QString exportLogsArchive();
    /// The server's base URL, normalised.
    Q_INVOKABLE QString serverHost() const { return m_server.host(); }
    /// Normalises and stores the server's host or base URL, then asks the new server.
    Q_INVOKABLE void setServerHost(const QString& host);
    /// Port of the manuals, 1 to 65535.
    Q_INVOKABLE int docsPort() const { return m_server.docsPort(); }
    /// Stores the port of the manuals; anything outside 1 to 65535 becomes the default.
    Q_INVOKABLE void setDocsPort(int port);
    /// Port of the programming interface, 1 to 65535.
    Q_INVOKABLE int apiPort() const { return m_server.apiPort(); }
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
    void connectParts();
    void deferredInit();
    /// Ends everything that runs, with its terminal signal. Nothing starts afterwards.
    void stop();
    void onDriverJobFinished(DriverJob job, const DriverJobOutcome& outcome);

    const DebugLog m_log;
    const platform::FolderArchiver m_archiveFolder;
    bool m_stopped = false;
    FirmwareServer m_server;
    BootModeWatch m_watch;
    FirmwareUpgrade m_upgrade;
    DriverRunner m_driverRunner;
};
