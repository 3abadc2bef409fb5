// SPDX-License-Identifier: GPL-3.0-or-later
#include "hid/RecordingControl.h"

#include "platform/FileManager.h"
#include "recording/RecordingReader.h"
#include "recording/RecordingRepair.h"
#include "recording/RecordingReport.h"
#include "recording/RecordingText.h"
#include "recording/RunningRecordings.h"
#include "storage/DataFolders.h"
#include "storage/TimeText.h"

#include <QDateTime>
#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QLocale>
#include <QRunnable>

namespace {

/// Less charge is noise of a supply that is not in use.
constexpr double cLeastShownMah = 0.01;
/// The running time changes just after the full second.
constexpr std::chrono::milliseconds cTickMargin{5};

/// Returns a path in the folder of recordings at which no file is yet.
QString newPath()
{
    const QString base =
        QDir(folders::recordings())
            .filePath(timeText(QDateTime::currentDateTime(), QStringLiteral("'Recording_'yyyyMMdd_HHmmss")));
    QString path = base + QStringLiteral(".qrec");
    for (int number = 2; QFileInfo::exists(path); ++number)
        path = QStringLiteral("%1_%2.qrec").arg(base).arg(number);
    return path;
}

QString fileName(const QString& path)
{
    return QFileInfo(path).fileName();
}

} // namespace

RecordingControl::RecordingControl(InstrumentPort& port, QObject* parent, RecorderSurroundings surroundings)
    : QObject(parent)
    , m_recorder(std::move(surroundings))
    , m_portRecorder(port, m_recorder)
    , m_viewer(&QDesktopServices::openUrl)
{
    m_tick.setSingleShot(true);
    m_tick.setTimerType(Qt::PreciseTimer);
    m_pool.setMaxThreadCount(1);
    connect(&m_tick, &QTimer::timeout, this, [this] {
        Q_EMIT progressChanged();
        scheduleTick();
    });
    connect(&m_recorder, &Recorder::started, this, [this] {
        scheduleTick();
        Q_EMIT progressChanged();
        Q_EMIT recordingChanged();
    });
    connect(&m_recorder, &Recorder::statusChanged, this, &RecordingControl::progressChanged);
    connect(&m_recorder, &Recorder::ended, this, &RecordingControl::onEnded);
    QTimer::singleShot(cOfferDelay, this, &RecordingControl::offerInterrupted);
}

RecordingControl::~RecordingControl()
{
    m_pool.waitForDone();
    // Its end is nobody's news any more.
    disconnect(&m_recorder, nullptr, this, nullptr);
    m_recorder.stopAndWait();
}

bool RecordingControl::isTroubled() const
{
    const RecorderStatus status = m_recorder.status();
    return isRecording() && (status.totals.inGap || status.problem);
}

QString RecordingControl::time() const
{
    return recording::durationText(m_recorder.status().duration);
}

QString RecordingControl::details() const
{
    if (!isRecording())
        return {};
    const RecorderStatus status = m_recorder.status();
    const recording::Delivered& main = status.totals.delivered[static_cast<size_t>(recording::Supply::Main)];
    const recording::Delivered& typeC =
        status.totals.delivered[static_cast<size_t>(recording::Supply::TypeC)];
    QStringList lines{
        fileName(status.path), tr("Rows: %1").arg(QLocale().toString(status.totals.rows)),
        tr("Main: %1, %2").arg(recording::chargeText(main.chargeMah), recording::energyText(main.energyWh))};
    if (typeC.chargeMah >= cLeastShownMah)
        lines << tr("Type-C: %1, %2")
                     .arg(recording::chargeText(typeC.chargeMah), recording::energyText(typeC.energyWh));
    if (status.problem)
        lines << recording::errorText(status.problem);
    else if (status.totals.inGap)
        lines << tr("Waiting for the instrument. The recording goes on.");
    return lines.join(QLatin1Char('\n'));
}

QString RecordingControl::noticeTitle() const
{
    switch (m_notice) {
    case NoNotice:
        break;
    case Saved:
        return tr("Recording saved");
    case Unfinished:
    case NotFinished:
        return tr("The recording could not be finished");
    case NotStarted:
        return tr("The recording could not be started");
    case Interrupted:
        return tr("A recording was interrupted");
    case NotReported:
        return tr("The report could not be shown");
    }
    return {};
}

QString RecordingControl::noticeText() const
{
    switch (m_notice) {
    case NoNotice:
        break;
    case Saved:
        if (m_endReason == recording::EndReason::DiskSpace)
            return tr("The disk is almost full, so the recording has ended. It is complete up to that "
                      "moment.") +
                   QLatin1Char('\n') + summary();
        return summary();
    case Unfinished:
        return recording::errorText(m_error) + QLatin1Char('\n') +
               tr("What was recorded is in the file. The next start of the program offers to finish it.");
    case Interrupted:
        return tr("%1 was not finished because the program ended. Nothing that was written is lost.")
            .arg(fileName(m_path));
    case NotStarted:
    case NotFinished:
        return recording::errorText(m_error);
    case NotReported:
        return m_error ? recording::errorText(m_error)
                       : tr("There is no program to show it. It is in %1.")
                             .arg(QDir::toNativeSeparators(report::defaultTarget(m_path)));
    }
    return {};
}

