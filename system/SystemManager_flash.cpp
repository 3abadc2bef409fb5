// SPDX-License-Identifier: GPL-3.0-or-later
#include "firmware/FirmwareCatalogue.h"
#include "firmware/FlashProgress.h"
#include "network/FileDownload.h"
#include "system/SystemManager.h"

#include <QEventLoop>
#include <QFileInfo>
#include <QTimer>

namespace {

const auto cLogoFile = QStringLiteral("logo.bin");
const auto cExecFile = QStringLiteral("f1c100s.bin");
const auto cBootAddress = QStringLiteral("0x0");
const auto cLogoAddress = QStringLiteral("0x6000");
const auto cExecAddress = QStringLiteral("0x50000");

/// How long a killed flash tool is waited for.
constexpr int cKillGraceMs = 500;
/// Enough of the tool's last output for any of its sentences.
constexpr int cOutputTailLength = 1024;

} // namespace

void SystemManager::startUpgrade(const QString& type)
{
    writeLog(QStringLiteral("startUpgrade(type) called. type=%1").arg(type));
    if (m_stopping)
        return;
    if (m_upgradeActive || m_flashProcess.state() != QProcess::NotRunning) {
        writeLog(QStringLiteral("startUpgrade refused: an upgrade is already running."));
        Q_EMIT logMessage(QStringLiteral("An upgrade is already running."));
        return;
    }
    m_upgradeActive = true;
    writeLog(QStringLiteral("firmware cache dir=%1").arg(firmwareCacheDir()));
    Q_EMIT progressChanged(0);
    m_bootFileName.clear();
    updateConnectionStates(false);
    if (!m_felReady) {
        m_upgradeActive = false;
        writeLog(QStringLiteral("startUpgrade aborted: FEL device not detected."));
        Q_EMIT logMessage(QStringLiteral("FEL device not detected. Connect USB and hold the FEL key."));
        return;
    }
    emptyFirmwareCache();
    if (!waitProcessingEvents(m_timings.pauseBeforeDownloadsMs))
        return;
    const auto entry = m_firmwareByType.constFind(type);
    if (entry == m_firmwareByType.constEnd()) {
        m_upgradeActive = false;
        writeLog(QStringLiteral("startUpgrade aborted: firmware type not found. knownTypes=%1")
                     .arg(m_mcuTypes.join(QLatin1Char(','))));
        return;
    }
    m_currentType = type;
    const FirmwareFiles files = FirmwareFiles::fromEntry(*entry);
    m_downloadUrls = files.urls;
    m_bootFileName = files.bootFileName;
    m_downloadIndex = 0;
    downloadNext();
}

void SystemManager::startFelUpgrade()
{
    writeLog(
        QStringLiteral("startFelUpgrade: cacheDir=%1 bootFile=%2").arg(firmwareCacheDir(), m_bootFileName));
    Q_EMIT logMessage(QStringLiteral("Starting MCU firmware flashing."));
    m_upgradeStage = flash::cBoot;
    runFel(cBootAddress, m_bootFileName);
}

void SystemManager::runFel(const QString& address, const QString& fileName)
{
    const QString program = m_services.flashToolPath();
    const QString path = firmwareCacheDir() + QLatin1Char('/') + fileName;
    // A name from the catalogue must not reach a file outside the cache; none at all names the folder.
    const bool inCache = fileName.isEmpty() || firmware::isPlainFileName(fileName);
    if (!inCache || !QFileInfo::exists(path)) {
        writeLog(QStringLiteral("runFel aborted: firmware file missing. path=%1").arg(path));
        Q_EMIT logMessage(QStringLiteral("Firmware file missing: ") + path);
        finishUpgrade(false);
        return;
    }
    const QStringList arguments = flash::writeArguments(address, path);
    const QString command = arguments.join(QLatin1Char(' '));
    Q_EMIT logMessage(QStringLiteral("Executing: ") + program + QLatin1Char(' ') + command);
    writeLog(QStringLiteral("runFel: program=%1 args=%2").arg(program, command));
    m_flashOutputTail.clear();
    m_flashSilenceTimer->start();
    m_flashProcess.start(program, arguments);
}

void SystemManager::onReadStdout()
{
    const QString text = QString::fromLocal8Bit(m_flashProcess.readAllStandardOutput());
    m_flashOutputTail = (m_flashOutputTail + text).right(cOutputTailLength);
    if (m_upgradeStage != flash::cIdle)
        m_flashSilenceTimer->start();
    writeLog(QStringLiteral("Process stdout: %1").arg(text));
    Q_EMIT logMessage(text);
}

void SystemManager::onReadStderr()
{
    const QString text = QString::fromLocal8Bit(m_flashProcess.readAllStandardError());
    writeLog(QStringLiteral("Process stderr: %1").arg(text));
    Q_EMIT logMessage(text);
}

