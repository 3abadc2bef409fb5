// SPDX-License-Identifier: GPL-3.0-or-later
#include "recording/Recorder.h"
#include "recording/RecordingReader.h"
#include "recording/RecordingRepair.h"
#include "recording/RunningRecordings.h"
#include "tests/support/FileSizeLimit.h"
#include "tests/support/TestCase.h"

#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <atomic>

using namespace recording;
using namespace std::chrono_literals;

namespace {

/// A bench whose clocks and disk are moved by hand.
class Bench
{
public:
    std::atomic<qint64> steadyUs{1'000'000'000};
    std::atomic<qint64> sleptUs{0};
    std::atomic<qint64> wallUs{1'700'000'000'000'000};
    std::atomic<qint64> freeBytes{1LL << 40};

    RecorderSurroundings surroundings()
    {
        RecorderSurroundings made;
        made.steady = [this] { return moment(); };
        made.suspension = [this] { return std::chrono::microseconds(sleptUs); };
        made.uncountedSuspension = made.suspension;
        made.wall = [this] { return ClockPoint{{}, wallUs, 3600}; };
        made.freeBytes = [this](const QString&) { return freeBytes.load(); };
        return made;
    }
    std::chrono::steady_clock::time_point moment() const
    {
        return std::chrono::steady_clock::time_point(std::chrono::microseconds(steadyUs));
    }
    void pass(std::chrono::microseconds time)
    {
        steadyUs += time.count();
        wallUs += time.count();
    }
    void sleep(std::chrono::microseconds time)
    {
        sleptUs += time.count();
        wallUs += time.count();
    }
};

protocol::Measurement supply(float volts, float amperes)
{
    protocol::Measurement values;
    values.mainInputVoltage = volts;
    values.mainOutputCurrent = amperes;
    values.mainPower = volts * amperes;
    return values;
}

} // namespace

class RecorderTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void whatWasAddedIsInTheFile();
    void gapsHaveTheirReasons();
    void anAlmostFullDiskEndsTheRecording();
    void aDiskThatTakesNothingIsAGap();
    void theNextRecordingStartsAtOnce();

private:
    QString path() const { return m_folder->filePath(QStringLiteral("a.qrec")); }
    void feed(Recorder& recorder, std::chrono::microseconds time, float amperes = 1);

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<Bench> m_bench;
};

void RecorderTest::init()
{
    TestCase::init();
    m_folder = std::make_unique<QTemporaryDir>();
    m_bench = std::make_unique<Bench>();
}

void RecorderTest::cleanup()
{
    m_bench.reset();
    m_folder.reset();
    TestCase::cleanup();
}

/// Adds a measurement every 100 ms.
void RecorderTest::feed(Recorder& recorder, std::chrono::microseconds time, float amperes)
{
    for (std::chrono::microseconds passed{0}; passed < time; passed += 100ms) {
        m_bench->pass(100ms);
        recorder.addMeasurement(supply(5, amperes), m_bench->moment());
    }
}

void RecorderTest::whatWasAddedIsInTheFile()
{
    Recorder recorder(m_bench->surroundings());
    const QSignalSpy ended(&recorder, &Recorder::ended);
    QVERIFY(!recorder.start({path(), Time(0), QStringLiteral("test 1")}));
    QCOMPARE(running::current(), QStringList{path()});
    QCOMPARE(recorder.start({path(), Time(0), {}}).failure, Failure::Busy);
    recorder.setIdentity({QStringLiteral("QI1"), QStringLiteral("2.0")});
    feed(recorder, 100s);
    recorder.addMark(QStringLiteral("halfway"));
    recorder.addMultimeterReading(2, QStringLiteral("4.7kΩ"), m_bench->moment());
    recorder.addScreenChange(4, 1, m_bench->moment());
    recorder.stopAndWait();
    QCOMPARE(ended.size(), 1);
    QVERIFY(!ended[0][1].value<Error>());
    QVERIFY(running::current().isEmpty() && running::interrupted().isEmpty());

    // One file without helpers, which a second reader opens.
    QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files | QDir::Hidden),
             QStringList{QStringLiteral("a.qrec")});
    RecordingReader reader;
    QVERIFY2(reader.open(path()), qPrintable(errorText(reader.error())));
    const Info info = reader.info();
    QCOMPARE(info.program, QStringLiteral("test 1"));
    QCOMPARE(info.deviceId, QStringLiteral("QI1"));
    QCOMPARE(info.endReason, EndReason::Stopped);
    QCOMPARE(info.rows, 1000);
    QCOMPARE(info.duration, Time(100s));
    QCOMPARE(info.start.utcOffsetSeconds, 3600);
    // 99.9 s at 1 A.
    QVERIFY(std::abs(info.of(Supply::Main).chargeMah - 99.9 / 3.6) < 1e-9);

    Time expected{0};
    QVERIFY(reader.measurements({Time(10s), Time(20s)}, [&](const recording::Measurement& measurement) {
        if (expected == Time(0))
            expected = 10s;
        const bool fits = measurement.at == expected && measurement.values.mainInputVoltage == 5;
        expected += 100ms;
        return fits;
    }));
    QCOMPARE(expected, Time(20s));
    qint64 counted = 0;
    QVERIFY(reader.buckets(Level::Second, {}, [&counted](const Bucket& bucket) {
        counted += bucket.count;
        return bucket.extent(Quantity::MainPower).mean == 5;
    }));
    QCOMPARE(counted, 1000);
    QCOMPARE(reader.marks().at(0).at, Time(100s));
    QCOMPARE(reader.multimeterRecords().at(0).text, QStringLiteral("4.7kΩ"));
    QCOMPARE(reader.screenChanges().at(0).layer0, 4);
    QVERIFY(reader.gaps().empty());
    QCOMPARE(reader.wallTime(Time(50s)).toMSecsSinceEpoch(), 1'700'000'050'000);
}

