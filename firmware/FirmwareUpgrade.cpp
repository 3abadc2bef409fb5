// SPDX-License-Identifier: GPL-3.0-or-later
#include "firmware/FirmwareUpgrade.h"

#include "firmware/FlashProgress.h"
#include "network/FileDownload.h"
#include "platform/UserFolders.h"

#include <QDir>
#include <QFileInfo>
#include <QNetworkAccessManager>

#include <algorithm>
#include <utility>

namespace {

const auto cLogoFile = QStringLiteral("logo.bin");
const auto cExecFile = QStringLiteral("f1c100s.bin");
const auto cBootAddress = QStringLiteral("0x0");
const auto cLogoAddress = QStringLiteral("0x6000");
const auto cExecAddress = QStringLiteral("0x50000");

/// Several times the largest serial flash.
constexpr qint64 cMaxImageBytes = 256 * 1024 * 1024;
/// Longer than one update of the tool's progress bar.
constexpr int cOutputTailLength = 1024;

} // namespace

FirmwareUpgrade::FirmwareUpgrade(BootModeWatch& watch, std::function<QString()> flashToolPath,
                                 const UpgradeTimings& timings, DebugLog log, QObject* parent)
    : QObject(parent)
    , m_watch(watch)
    , m_flashToolPath(std::move(flashToolPath))
    , m_timings(timings)
    , m_log(std::move(log))
{
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &FirmwareUpgrade::onTimeout);
    connect(&m_watch, &BootModeWatch::controllerGone, this, &FirmwareUpgrade::onControllerGone);
}

FirmwareUpgrade::~FirmwareUpgrade()
{
    stop();
}

QString FirmwareUpgrade::cacheFolder()
{
    const QString folder =
        platform::userFolder(platform::UserFolder::LocalData) + QStringLiteral("/firmware");
    QDir().mkpath(folder);
    return folder;
}

bool FirmwareUpgrade::isWriting() const
{
    return m_state == State::WritingBoot || m_state == State::WritingLogo || m_state == State::WritingExec;
}

int FirmwareUpgrade::progressAt(int percent) const
{
    switch (m_state) {
    case State::WritingBoot:
        return flash::overallProgress(flash::cBoot, percent);
    case State::WritingLogo:
        return flash::overallProgress(flash::cLogo, percent);
    case State::WritingExec:
        return flash::overallProgress(flash::cExec, percent);
    default:
        return flash::overallProgress(flash::cIdle, percent);
    }
}

void FirmwareUpgrade::start(const QString& type, const FirmwareCatalogue& catalogue)
{
    m_log.write(QStringLiteral("startUpgrade(type) called. type=%1").arg(type));
    if (m_stopped)
        return;
    if (m_state != State::Idle) {
        m_log.write(QStringLiteral("startUpgrade refused: an upgrade is already running."));
        Q_EMIT message(QStringLiteral("An upgrade is already running."));
        return;
    }
    m_state = State::CheckingController;
    m_claim.emplace(m_watch);
    m_log.write(QStringLiteral("firmware cache dir=%1").arg(cacheFolder()));
    Q_EMIT progress(0);
    m_watch.checkNow(false);
    if (m_stopped)
        return;
    const auto refuse = [this](const QString& reason) {
        m_state = State::Idle;
        m_claim.reset();
        m_log.write(QStringLiteral("startUpgrade aborted: ") + reason);
    };
    if (!m_watch.felReady()) {
        refuse(QStringLiteral("FEL device not detected."));
        Q_EMIT message(QStringLiteral("FEL device not detected. Connect USB and hold the FEL key."));
        return;
    }
    emptyCache();
    const auto entry = catalogue.byType.constFind(type);
    if (entry == catalogue.byType.constEnd()) {
        refuse(QStringLiteral("firmware type not found. knownTypes=%1")
                   .arg(catalogue.types.join(QLatin1Char(','))));
        return;
    }
    m_files = FirmwareFiles::fromEntry(*entry);
    m_downloaded.clear();
    m_state = State::PausingBeforeDownloads;
    m_timer.start(m_timings.pauseBeforeDownloadsMs);
}

void FirmwareUpgrade::onTimeout()
{
    switch (m_state) {
    case State::PausingBeforeDownloads:
        m_state = State::Downloading;
        downloadNext();
        break;
    case State::WritingBoot:
    case State::WritingLogo:
    case State::WritingExec:
        m_log.write(QStringLiteral("Flash tool printed nothing for %1 ms and is ended.")
                        .arg(m_timings.toolSilenceMs));
        Q_EMIT message(QStringLiteral("The flash tool does not respond and is ended."));
        endTool();
        break;
    case State::EndingTool:
        m_tool.reset();
        failWriting();
        break;
    case State::PausingAfterWriting:
        complete();
        break;
    default:
        break;
    }
}

