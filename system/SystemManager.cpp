// SPDX-License-Identifier: GPL-3.0-or-later
#include "system/SystemManager.h"

#include "firmware/FlashProgress.h"
#include "platform/DeviceNotice.h"
#include "storage/DataFolders.h"
#include "storage/SettingsFile.h"

#include <QCoreApplication>
#include <QDebug>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QFutureWatcher>
#include <QNetworkAccessManager>
#include <QStandardPaths>
#include <QThread>
#include <QTimer>
#include <QtConcurrent>

#include <utility>

SystemManager::SystemManager(GenApplication* app, GenToolbox* toolbox, std::shared_ptr<SettingsFile> settings,
                             SystemServices services, const SystemTimings& timings)
    : GenTool(app, toolbox)
    , m_services(std::move(services))
    , m_timings(timings)
    , m_settings(std::move(settings))
{
    loadServerSettings();
    writeLog(
        QStringLiteral("SystemManager constructed. appDir=%1").arg(QCoreApplication::applicationDirPath()));
    connect(this, &SystemManager::logMessage, this, &SystemManager::slotlogMessage);

    m_flashProcess.setProcessChannelMode(QProcess::MergedChannels);
    connect(&m_flashProcess, &QProcess::readyReadStandardOutput, this, &SystemManager::onReadStdout);
    connect(&m_flashProcess, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), this,
            &SystemManager::onProcessFinished);
    connect(&m_flashProcess, &QProcess::errorOccurred, this, &SystemManager::onFlashError);
    m_flashSilenceTimer = new QTimer(this);
    m_flashSilenceTimer->setSingleShot(true);
    m_flashSilenceTimer->setInterval(m_timings.flashSilenceMs);
    connect(m_flashSilenceTimer, &QTimer::timeout, this, &SystemManager::onFlashSilence);

    m_statusTimer = new QTimer(this);
    m_statusTimer->setInterval(m_timings.statusPeriodMs);
    connect(m_statusTimer, &QTimer::timeout, this, &SystemManager::requestServerStatus);

    // The settings store is gone when the destructor runs, and what is cut off shall stand in the log.
    if (QCoreApplication::instance() != nullptr)
        connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, this, &SystemManager::stop);
    QTimer::singleShot(0, this, &SystemManager::deferredInit);
}

SystemManager::~SystemManager()
{
    stop();
    writeLog(QStringLiteral("SystemManager destructing."));
    if (QCoreApplication::instance() != nullptr) {
        QCoreApplication::instance()->removeNativeEventFilter(this);
        writeLog(QStringLiteral("Native event filter removed."));
    }
}

void SystemManager::setToolbox(GenToolbox* toolbox)
{
    GenTool::setToolbox(toolbox);
    publishToQml(this, "GenTool.SystemManager", "SystemManager");
}

void SystemManager::deferredInit()
{
    if (m_stopping)
        return;
    writeLog(QStringLiteral("Deferred initialization started."));
    if (QCoreApplication::instance() != nullptr) {
        QCoreApplication::instance()->installNativeEventFilter(this);
        writeLog(QStringLiteral("Native event filter installed."));
    }
    m_deviceNotice = std::make_unique<platform::DeviceNotice>([this](quint64 code) { onDeviceChange(code); });
    if (!m_deviceNotice->isActive())
        writeLog(QStringLiteral("Device changes are not reported by this system."));
    requestServerStatus();
    m_statusTimer->start();
    requestMcuTypes(QString());
    QTimer::singleShot(m_timings.firstPresenceCheckMs, this, [this] { requestConnectionStateRefresh(true); });
}

void SystemManager::stop()
{
    if (m_stopping.exchange(true))
        return;
    m_statusTimer->stop();
    m_deviceNotice.reset();
    cutUpgrade();
    m_presenceCheck.waitForFinished();
    m_driverJob.waitForFinished();
    m_archiveJob.waitForFinished();
    // What the tasks have posted: their log lines and their results.
    QCoreApplication::sendPostedEvents(this, QEvent::MetaCall);
    delete m_network;
    m_network = nullptr;
}

QString SystemManager::systemLogFilePath()
{
    return m_log.filePath(QDateTime::currentDateTime());
}

void SystemManager::writeLog(const QString& message)
{
    const QDateTime now = QDateTime::currentDateTime();
    if (QThread::currentThread() == thread())
        appendToLog(message, now);
    else
        QMetaObject::invokeMethod(
            this, [this, message, now] { appendToLog(message, now); }, Qt::QueuedConnection);
}

