// SPDX-License-Identifier: GPL-3.0-or-later
#include "firmware/FirmwareUpgrade.h"

#include "firmware/FlashProgress.h"
#include "network/FileDownload.h"
#include "platform/UserFolders.h"

#include <QDir>
#include <QFileInfo>
#include <QLockFile>
#include <QNetworkAccessManager>
#include <QTemporaryDir>

#include <algorithm>
#include <utility>

namespace {

const auto cLogoFile = QStringLiteral("logo.bin");
const auto cExecFile = QStringLiteral("f1c100s.bin");
/// Addresses and names of the images, in the order in which they are written.
const std::array<QString, 3> cAddresses{QStringLiteral("0x0"), QStringLiteral("0x6000"),
                                        QStringLiteral("0x50000")};
const std::array<QString, 3> cImageNames{QStringLiteral("BOOT"), QStringLiteral("LOGO"),
                                         QStringLiteral("EXEC")};

/// Several times the largest serial flash.
constexpr qint64 cMaxImageBytes = 256 * 1024 * 1024;
/// Longer than one update of the tool's progress bar.
constexpr int cOutputTailLength = 1024;
constexpr int cWholePercent = 100;

/// Held by the program that upgrades. It stands beside the cache folder, which is emptied.
QString lockPath()
{
    return FirmwareUpgrade::cacheFolder() + QStringLiteral(".lock");
}

/// Returns the offset of the first byte of \a image that \a copy lacks or has otherwise; nothing when the
/// files are equal.
std::optional<qint64> firstDifference(const QString& image, const QString& copy)
{
    QFile left(image);
    QFile right(copy);
    if (!left.open(QIODevice::ReadOnly) || !right.open(QIODevice::ReadOnly))
        return 0;
    const QByteArray expected = left.readAll();
    const QByteArray found = right.readAll();
    const auto [at, other] = std::mismatch(expected.cbegin(), expected.cend(), found.cbegin(), found.cend());
    if (at == expected.cend() && other == found.cend())
        return std::nullopt;
    return at - expected.cbegin();
}

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
    case State::ReadingBack:
        return flash::overallProgress(flash::cExec, cWholePercent);
    default:
        return flash::overallProgress(flash::cIdle, percent);
    }
}

/// Takes the controller for an upgrade. Returns false when it was refused, which was said then.
bool FirmwareUpgrade::accept()
{
    if (m_stopped)
        return false;
    auto lock = std::make_unique<QLockFile>(lockPath());
    // The end of its owner ends a lock, not its age.
    lock->setStaleLockTime(0);
    // Where no lock can be made, nothing can be downloaded either.
    const bool taken = !lock->tryLock() && lock->error() == QLockFile::LockFailedError;
    if (m_state != State::Idle || taken) {
        m_log.write(QStringLiteral("startUpgrade refused: an upgrade is already running."));
        Q_EMIT message(QStringLiteral("An upgrade is already running."));
        return false;
    }
    m_lock = std::move(lock);
    m_state = State::CheckingController;
    m_claim.emplace(m_watch);
    m_log.write(QStringLiteral("firmware cache dir=%1").arg(cacheFolder()));
    Q_EMIT progress(0);
    m_watch.checkNow(false);
    if (m_stopped)
        return false;
    if (!m_watch.felReady()) {
        refuse(QStringLiteral("FEL device not detected."));
        Q_EMIT message(QStringLiteral("FEL device not detected. Connect USB and hold the FEL key."));
        return false;
    }
    m_downloaded.clear();
    return true;
}

void FirmwareUpgrade::refuse(const QString& reason)
{
    m_state = State::Idle;
    m_claim.reset();
    m_lock.reset();
    m_log.write(QStringLiteral("startUpgrade aborted: ") + reason);
}

void FirmwareUpgrade::start(const QString& type, const FirmwareCatalogue& catalogue)
{
    m_log.write(QStringLiteral("startUpgrade(type) called. type=%1").arg(type));
    if (!accept())
        return;
    emptyCache();
    const auto entry = catalogue.byType.constFind(type);
    if (entry == catalogue.byType.constEnd()) {
        refuse(QStringLiteral("firmware type not found. knownTypes=%1")
                   .arg(catalogue.types.join(QLatin1Char(','))));
        return;
    }
    m_local = false;
    m_files = FirmwareFiles::fromEntry(*entry);
    const QString folder = cacheFolder() + QLatin1Char('/');
    m_images = {folder + m_files.bootFileName, folder + cLogoFile, folder + cExecFile};
    m_state = State::PausingBeforeDownloads;
    m_timer.start(m_timings.pauseBeforeDownloadsMs);
}