void RecorderTest::gapsHaveTheirReasons()
{
    Recorder recorder(m_bench->surroundings());
    QVERIFY(!recorder.start({path(), Time(0), {}}));
    recorder.startGap(GapReason::NotConnected);
    m_bench->pass(5s);
    feed(recorder, 1s);
    recorder.startGap(GapReason::Unplugged, QStringLiteral("HID read failed."));
    m_bench->pass(10s);
    // The wall clock is set back, which moves nothing.
    m_bench->wallUs -= 3'600'000'000;
    feed(recorder, 1s);
    m_bench->pass(3s);
    feed(recorder, 1s);
    m_bench->sleep(8h);
    feed(recorder, 1s);
    recorder.startGap(GapReason::Unplugged);
    m_bench->pass(1s);
    recorder.stopAndWait();

    RecordingReader reader;
    QVERIFY(reader.open(path()));
    QStringList gaps;
    for (const Gap& gap : reader.gaps())
        gaps << QStringLiteral("%1-%2 %3")
                    .arg(gap.from.count() / 1000)
                    .arg(gap.to.value_or(Time(0)).count() / 1000)
                    .arg(gapReasonCode(gap.reason));
    QCOMPARE(gaps, (QStringList{"0-5100 not-connected", "6000-16100 unplugged", "17000-20100 silence",
                                "21000-28821100 suspended", "28822000-28823000 unplugged"}));
    // Four times 0.9 s at 1 A: nothing is integrated across a gap.
    QVERIFY(std::abs(reader.info().of(Supply::Main).chargeMah - 3.6 / 3.6) < 1e-9);
}

void RecorderTest::anAlmostFullDiskEndsTheRecording()
{
    Recorder recorder(m_bench->surroundings());
    const QSignalSpy ended(&recorder, &Recorder::ended);
    QVERIFY(!recorder.start({path(), Time(0), {}}));
    feed(recorder, 10s);
    m_bench->freeBytes = Recorder::cLeastFreeBytes - 1;
    QTRY_COMPARE(ended.size(), 1);
    QCOMPARE(ended[0][0].value<EndReason>(), EndReason::DiskSpace);
    QVERIFY(!ended[0][1].value<Error>());
    RecordingReader reader;
    QVERIFY(reader.open(path()));
    QCOMPARE(reader.info().rows, 100);
    QCOMPARE(reader.info().endReason, EndReason::DiskSpace);
    QCOMPARE(recorder.start({m_folder->filePath(QStringLiteral("b.qrec")), Time(0), {}}).failure,
             Failure::DiskFull);
}

void RecorderTest::aDiskThatTakesNothingIsAGap()
{
    if (!test::FileSizeLimit::isSupported())
        QSKIP("this system cannot limit the size of files");
    Recorder recorder(m_bench->surroundings());
    QVERIFY(!recorder.start({path(), Time(0), {}}));
    feed(recorder, 10s);
    QTRY_COMPARE(recorder.status().totals.rows, 100);
    {
        const test::FileSizeLimit limit(QFileInfo(path() + QStringLiteral("-wal")).size());
        feed(recorder, 1s);
        QTRY_VERIFY(recorder.status().problem);
        // More than the queue holds.
        feed(recorder, 100ms * (Recorder::cQueueCapacity + 1000));
    }
    QTRY_VERIFY(!recorder.status().problem);
    feed(recorder, 10s);
    recorder.stopAndWait();
    RecordingReader reader;
    QVERIFY(reader.open(path()));
    const std::vector<Gap> gaps = reader.gaps();
    QCOMPARE(gaps.size(), size_t(1));
    QCOMPARE(gaps[0].reason, GapReason::SlowDisk);
    // What waited in the queue is there, and only the rest is missing.
    const qint64 rows = reader.info().rows;
    QVERIFY(rows >= static_cast<qint64>(Recorder::cQueueCapacity) &&
            rows < static_cast<qint64>(Recorder::cQueueCapacity) + 1210);
    QCOMPARE(rows, 100 + (gaps[0].from / Time(100ms) - 100) +
                       (reader.info().duration - *gaps[0].to) / Time(100ms) + 1);
}

void RecorderTest::theNextRecordingStartsAtOnce()
{
    Recorder recorder(m_bench->surroundings());
    QSignalSpy ended(&recorder, &Recorder::ended);
    for (int number = 0; number < 5; ++number) {
        const QString name = m_folder->filePath(QString::number(number));
        QVERIFY(!recorder.start({name, Time(0), {}}));
        feed(recorder, 1s);
        recorder.stopAndWait();
        RecordingReader reader;
        QVERIFY(reader.open(name));
        QCOMPARE(reader.info().rows, 10);
    }
    // No event of an earlier one comes late.
    QVERIFY(!recorder.start({path(), Time(0), {}}));
    QCoreApplication::processEvents();
    QVERIFY(recorder.isRecording());
    QCOMPARE(ended.size(), 5);
}

QUORVEL_TEST_MAIN(RecorderTest, QCoreApplication)
#include "tst_Recorder.moc"