/// Returns file, duration, rows, charge and energy of the recording that the notice concerns.
QString RecordingControl::summary() const
{
    double chargeMah = 0;
    double energyWh = 0;
    for (const recording::Delivered& delivered : m_delivered) {
        chargeMah = std::max(chargeMah, delivered.chargeMah);
        energyWh = std::max(energyWh, delivered.energyWh);
    }
    return fileName(m_path) + QLatin1Char('\n') +
           tr("%1, rows: %2, %3, %4")
               .arg(recording::durationText(m_duration), QLocale().toString(m_rows),
                    recording::chargeText(chargeMah), recording::energyText(energyWh));
}

void RecordingControl::toggle()
{
    if (isRecording())
        m_recorder.stop();
    else
        start();
}

void RecordingControl::start()
{
    const QString path = newPath();
    const recording::Error error = m_recorder.start({path, recording::Time(0), {}});
    if (error) {
        showNotice(NotStarted, error);
        return;
    }
    m_path = path;
    showNotice(NoNotice);
}

void RecordingControl::onEnded(recording::EndReason reason, const recording::Error& error)
{
    m_tick.stop();
    const RecorderStatus status = m_recorder.status();
    m_endReason = reason;
    m_duration = status.duration;
    m_rows = status.totals.rows;
    m_delivered = status.totals.delivered;
    Q_EMIT recordingChanged();
    Q_EMIT progressChanged();
    showNotice(error ? Unfinished : Saved, error);
}

void RecordingControl::scheduleTick()
{
    const recording::Time sinceSecond = m_recorder.status().duration % std::chrono::seconds(1);
    m_tick.start(
        std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::seconds(1) - sinceSecond) +
        cTickMargin);
}

void RecordingControl::showNotice(Notice notice, const recording::Error& error)
{
    ++m_noticeNumber;
    m_notice = notice;
    m_error = error;
    Q_EMIT noticeChanged();
}

void RecordingControl::dismissNotice()
{
    showNotice(NoNotice);
}

void RecordingControl::retranslate()
{
    Q_EMIT progressChanged();
    Q_EMIT noticeChanged();
}

void RecordingControl::showReport()
{
    if (!hasFile() || m_busy)
        return;
    const QString path = m_path;
    runApart([path] { return report::write(path, report::defaultTarget(path)); },
             [this, path, number = m_noticeNumber](const recording::Error& error) {
                 const bool shown = !error && m_viewer(QUrl::fromLocalFile(report::defaultTarget(path)));
                 if (!shown && number == m_noticeNumber)
                     showNotice(NotReported, error);
             });
}

void RecordingControl::showInFolder()
{
    if (hasFile())
        platform::showInFileManager(m_path);
}

void RecordingControl::offerInterrupted()
{
    if (m_busy)
        return;
    auto paths = std::make_shared<QStringList>();
    runApart(
        [paths] {
            *paths = running::interrupted();
            return recording::Error();
        },
        [this, paths](const recording::Error&) { showOffer(*paths); });
}

void RecordingControl::showOffer(const QStringList& paths)
{
    if (isRecording() || m_notice != NoNotice || paths.isEmpty())
        return;
    m_path = paths.constFirst();
    showNotice(Interrupted);
}

void RecordingControl::finishInterrupted()
{
    if (m_notice != Interrupted || m_busy)
        return;
    auto info = std::make_shared<recording::Info>();
    runApart(
        [path = m_path, info] {
            const recording::Error error = repair::recover(path);
            RecordingReader reader;
            if (!error && reader.open(path))
                *info = reader.info();
            return error ? error : reader.error();
        },
        [this, info, number = m_noticeNumber](const recording::Error& error) {
            if (number != m_noticeNumber)
                return;
            m_endReason = info->endReason;
            m_duration = info->duration;
            m_rows = info->rows;
            m_delivered = info->delivered;
            showNotice(error ? NotFinished : Saved, error);
        });
}

void RecordingControl::declineInterrupted()
{
    if (m_notice != Interrupted || m_busy)
        return;
    running::withdraw(m_path);
    showNotice(NoNotice);
    offerInterrupted();
}

void RecordingControl::runApart(const std::function<recording::Error()>& work,
                                const std::function<void(const recording::Error&)>& done)
{
    m_busy = true;
    Q_EMIT busyChanged();
    m_pool.start([this, work, done] {
        const recording::Error error = work();
        QMetaObject::invokeMethod(
            this,
            [this, error, done] {
                m_busy = false;
                Q_EMIT busyChanged();
                done(error);
            },
            Qt::QueuedConnection);
    });
}