void FirmwareUpgrade::start(const FirmwareImages& images)
{
    m_log.write(QStringLiteral("startUpgrade(images) called. boot=%1 logo=%2 exec=%3")
                    .arg(images.boot, images.logo, images.exec));
    if (!accept())
        return;
    m_local = true;
    m_files = {};
    m_images = {images.boot, images.logo, images.exec};
    for (const QString& path : m_images) {
        if (isUsable(path))
            continue;
        refuse(QStringLiteral("firmware file missing. path=%1").arg(path));
        Q_EMIT message(QStringLiteral("Firmware file missing: ") + path);
        return;
    }
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
    case State::ReadingBack:
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
        if (!m_local)
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
    const auto image = static_cast<size_t>(stage) - static_cast<size_t>(State::WritingBoot);
    const QString& path = m_images.at(image);
    if (isUsable(path)) {
        runTool(flash::writeArguments(cAddresses.at(image), path));
        return;
    }
    m_log.write(QStringLiteral("runFel aborted: firmware file missing. path=%1").arg(path));
    Q_EMIT message(QStringLiteral("Firmware file missing: ") + path);
    finish(false);
}

bool FirmwareUpgrade::isUsable(const QString& path) const
{
    const QFileInfo file(path);
    if (m_local)
        return file.isFile() && file.size() > 0;
    // A boot image without a name stands for the folder, with which the tool writes nothing. Any other file
    // must come from this download: an older image may be left that could not be removed.
    const QString name = path.mid(cacheFolder().size() + 1);
    return name.isEmpty() ||
           (firmware::isPlainFileName(name) && file.exists() &&
            std::any_of(m_downloaded.cbegin(), m_downloaded.cend(),
                        [&file](const QString& other) { return QFileInfo(other) == file; }));
}

/// Reads as many bytes of the flash as the image with the index \a image has.
void FirmwareUpgrade::readBack(size_t image)
{
    m_state = State::ReadingBack;
    m_readImage = image;
    if (m_readBackFolder == nullptr)
        m_readBackFolder = std::make_unique<QTemporaryDir>();
    runTool(flash::readArguments(cAddresses.at(image), QFileInfo(m_images.at(image)).size(),
                                 m_readBackFolder->filePath(cImageNames.at(image))));
}

void FirmwareUpgrade::runTool(const QStringList& arguments)
{
    const QString program = m_flashToolPath();
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
    if (isToolRunning())
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
    const bool succeeded = exitCode == 0 && status == QProcess::NormalExit;
    if (isWriting() && succeeded && flash::reportsWritten(m_outputTail))
        onImageWritten();
    else if (m_state == State::ReadingBack && succeeded)
        onImageRead();
    else if (isToolRunning() || m_state == State::EndingTool)
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
        if (m_verification)
            readBack(0);
        else
            succeed();
    }
}

void FirmwareUpgrade::onImageRead()
{
    m_timer.stop();
    const QString& name = cImageNames.at(m_readImage);
    const QString& image = m_images.at(m_readImage);
    if (const auto offset = firstDifference(image, m_readBackFolder->filePath(name))) {
        Q_EMIT message(QStringLiteral("%1 differs in the flash from byte %2 of %3 on.")
                           .arg(name, QString::number(*offset), image));
        failWriting();
        return;
    }
    Q_EMIT message(QStringLiteral("%1 verified.").arg(name));
    if (m_readImage + 1 < m_images.size())
        readBack(m_readImage + 1);
    else
        succeed();
}

void FirmwareUpgrade::succeed()
{
    Q_EMIT progress(cWholePercent);
    Q_EMIT message(QStringLiteral("Upgrade completed."));
    m_state = State::PausingAfterWriting;
    m_timer.start(m_timings.pauseAfterWritingMs);
}

void FirmwareUpgrade::onToolError(QProcess::ProcessError error)
{
    // Every other error is followed by finished().
    if (error != QProcess::FailedToStart || !isToolRunning())
        return;
    m_log.write(QStringLiteral("Upgrade process could not be started: %1").arg(m_tool->errorString()));
    failWriting();
}

void FirmwareUpgrade::onControllerGone()
{
    if (!isToolRunning())
        return;
    m_log.write(QStringLiteral("The controller left the bus while it was in use; the flash tool is ended."));
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
    m_readBackFolder.reset();
    m_lock.reset();
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
    if (m_state == State::ReadingBack)
        Q_EMIT message(QStringLiteral("Upgrade cut off before it was verified: the application closes."));
    else
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