void FirmwareUpgrade::emptyCache() const
{
    QDir cache(cacheFolder());
    // The second form is what a download leaves that was cut off by the end of the process.
    const QStringList images = cache.entryList({QStringLiteral("*.bin"), QStringLiteral("*.bin.??????")},
                                               QDir::Files | QDir::Hidden | QDir::System);
    for (const QString& image : images) {
        if (!cache.remove(image))
            m_log.write(QStringLiteral("firmware cache: cannot remove %1").arg(cache.filePath(image)));
    }
}

void FirmwareUpgrade::downloadNext()
{
    const int index = m_downloaded.size();
    if (index >= m_files.urls.size()) {
        Q_EMIT message(QStringLiteral("Firmware download completed."));
        m_log.write(QStringLiteral("startFelUpgrade: cacheDir=%1 bootFile=%2")
                        .arg(cacheFolder(), m_files.bootFileName));
        Q_EMIT message(QStringLiteral("Starting MCU firmware flashing."));
        write(State::WritingBoot);
        return;
    }
    const QString& url = m_files.urls.at(index);
    m_log.write(QStringLiteral("downloadNext: index=%1 url=%2").arg(QString::number(index), url));
    const QString name = firmware::fileNameOf(url);
    ReplyLimits limits;
    limits.stallMs = m_timings.downloadStallMs;
    limits.totalMs = m_timings.downloadTimeoutMs;
    limits.maxBytes = cMaxImageBytes;
    // An address without HTTP is refused by the download; so is a name that could leave the cache folder.
    const bool plain = firmware::isPlainFileName(name);
    if (!plain)
        m_log.write(QStringLiteral("downloadNext: no usable file name: %1").arg(name));
    m_download =
        new FileDownload(plain ? QUrl(url) : QUrl(), cacheFolder() + QLatin1Char('/') + name, limits, this);
    connect(m_download, &FileDownload::progress, this, &FirmwareUpgrade::onDownloadProgress);
    connect(m_download, &FileDownload::finished, this, &FirmwareUpgrade::onDownloadFinished);
    if (m_network == nullptr)
        m_network = std::make_unique<QNetworkAccessManager>();
    m_download->start(*m_network);
}

void FirmwareUpgrade::onDownloadProgress(qint64 received, qint64 total)
{
    if (total < 1 || m_download == nullptr)
        return;
    const int index = m_downloaded.size();
    const int overall = flash::downloadProgress(index, m_files.urls.size(), received, total);
    Q_EMIT message(QStringLiteral("Download: %1 %2%")
                       .arg(firmware::fileNameOf(m_files.urls.at(index)),
                            QString::number(flash::downloadPercent(received, total))));
    Q_EMIT progress(overall);
}

void FirmwareUpgrade::onDownloadFinished()
{
    const QString url = m_files.urls.at(m_downloaded.size());
    const DownloadOutcome outcome = m_download->outcome();
    const QString path = m_download->path();
    m_download->deleteLater();
    m_download = nullptr;
    m_log.write(
        QStringLiteral("download finished: url=%1 error=%2(%3) bytes=%4")
            .arg(url, QString::number(outcome.error), outcome.transferText, QString::number(outcome.bytes)));
    m_log.write(QStringLiteral("download target path=%1").arg(path));
    if (!outcome.saved) {
        m_log.write(QStringLiteral("download save failed: path=%1 error=%2").arg(path, outcome.errorText));
        Q_EMIT message(QStringLiteral("Failed to save firmware file: ") + path);
        finish(false);
        return;
    }
    m_downloaded.append(path);
    Q_EMIT message(QStringLiteral("Downloaded: ") + firmware::fileNameOf(url));
    downloadNext();
}

void FirmwareUpgrade::write(State stage)
{
    if (m_stopped)
        return;
    m_state = stage;
    if (stage == State::WritingBoot)
        runTool(cBootAddress, m_files.bootFileName);
    else if (stage == State::WritingLogo)
        runTool(cLogoAddress, cLogoFile);
    else
        runTool(cExecAddress, cExecFile);
}

void FirmwareUpgrade::runTool(const QString& address, const QString& fileName)
{
    const QString path = cacheFolder() + QLatin1Char('/') + fileName;
    // A boot image without a name stands for the folder, with which the tool writes nothing. Any other file
    // must come from this download: an older image may be left that could not be removed.
    const bool usable =
        fileName.isEmpty() ||
        (firmware::isPlainFileName(fileName) && QFileInfo::exists(path) &&
         std::any_of(m_downloaded.cbegin(), m_downloaded.cend(),
                     [&path](const QString& file) { return QFileInfo(file) == QFileInfo(path); }));
    if (!usable) {
        m_log.write(QStringLiteral("runFel aborted: firmware file missing. path=%1").arg(path));
        Q_EMIT message(QStringLiteral("Firmware file missing: ") + path);
        finish(false);
        return;
    }
    const QString program = m_flashToolPath();
    const QStringList arguments = flash::writeArguments(address, path);
    const QString command = arguments.join(QLatin1Char(' '));
    Q_EMIT message(QStringLiteral("Executing: ") + program + QLatin1Char(' ') + command);
    m_log.write(QStringLiteral("runFel: program=%1 args=%2").arg(program, command));
    m_outputTail.clear();
    m_timer.start(m_timings.toolSilenceMs);
    tool().start(program, arguments);
}