void SystemManager::onProcessFinished(int exitCode, QProcess::ExitStatus status)
{
    m_flashSilenceTimer->stop();
    writeLog(QStringLiteral("Upgrade process finished. exitCode=%1 status=%2")
                 .arg(QString::number(exitCode), QString::number(int(status))));
    if (m_upgradeStage == flash::cIdle)
        return;
    if (exitCode != 0 || status != QProcess::NormalExit || flash::reportsNoFlash(m_flashOutputTail))
        failFlashing();
    else
        nextFlashStage();
}

void SystemManager::nextFlashStage()
{
    switch (m_upgradeStage) {
    case flash::cBoot:
        Q_EMIT logMessage(QStringLiteral("BOOT completed."));
        m_upgradeStage = flash::cLogo;
        runFel(cLogoAddress, cLogoFile);
        break;
    case flash::cLogo:
        Q_EMIT logMessage(QStringLiteral("LOGO completed."));
        m_upgradeStage = flash::cExec;
        runFel(cExecAddress, cExecFile);
        break;
    case flash::cExec:
        Q_EMIT logMessage(QStringLiteral("EXEC completed."));
        Q_EMIT progressChanged(100);
        Q_EMIT logMessage(QStringLiteral("Upgrade completed."));
        // The images are written: nothing that happens from here on cuts the upgrade off.
        m_upgradeStage = flash::cIdle;
        m_upgradeWritten = true;
        // A timer and no loop: this is called from within the tool's last signal.
        QTimer::singleShot(m_timings.pauseAfterFlashingMs, this, &SystemManager::completeUpgrade);
        break;
    default:
        break;
    }
}

void SystemManager::onFlashError(QProcess::ProcessError error)
{
    // Every other error is followed by finished().
    if (error != QProcess::FailedToStart || m_upgradeStage == flash::cIdle)
        return;
    writeLog(QStringLiteral("Upgrade process could not be started: %1").arg(m_flashProcess.errorString()));
    failFlashing();
}

void SystemManager::onFlashSilence()
{
    if (m_upgradeStage == flash::cIdle)
        return;
    writeLog(
        QStringLiteral("Flash tool printed nothing for %1 ms and is ended.").arg(m_timings.flashSilenceMs));
    Q_EMIT logMessage(QStringLiteral("The flash tool does not respond and is ended."));
    m_flashProcess.kill();
    // Delivers finished(), unless the system itself holds the process back.
    if (!m_flashProcess.waitForFinished(cKillGraceMs) && m_upgradeStage != flash::cIdle)
        failFlashing();
}

void SystemManager::failFlashing()
{
    Q_EMIT logMessage(QStringLiteral("Upgrade failed."));
    finishUpgrade(false);
}

void SystemManager::cutUpgrade()
{
    if (!m_upgradeActive)
        return;
    if (m_upgradeWritten) {
        completeUpgrade();
        return;
    }
    const bool flashing = m_upgradeStage != flash::cIdle;
    Q_EMIT logMessage(
        flashing ? QStringLiteral("Upgrade cut off while writing: the application closes. The controller's "
                                  "firmware is incomplete, upgrade it again.")
                 : QStringLiteral("Upgrade cut off before writing: the application closes."));
    delete m_download;
    m_download = nullptr;
    m_upgradeStage = flash::cIdle;
    if (m_flashProcess.state() != QProcess::NotRunning) {
        m_flashProcess.kill();
        m_flashProcess.waitForFinished(cKillGraceMs);
    }
    finishUpgrade(false);
}

void SystemManager::completeUpgrade()
{
    if (!m_upgradeWritten)
        return;
    emptyFirmwareCache();
    finishUpgrade(true);
}

void SystemManager::finishUpgrade(bool ok)
{
    m_flashSilenceTimer->stop();
    m_upgradeStage = flash::cIdle;
    m_upgradeWritten = false;
    m_upgradeActive = false;
    Q_EMIT upgradeFinished(ok);
    // A controller that came while the tool was still there has not been asked since.
    if (m_felNotAsked) {
        m_felNotAsked = false;
        m_deviceChangedMeanwhile = m_connectionCheckBusy;
        requestConnectionStateRefresh(false);
    }
}

bool SystemManager::waitProcessingEvents(int ms)
{
    const QPointer<SystemManager> self(this);
    QEventLoop loop;
    QTimer pause;
    pause.setSingleShot(true);
    pause.setTimerType(Qt::PreciseTimer);
    bool elapsed = false;
    connect(&pause, &QTimer::timeout, &loop, [&loop, &elapsed] {
        elapsed = true;
        loop.quit();
    });
    connect(this, &QObject::destroyed, &loop, &QEventLoop::quit);
    pause.start(ms);
    loop.exec();
    if (self == nullptr)
        return false;
    // The loop was ended with the application's own: nothing new is begun then.
    if (!elapsed)
        stop();
    return elapsed && !m_stopping;
}
