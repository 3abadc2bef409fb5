// SPDX-License-Identifier: GPL-3.0-or-later
#include "system/SystemManager.h"

#include "firmware/FlashProgress.h"
#include "platform/DeviceChangeMessage.h"
#include "storage/LogExport.h"

#include <QCoreApplication>
#include <QDebug>
#include <QDir>
#include <QProcess>
#include <QTimer>

#include <utility>

namespace {

DriverTexts textsOf(DriverJob job)
{
    DriverTexts texts;
    if (job == DriverJob::Install) {
        texts.filesMissing = SystemManager::tr("FEL driver files were not found.");
        texts.success = SystemManager::tr("FEL WinUSB driver installed successfully.");
        texts.cancelled = SystemManager::tr("Driver installation was cancelled by the user.");
        texts.failed = SystemManager::tr("FEL driver installation failed. Exit code: %1");
        texts.unsupported = SystemManager::tr("FEL driver installation is only supported on Windows.");
    } else {
        texts.filesMissing = SystemManager::tr("FEL driver uninstall files were not found.");
        texts.success = SystemManager::tr("FEL WinUSB driver uninstalled successfully.");
        texts.cancelled = SystemManager::tr("Driver uninstallation was cancelled by the user.");
        texts.failed = SystemManager::tr("FEL driver uninstallation failed. Exit code: %1");
        texts.unsupported = SystemManager::tr("FEL driver uninstallation is only supported on Windows.");
    }
    return texts;
}

} // namespace

SystemManager::SystemManager(GenApplication* app, GenToolbox* toolbox, std::shared_ptr<SettingsFile> settings,
                             const SystemServices& services, const SystemTimings& timings)
    : GenTool(app, toolbox)
    , m_log(QStringLiteral("system_manager_%1.log"), settings)
    , m_archiveFolder(services.archiveFolder)
    , m_server(std::move(settings), timings.server, m_log)
    , m_watch(services.bootMode, timings.bootMode, m_log)
    , m_upgrade(m_watch, services.bootMode.flashToolPath, timings.upgrade, m_log)
    , m_driverRunner(services.driverJobs, m_log)
{
    m_log.write(
        QStringLiteral("SystemManager constructed. appDir=%1").arg(QCoreApplication::applicationDirPath()));
    connectParts();
    if (QCoreApplication::instance() != nullptr)
        connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, this, &SystemManager::stop);
    QTimer::singleShot(0, this, &SystemManager::deferredInit);
}

SystemManager::~SystemManager()
{
    stop();
    m_log.write(QStringLiteral("SystemManager destructing."));
    if (QCoreApplication::instance() != nullptr) {
        QCoreApplication::instance()->removeNativeEventFilter(this);
        m_log.write(QStringLiteral("Native event filter removed."));
    }
}

void SystemManager::setToolbox(GenToolbox* toolbox)
{
    GenTool::setToolbox(toolbox);
    publishToQml(this, "GenTool.SystemManager", "SystemManager");
}

void SystemManager::connectParts()
{
    connect(this, &SystemManager::logMessage, this, &SystemManager::slotlogMessage);
    connect(&m_server, &FirmwareServer::hostChanged, this, &SystemManager::serverHostChanged);
    connect(&m_server, &FirmwareServer::docsPortChanged, this, &SystemManager::docsPortChanged);
    connect(&m_server, &FirmwareServer::apiPortChanged, this, &SystemManager::apiPortChanged);
    connect(&m_server, &FirmwareServer::connectedChanged, this, &SystemManager::serverConnectedChanged);
    connect(&m_server, &FirmwareServer::catalogueChanged, this, &SystemManager::mcuTypesChanged);
    connect(&m_watch, &BootModeWatch::usbConnectedChanged, this, &SystemManager::usbConnectedChanged);
    connect(&m_watch, &BootModeWatch::felReadyChanged, this, &SystemManager::felReadyChanged);
    connect(&m_upgrade, &FirmwareUpgrade::message, this, &SystemManager::logMessage);
    connect(&m_upgrade, &FirmwareUpgrade::progress, this, &SystemManager::progressChanged);
    connect(&m_upgrade, &FirmwareUpgrade::finished, this, &SystemManager::upgradeFinished);
    connect(&m_driverRunner, &DriverRunner::busyChanged, this, &SystemManager::felDriverInstallBusyChanged);
    connect(&m_driverRunner, &DriverRunner::finished, this, &SystemManager::onDriverJobFinished);
}

