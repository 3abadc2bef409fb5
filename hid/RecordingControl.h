// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "recording/PortRecorder.h"
#include "recording/Recorder.h"

#include <QObject>
#include <QString>
#include <QThreadPool>
#include <QTimer>
#include <QUrl>

#include <functional>

/**
 * Recordings as the window shows them: starts and stops the recorder, says how far it is, and has one notice
 * at a time about a recording that ended or was interrupted. In QML the singleton "Recording".
 *
 * Lives on the GUI thread; every signal is emitted there. Its end finishes a recording that is running.
 */
class RecordingControl : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool recording READ isRecording NOTIFY recordingChanged)
    Q_PROPERTY(bool troubled READ isTroubled NOTIFY progressChanged)
    Q_PROPERTY(QString time READ time NOTIFY progressChanged)
    Q_PROPERTY(QString details READ details NOTIFY progressChanged)
    Q_PROPERTY(Notice notice READ notice NOTIFY noticeChanged)
    Q_PROPERTY(QString noticeTitle READ noticeTitle NOTIFY noticeChanged)
    Q_PROPERTY(QString noticeText READ noticeText NOTIFY noticeChanged)
    Q_PROPERTY(bool hasFile READ hasFile NOTIFY noticeChanged)
    Q_PROPERTY(bool busy READ isBusy NOTIFY busyChanged)

public:
    enum Notice {
        NoNotice,
        Saved,       ///< the recording ended; its file is complete
        Unfinished,  ///< the recording ended, and its file could not be finished
        NotStarted,  ///< the recording could not be started
        Interrupted, ///< an earlier recording was interrupted and can be finished
        NotFinished, ///< that recording could not be finished
        NotReported, ///< the report could not be written or shown
    };
    Q_ENUM(Notice)

    /// Interrupted recordings are looked for this long after the start of the program.
    static constexpr std::chrono::milliseconds cOfferDelay{1500};

    /// Records what \a port receives; the port must outlive this object.
    explicit RecordingControl(InstrumentPort& port, QObject* parent = nullptr,
                              RecorderSurroundings surroundings = RecorderSurroundings::ofSystem());
    /// Finishes a recording that is running, and waits for a report that is being written.
    ~RecordingControl() override;

    /// Sets what shows a report; returns false when nothing could. For tests.
    void setViewer(std::function<bool(const QUrl& url)> viewer) { m_viewer = std::move(viewer); }

    bool isRecording() const { return m_recorder.isRecording(); }
    /// True while the instrument is away or the file cannot be written.
    bool isTroubled() const;
    /// Running time of the recording, "0:05:09".
    QString time() const;
    /// File, rows, charge and energy so far, a line each.
    QString details() const;
    Notice notice() const { return m_notice; }
    QString noticeTitle() const;
    QString noticeText() const;
    /// True when the notice concerns a complete recording, which can be shown.
    bool hasFile() const { return m_notice == Saved || m_notice == NotReported; }
    /// True while a report is written or a recording is finished.
    bool isBusy() const { return m_busy; }
    /// The recording that runs, or the one that the notice concerns; an absolute path.
    QString filePath() const { return m_path; }

    /// Starts a recording in the folder of recordings, or ends the one that runs. A failure is a notice.
    Q_INVOKABLE void toggle();
    /// Writes the report of the notice's recording beside it and shows it in the browser.
    Q_INVOKABLE void showReport();
    /// Shows the notice's recording in the file manager.
    Q_INVOKABLE void showInFolder();
    /// Finishes the interrupted recording that the notice offers.
    Q_INVOKABLE void finishInterrupted();
    /// Leaves the interrupted recording as it is and never offers it again.
    Q_INVOKABLE void declineInterrupted();
    /// Closes the notice. An interrupted recording is offered again at the next start.
    Q_INVOKABLE void dismissNotice();

    /// Looks for interrupted recordings now. Does nothing while a recording runs or a notice is shown.
    void offerInterrupted();

public Q_SLOTS:
    /// Makes every text again, in the language that is now in use.
    void retranslate();

Q_SIGNALS:
    void recordingChanged();
    void progressChanged();
    void noticeChanged();
    void busyChanged();

private:
    void start();
    void onEnded(recording::EndReason reason, const recording::Error& error);
    void showNotice(Notice notice, const recording::Error& error = {});
    void scheduleTick();
    void showOffer(const QStringList& paths);
    /// Does \a work on a thread of its own, then hands its result to \a done on this one.
    void runApart(const std::function<recording::Error()>& work,
                  const std::function<void(const recording::Error&)>& done);
    QString summary() const;

    Recorder m_recorder;
    PortRecorder m_portRecorder;
    QTimer m_tick;
    std::function<bool(const QUrl& url)> m_viewer;
    QString m_path;
    Notice m_notice = NoNotice;
    /// Counts the notices, so that a late result does not replace a newer one.
    int m_noticeNumber = 0;
    /// What the notice is about.
    recording::Error m_error;
    recording::EndReason m_endReason = recording::EndReason::None;
    recording::Time m_duration{};
    qint64 m_rows = 0;
    std::array<recording::Delivered, recording::cSupplyCount> m_delivered{};
    bool m_busy = false;
    /// Goes first: its tasks report to this object.
    QThreadPool m_pool;
};