void SystemManager::appendToLog(const QString& message, const QDateTime& now)
{
    if (m_settings == nullptr || !m_settings->value(setting::usbDebugEnabled))
        return;
    m_log.append(message, now);
}

void SystemManager::slotlogMessage(const QString& msg)
{
    qDebug().noquote() << "SystemManager::slotlogMessage" << msg;
    QString text = msg;
    text.remove(QLatin1Char('\r'));
    writeLog(QStringLiteral("logMessage: %1").arg(text));
    if (const std::optional<int> percent = flash::percentIn(text))
        Q_EMIT progressChanged(flash::overallProgress(m_upgradeStage, *percent));
}

void SystemManager::storeSetting(const QString& key, const QVariant& value)
{
    if (m_settings != nullptr)
        m_settings->setValue(server::settingsGroup(), key, value);
}

bool SystemManager::runProcessAndWait(const QString& program, const QStringList& arguments,
                                      QString* stdoutOut, QString* stderrOut, int* exitCodeOut,
                                      int timeoutMs) const
{
    using End = platform::ProcessOutcome::End;
    platform::ProcessRequest request;
    request.program = program;
    request.arguments = arguments;
    request.finishTimeoutMs = timeoutMs;
    request.cancelled = &m_stopping;
    const platform::ProcessOutcome outcome = platform::runProcess(request);
    if (exitCodeOut != nullptr)
        *exitCodeOut = outcome.exitCode;
    QString failure;
    if (outcome.end == End::NotStarted)
        failure = QStringLiteral("Failed to start process: %1").arg(program);
    else if (outcome.end == End::TimedOut)
        failure = QStringLiteral("Process timed out: %1").arg(program);
    else if (outcome.end == End::Cancelled)
        failure = QStringLiteral("Process cancelled: %1").arg(program);
    else if (stdoutOut != nullptr)
        *stdoutOut = QString::fromLocal8Bit(outcome.standardOutput);
    if (stderrOut != nullptr)
        *stderrOut = failure.isEmpty() ? QString::fromLocal8Bit(outcome.standardError) : failure;
    return outcome.end == End::Exited;
}

platform::ProcessRun SystemManager::processRun() const
{
    return [this](const QString& program, const QStringList& arguments, QString* standardOutput,
                  QString* standardError, int* exitCode, int timeoutMs) {
        return runProcessAndWait(program, arguments, standardOutput, standardError, exitCode, timeoutMs);
    };
}

QString SystemManager::exportLogsArchive()
{
    const QString sourceDir = DataFolders::logsPath();
    if (!QDir(sourceDir).exists()) {
        writeLog(QStringLiteral("exportLogsArchive aborted: sourceDir missing. path=%1").arg(sourceDir));
        return {};
    }
    if (m_exporting || m_stopping)
        return {};
    const QString desktop = QStandardPaths::writableLocation(QStandardPaths::DesktopLocation);
    QDir().mkpath(desktop);
    const QString archive = desktop + QStringLiteral("/Quorvel_logs.zip");
    QFile::remove(archive);

    m_exporting = true;
    const QPointer<SystemManager> self(this);
    platform::ArchiveOutcome outcome;
    // On the pool, so that the window goes on painting; without input nothing is started in the meantime.
    QFutureWatcher<platform::ArchiveOutcome> watcher;
    QEventLoop loop;
    connect(&watcher, &QFutureWatcherBase::finished, &loop, &QEventLoop::quit);
    const auto job = QtConcurrent::run([this, sourceDir, archive] {
        return m_services.archiveFolder(sourceDir, archive, processRun(), m_stopping);
    });
    m_archiveJob = QFuture<void>(job);
    watcher.setFuture(job);
    if (!job.isFinished())
        loop.exec(QEventLoop::ExcludeUserInputEvents);
    if (self == nullptr)
        return {};
    // The loop also ends when the application quits.
    watcher.waitForFinished();
    outcome = job.result();
    m_exporting = false;
    writeLog(QStringLiteral("exportLogsArchive finished. ok=%1 exitCode=%2 archive=%3 stdout=%4 stderr=%5")
                 .arg(QString::number(int(outcome.ran)), QString::number(outcome.exitCode), archive,
                      outcome.standardOutput.simplified(), outcome.standardError.simplified()));
    if (outcome.ran && outcome.exitCode == 0 && QFile::exists(archive))
        return archive;
    // An archiver that was ended in the middle leaves half a file.
    QFile::remove(archive);
    return {};
}