void SystemManager::deferredInit()
{
    if (m_stopped)
        return;
    m_log.write(QStringLiteral("Deferred initialization started."));
    if (QCoreApplication::instance() != nullptr) {
        QCoreApplication::instance()->installNativeEventFilter(this);
        m_log.write(QStringLiteral("Native event filter installed."));
    }
    m_server.start();
    m_server.requestCatalogue(QString());
    m_watch.start();
}

void SystemManager::stop()
{
    m_stopped = true;
    m_server.stop();
    m_upgrade.stop();
    m_watch.stop();
    m_driverRunner.stop();
}

bool SystemManager::nativeEventFilter(const QByteArray& eventType, void* message, long*)
{
    if (const std::optional<quint64> code = platform::deviceChangeCode(eventType, message)) {
        qDebug() << "SystemManager::nativeEventFilter"
                 << "enter" << platform::cWmDeviceChange;
        m_watch.onDeviceChanges({{*code, {}, {}}});
    }
    return false;
}

// The log

QString SystemManager::systemLogFilePath()
{
    return m_log.filePath();
}

QString SystemManager::exportLogsArchive()
{
    return m_stopped ? QString() : exportLogs(m_log, m_archiveFolder);
}

void SystemManager::slotlogMessage(const QString& msg)
{
    qDebug().noquote() << "SystemManager::slotlogMessage" << msg;
    QString text = msg;
    text.remove(QLatin1Char('\r'));
    m_log.write(QStringLiteral("logMessage: %1").arg(text));
    if (const std::optional<int> percent = flash::percentIn(text))
        Q_EMIT progressChanged(m_upgrade.progressAt(*percent));
}

// The server

void SystemManager::requestMcuTypes(const QString& api)
{
    m_server.requestCatalogue(api);
}

void SystemManager::setServerHost(const QString& host)
{
    m_server.setHost(host);
}

void SystemManager::setDocsPort(int port)
{
    m_server.setDocsPort(port);
}

void SystemManager::setApiPort(int port)
{
    m_server.setApiPort(port);
}

QString SystemManager::docsZhUrl() const
{
    return m_server.docsUrl(QStringLiteral("/"));
}

QString SystemManager::docsEnUrl() const
{
    return m_server.docsUrl(QStringLiteral("/en/"));
}

// The upgrade

void SystemManager::startUpgrade(const QString& type)
{
    m_upgrade.start(type, m_server.catalogue());
}

void SystemManager::onReadStdout()
{
    m_upgrade.readOutput();
}

void SystemManager::onReadStderr()
{
    m_upgrade.readErrors();
}

void SystemManager::onProcessFinished(int exitCode, QProcess::ExitStatus status)
{
    m_upgrade.onToolFinished(exitCode, status);
}

// The driver

void SystemManager::installFelDriver()
{
    m_driverRunner.start(DriverJob::Install);
}

void SystemManager::uninstallFelDriver()
{
    m_driverRunner.start(DriverJob::Uninstall);
}

void SystemManager::onDriverJobFinished(DriverJob job, const DriverJobOutcome& outcome)
{
    Q_EMIT felDriverInstallFinished(outcome.ok(), driver::outcomeMessage(textsOf(job), outcome));
    if (outcome.end == DriverJobOutcome::End::Ended)
        m_watch.requestCheck(true);
}

void SystemManager::launchLegacyFelDriverInstaller()
{
    const QString installer =
        driver::findLegacyFelDriverInstaller(QCoreApplication::applicationDirPath(), QDir::currentPath());
    if (!installer.isEmpty())
        QProcess::startDetached(installer, QStringList());
}
