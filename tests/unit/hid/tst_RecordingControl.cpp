// SPDX-License-Identifier: GPL-3.0-or-later
#include "hid/HidLink.h"
#include "hid/RecordingControl.h"
#include "recording/RecordingReader.h"
#include "recording/RecordingReport.h"
#include "recording/RunningRecordings.h"
#include "storage/DataFolders.h"
#include "tests/fakes/FakeBusTest.h"

#include <QApplication>
#include <QFile>

#include <atomic>

using namespace recording;

class RecordingControlTest : public FakeBusTest
{
    Q_OBJECT

private:
    static Info infoOf(const QString& path)
    {
        RecordingReader reader;
        return reader.open(path) ? reader.info() : Info();
    }
    /// Leaves a recording as a crash would.
    static QString interrupt(const char* name)
    {
        const QString path = folders::recordings() + QLatin1Char('/') + QLatin1String(name);
        RecordingWriter writer;
        Error error;
        if (!writer.create(path, QStringLiteral("Test"), Time(0), error) ||
            !writer.append({Measurement{Time(1000), {}}}, {}, error) || !running::announce(path))
            qFatal("%s", qPrintable(errorText(error)));
        return path;
    }

private Q_SLOTS:
    void initTestCase() { QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates)); }
    void cleanup()
    {
        // A thread of the pool lives a moment longer than its object.
        waitForReaders();
        FakeBusTest::cleanup();
    }

    void aRecordingOutlastsAnUnplug()
    {
        HidLink link(nullptr, nullptr);
        RecordingControl control(link.port());
        QUrl shown;
        control.setViewer([&shown](const QUrl& url) {
            shown = url;
            return true;
        });
        plugIn();
        QVERIFY(link.openDevice());
        control.toggle();
        QVERIFY(control.isRecording());
        fakehid::send(cPath, measurement(5));
        QTRY_VERIFY(control.details().contains(QStringLiteral("Rows: 1\n")));
        QVERIFY(!control.isTroubled());
        fakehid::unplug(cPath);
        QTRY_VERIFY(control.isTroubled());
        QVERIFY(control.details().contains(QStringLiteral("Waiting for the instrument")));
        plugIn();
        QVERIFY(link.openDevice());
        fakehid::send(cPath, measurement(6));
        QTRY_VERIFY(!control.isTroubled());
        control.toggle();
        QTRY_COMPARE(control.notice(), RecordingControl::Saved);
        QVERIFY(!control.isRecording());

        RecordingReader reader;
        QVERIFY(reader.open(control.filePath()));
        QCOMPARE(reader.info().rows, 2);
        const std::vector<Gap> gaps = reader.gaps();
        QCOMPARE(gaps.size(), size_t(1));
        QCOMPARE(gaps.front().reason, GapReason::Unplugged);

        control.showReport();
        QTRY_COMPARE(shown, QUrl::fromLocalFile(report::defaultTarget(control.filePath())));
        QVERIFY(test::contentOf(shown.toLocalFile()).contains("</html>"));
        control.setViewer([](const QUrl&) { return false; });
        control.showReport();
        QTRY_COMPARE(control.notice(), RecordingControl::NotReported);
        QVERIFY(control.noticeText().contains(QStringLiteral(".html")));
    }

    void theEndOfTheProgramFinishesTheRecording()
    {
        HidLink link(nullptr, nullptr);
        QString path;
        {
            RecordingControl control(link.port());
            control.toggle();
            path = control.filePath();
        }
        QCOMPARE(infoOf(path).endReason, EndReason::Stopped);
        QCOMPARE(running::interrupted(), QStringList());
    }

    void interruptedRecordingsAreOfferedOnce()
    {
        const QString finished = interrupt("finished.qrec");
        HidLink link(nullptr, nullptr);
        RecordingControl control(link.port());
        control.offerInterrupted();
        QTRY_COMPARE(control.notice(), RecordingControl::Interrupted);
        QCOMPARE(control.filePath(), finished);
        control.finishInterrupted();
        QTRY_COMPARE(control.notice(), RecordingControl::Saved);
        QCOMPARE(infoOf(finished).endReason, EndReason::Interrupted);
        QVERIFY(control.noticeText().contains(QStringLiteral("rows: 1")));

        const QString declined = interrupt("declined.qrec");
        control.dismissNotice();
        control.offerInterrupted();
        QTRY_COMPARE(control.notice(), RecordingControl::Interrupted);
        control.declineInterrupted();
        QTRY_VERIFY(!control.isBusy());
        QCOMPARE(control.notice(), RecordingControl::NoNotice);
        QCOMPARE(running::interrupted(), QStringList());
        QCOMPARE(infoOf(declined).endReason, EndReason::None);
    }

    void aFullDiskIsOneNotice()
    {
        HidLink link(nullptr, nullptr);
        std::atomic<qint64> freeBytes{0};
        RecorderSurroundings surroundings = RecorderSurroundings::ofSystem();
        surroundings.freeBytes = [&freeBytes](const QString&) { return freeBytes.load(); };
        RecordingControl control(link.port(), nullptr, surroundings);
        control.toggle();
        QCOMPARE(control.notice(), RecordingControl::NotStarted);
        QVERIFY(control.noticeText().contains(QStringLiteral("not enough space")));
        QVERIFY(!control.hasFile());

        freeBytes = 2 * Recorder::cLeastFreeBytes;
        control.toggle();
        QCOMPARE(control.notice(), RecordingControl::NoNotice);
        freeBytes = 0;
        QTRY_COMPARE(control.notice(), RecordingControl::Saved);
        QVERIFY(control.noticeText().contains(QStringLiteral("almost full")));
        QCOMPARE(infoOf(control.filePath()).endReason, EndReason::DiskSpace);
    }
};

QUORVEL_TEST_MAIN(RecordingControlTest, QApplication)
#include "tst_RecordingControl.moc"