platform::ChildProcess& FirmwareUpgrade::tool()
{
    if (m_tool == nullptr) {
        m_tool.reset(new platform::ChildProcess);
        m_tool->setProcessChannelMode(QProcess::MergedChannels);
        connect(m_tool.get(), &QProcess::readyReadStandardOutput, this, &FirmwareUpgrade::readOutput);
        connect(m_tool.get(), QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), this,
                &FirmwareUpgrade::onToolFinished);
        connect(m_tool.get(), &QProcess::errorOccurred, this, &FirmwareUpgrade::onToolError);
    }
    return *m_tool;
}

void FirmwareUpgrade::readOutput()
{
    const QString text = QString::fromLocal8Bit(tool().readAllStandardOutput());
    m_outputTail = (m_outputTail + text).right(cOutputTailLength);
    if (isWriting())
        m_timer.start(m_timings.toolSilenceMs);
    m_log.write(QStringLiteral("Process stdout: %1").arg(text));
    // A percentage after the kill is no progress.
    if (m_state != State::EndingTool)
        Q_EMIT message(text);
}

void FirmwareUpgrade::readErrors()
{
    const QString text = QString::fromLocal8Bit(tool().readAllStandardError());
    m_log.write(QStringLiteral("Process stderr: %1").arg(text));
    Q_EMIT message(text);
}

void FirmwareUpgrade::onToolFinished(int exitCode, QProcess::ExitStatus status)
{
    m_log.write(QStringLiteral("Upgrade process finished. exitCode=%1 status=%2")
                    .arg(QString::number(exitCode), QString::number(int(status))));
    const bool done = exitCode == 0 && status == QProcess::NormalExit && flash::reportsWritten(m_outputTail);
    if (isWriting() && done)
        onImageWritten();
    else if (isWriting() || m_state == State::EndingTool)
        failWriting();
}

void FirmwareUpgrade::onImageWritten()
{
    m_timer.stop();
    if (m_state == State::WritingBoot) {
        Q_EMIT message(QStringLiteral("BOOT completed."));
        write(State::WritingLogo);
    } else if (m_state == State::WritingLogo) {
        Q_EMIT message(QStringLiteral("LOGO completed."));
        write(State::WritingExec);
    } else {
        Q_EMIT message(QStringLiteral("EXEC completed."));
        Q_EMIT progress(100);
        Q_EMIT message(QStringLiteral("Upgrade completed."));
        m_state = State::PausingAfterWriting;
        m_timer.start(m_timings.pauseAfterWritingMs);
    }
}

void FirmwareUpgrade::onToolError(QProcess::ProcessError error)
{
    // Every other error is followed by finished().
    if (error != QProcess::FailedToStart || !isWriting())
        return;
    m_log.write(QStringLiteral("Upgrade process could not be started: %1").arg(m_tool->errorString()));
    failWriting();
}

void FirmwareUpgrade::onControllerGone()
{
    if (!isWriting())
        return;
    m_log.write(QStringLiteral("The controller left the bus while it was written; the flash tool is ended."));
    endTool();
}

void FirmwareUpgrade::endTool()
{
    m_state = State::EndingTool;
    m_timer.start(m_timings.killGraceMs);
    m_tool->kill();
}

void FirmwareUpgrade::failWriting()
{
    Q_EMIT message(QStringLiteral("Upgrade failed."));
    finish(false);
}

void FirmwareUpgrade::complete()
{
    emptyCache();
    finish(true);
}

void FirmwareUpgrade::finish(bool ok)
{
    m_timer.stop();
    m_state = State::Idle;
    Q_EMIT finished(ok);
    // Unless a receiver has started the next upgrade, which has a claim of its own.
    if (m_state == State::Idle)
        m_claim.reset();
}

void FirmwareUpgrade::stop()
{
    if (std::exchange(m_stopped, true) || m_state == State::Idle)
        return;
    // The images are written: the upgrade has succeeded.
    if (m_state == State::PausingAfterWriting) {
        complete();
        return;
    }
    const bool writing = isWriting() || m_state == State::EndingTool;
    Q_EMIT message(writing ? QStringLiteral("Upgrade cut off while writing: the application closes. The "
                                            "controller's firmware is incomplete, upgrade it again.")
                           : QStringLiteral("Upgrade cut off before writing: the application closes."));
    delete m_download;
    m_download = nullptr;
    if (m_tool != nullptr) {
        m_tool->disconnect(this);
        m_tool->kill();
        m_tool->waitForFinished(m_timings.killGraceMs);
        m_tool.reset();
    }
    finish(false);
}
