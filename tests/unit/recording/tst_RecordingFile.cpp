// SPDX-License-Identifier: GPL-3.0-or-later
#include "recording/RecordingReader.h"
#include "recording/RecordingRepair.h"
#include "recording/RecordingSchema.h"
#include "recording/RecordingWriter.h"
#include "recording/RunningRecordings.h"
#include "tests/support/FileSizeLimit.h"
#include "tests/support/TestCase.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <functional>
#include <limits>

using namespace recording;
using namespace std::chrono_literals;
using Spoil = std::function<void(const QString& path)>;
Q_DECLARE_METATYPE(Spoil)
Q_DECLARE_METATYPE(recording::Failure)

namespace {

constexpr qint64 cWallStart = 1'700'000'000'000'000;

recording::Measurement rowAt(Time at, float amperes = 1)
{
    recording::Measurement row{at, {}};
    row.values.mainOutputCurrent = amperes;
    row.values.mainMah = static_cast<float>(at / 1ms);
    return row;
}

std::vector<Event> rows(Time from, Time to, Time step)
{
    std::vector<Event> events;
    for (Time at = from; at < to; at += step)
        events.emplace_back(rowAt(at));
    return events;
}

void execute(const QString& path, const char* sql)
{
    Database database;
    Error error;
    QVERIFY(database.open(path, Database::Access::ReadWrite, error));
    QVERIFY(database.execute(sql));
}

} // namespace

class RecordingFileTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void whatIsNoRecordingIsRefused_data();
    void whatIsNoRecordingIsRefused();
    void nothingIsOverwritten();
    void whereNoFileCanBeMade();
    void missingValuesStayMissing();
    void thePyramidIsThatOfTheRows();
    void thinningKeepsChargeAndExtremes();
    void anInterruptedRecordingIsFinished();
    void aFailedTransactionChangesNothing();
    void aForeignMarkGetsItsTime();
    void mergedRecordingsKeepTheirSums();
    void wallTimeFollowsTheClockPoints();
    void theDocumentedQueriesWork();

private:
    QString path(const char* name = "a.qrec") const { return m_folder->filePath(QLatin1String(name)); }
    void write(const QString& path, const std::vector<Event>& events, qint64 wallUs = cWallStart);

    std::unique_ptr<QTemporaryDir> m_folder;
};

void RecordingFileTest::init()
{
    TestCase::init();
    m_folder = std::make_unique<QTemporaryDir>();
}

void RecordingFileTest::cleanup()
{
    m_folder.reset();
    TestCase::cleanup();
}

/// Makes a finished recording.
void RecordingFileTest::write(const QString& path, const std::vector<Event>& events, qint64 wallUs)
{
    RecordingWriter writer;
    Error error;
    QVERIFY(writer.create(path, QStringLiteral("test"), Time(0), error));
    QVERIFY(writer.append({ClockPoint{Time(0), wallUs, 0}}, {}, error));
    QVERIFY(writer.append(events, {}, error));
    QVERIFY(writer.finish(EndReason::Stopped, Time(0), error));
}

void RecordingFileTest::whatIsNoRecordingIsRefused_data()
{
    const test::Table<Spoil, Failure> table("spoil", "failure");
    table.row(
        "missing", [](const QString& path) { QFile::remove(path); }, Failure::NotFound);
    table.row(
        "empty", [](const QString& path) { QFile::resize(path, 0); }, Failure::NotARecording);
    table.row(
        "a folder",
        [](const QString& path) {
            QFile::remove(path);
            QDir().mkpath(path);
        },
        Failure::NotARecording);
    table.row(
        "text", [](const QString& path) { test::writeFile(path, QByteArray(5000, 'x')); },
        Failure::NotARecording);
    table.row(
        "cut short", [](const QString& path) { QFile::resize(path, 40000); }, Failure::Damaged);
    table.row(
        "another database", [](const QString& path) { execute(path, "PRAGMA application_id=7"); },
        Failure::NotARecording);
    table.row(
        "newer", [](const QString& path) { execute(path, "PRAGMA user_version=2"); }, Failure::NewerSchema);
}

void RecordingFileTest::whatIsNoRecordingIsRefused()
{
    QFETCH(const Spoil, spoil);
    QFETCH(const Failure, failure);
    write(path(), rows(0s, 100s, 50ms));
    QVERIFY(QFileInfo(path()).size() > 50000);
    spoil(path());
    const QByteArray before = test::contentOf(path());
    RecordingReader reader;
    QVERIFY(!reader.open(path()));
    QCOMPARE(reader.error().failure, failure);
    QVERIFY(errorText(reader.error()).contains(QDir::toNativeSeparators(path())));
    QCOMPARE(repair::recover(path()).failure, failure);
    QCOMPARE(repair::addMark(path(), QStringLiteral("x")).failure, failure);
    QCOMPARE(test::contentOf(path()), before);
}

void RecordingFileTest::nothingIsOverwritten()
{
    QVERIFY(test::writeFile(path(), "mine"));
    RecordingWriter writer;
    Error error;
    QVERIFY(!writer.create(path(), {}, Time(0), error));
    QCOMPARE(error.failure, Failure::Exists);
    write(path("b.qrec"), rows(0s, 1s, 100ms));
    QCOMPARE(repair::merge({path("b.qrec"), path("b.qrec")}, path(), {}).failure, Failure::Exists);
    QCOMPARE(test::contentOf(path()), QByteArray("mine"));
}

void RecordingFileTest::whereNoFileCanBeMade()
{
    RecordingWriter writer;
    Error error;
    QVERIFY(!writer.create(path("none/a.qrec"), {}, Time(0), error));
    QCOMPARE(error.failure, Failure::NotFound);
    if (!test::FileSizeLimit::isSupported())
        return;
    {
        const test::FileSizeLimit limit(8192);
        QVERIFY(!writer.create(path(), {}, Time(0), error));
    }
    // Nothing is left of the attempt.
    QVERIFY(QDir(m_folder->path()).entryList(QDir::Files | QDir::Hidden).isEmpty());
    QVERIFY(writer.create(path(), {}, Time(0), error));
}

void RecordingFileTest::missingValuesStayMissing()
{
    recording::Measurement row = rowAt(1s);
    row.values.mainPower = std::numeric_limits<float>::quiet_NaN();
    row.values.typeCCC1Voltage = std::numeric_limits<float>::infinity();
    row.values.typeCTimeSec = 0.1F;
    write(path(), {row});
    RecordingReader reader;
    QVERIFY(reader.open(path()));
    int count = 0;
    QVERIFY(reader.measurements({}, [&count](const recording::Measurement& read) {
        count += qIsNaN(read.values.mainPower) && qIsInf(read.values.typeCCC1Voltage) &&
                 read.values.typeCTimeSec == 0.1F && read.at == Time(1s);
        return true;
    }));
    QCOMPARE(count, 1);
    QVERIFY(reader.buckets(Level::Second, {}, [](const Bucket& bucket) {
        return qIsNaN(bucket.extent(Quantity::MainPower).mean) &&
               bucket.extent(Quantity::MainCurrent).mean == 1;
    }));
}

void RecordingFileTest::thePyramidIsThatOfTheRows()
{
    // In transactions that end in the middle of seconds and minutes.
    RecordingWriter writer;
    Error error;
    QVERIFY(writer.create(path(), {}, Time(0), error));
    for (int i = 0; i < 200; ++i) {
        std::vector<Event> part;
        part.reserve(7);
        for (int j = 0; j < 7; ++j)
            part.emplace_back(rowAt(Time(100ms) * (7 * i + j), static_cast<float>((7 * i + j) % 10)));
        QVERIFY(writer.append(part, {}, error));
    }
    QVERIFY(writer.finish(EndReason::Stopped, Time(0), error));
    Database database;
    QVERIFY(database.open(path(), Database::Access::Read, error));
    for (const QString& level : {QStringLiteral("seconds"), QStringLiteral("minutes")}) {
        const QString length =
            level == QLatin1String("seconds") ? QStringLiteral("1000000") : QStringLiteral("60000000");
        const QString sql =
            QStringLiteral(
                "SELECT count(*) FROM (SELECT t - t % %2 AS b, count(*) AS n, min(main_current) AS low, "
                "max(main_current) AS high, avg(main_current) AS mean FROM measurements GROUP BY b) AS r "
                "JOIN %1 AS p ON p.t = r.b AND p.n = r.n AND p.main_current_min = low AND "
                "p.main_current_max = high AND abs(p.main_current_mean - mean) < 1e-9")
                .arg(level, length);
        const qint64 buckets = level == QLatin1String("seconds") ? 140 : 3;
        QCOMPARE(database.integer(sql.toUtf8().constData()), buckets);
        QCOMPARE(database.integer(QStringLiteral("SELECT count(*) FROM %1").arg(level).toUtf8().constData()),
                 buckets);
    }
}

void RecordingFileTest::thinningKeepsChargeAndExtremes()
{
    RecordingWriter writer;
    Error error;
    QVERIFY(writer.create(path(), {}, Time(10s), error));
    std::vector<Event> events = rows(0s, 60s, 10ms);
    std::get<recording::Measurement>(events[1234]).values.mainOutputCurrent = 9;
    QVERIFY(writer.append(events, {}, error));
    QVERIFY(writer.finish(EndReason::Stopped, Time(0), error));
    RecordingReader reader;
    QVERIFY(reader.open(path()));
    QCOMPARE(reader.info().rows, 6);
    const double expected = (59.99 + 8 * 0.01) / 3.6;
    QVERIFY(std::abs(reader.info().of(Supply::Main).chargeMah - expected) < 1e-6);
    QVERIFY(reader.buckets(Level::Minute, {}, [](const Bucket& bucket) {
        return bucket.extent(Quantity::MainCurrent).maximum == 9 && bucket.count == 6000;
    }));
}

void RecordingFileTest::anInterruptedRecordingIsFinished()
{
    {
        RecordingWriter writer;
        Error error;
        QVERIFY(writer.create(path(), {}, Time(0), error));
        QVERIFY(running::announce(path()));
        QVERIFY(writer.append(rows(0s, 10s, 100ms), {}, error));
        QVERIFY(writer.append({GapBegin{10s, GapReason::Unplugged, {}}}, {}, error));
        QVERIFY(running::isLocked(path()));
        QCOMPARE(running::current(), QStringList{path()});
        QCOMPARE(repair::recover(path()).failure, Failure::Busy);
    }
    QCOMPARE(running::interrupted(), QStringList{path()});
    RecordingReader reader;
    QVERIFY(reader.open(path()));
    QCOMPARE(reader.info().endReason, EndReason::None);
    QCOMPARE(reader.info().rows, 100);
    reader.close();
    QVERIFY(!repair::recover(path()));
    QVERIFY(running::interrupted().isEmpty());
    QVERIFY(reader.open(path()));
    QCOMPARE(reader.info().endReason, EndReason::Interrupted);
    QVERIFY(reader.gaps().at(0).to.has_value());
    reader.close();
    // Once more changes nothing.
    const QByteArray before = test::contentOf(path());
    QVERIFY(!repair::recover(path()));
    QCOMPARE(test::contentOf(path()), before);
}

void RecordingFileTest::aFailedTransactionChangesNothing()
{
    if (!test::FileSizeLimit::isSupported())
        QSKIP("this system cannot limit the size of files");
    RecordingWriter writer;
    Error error;
    QVERIFY(writer.create(path(), {}, Time(0), error));
    QVERIFY(writer.append(rows(0s, 10s, 10ms), {}, error));
    const std::vector<Event> more = rows(10s, 100s, 1ms);
    {
        const test::FileSizeLimit limit(2 * 1024 * 1024);
        QVERIFY(!writer.append(more, {}, error));
        QVERIFY(error.failure == Failure::DiskFull || error.failure == Failure::InputOutput);
        QCOMPARE(writer.totals().rows, 1000);
        QVERIFY(!writer.append(more, {}, error));
    }
    QVERIFY(writer.append(more, {}, error));
    QVERIFY(writer.finish(EndReason::Stopped, Time(0), error));
    RecordingReader reader;
    QVERIFY(reader.open(path()));
    QCOMPARE(reader.info().rows, 91000);
    QVERIFY(std::abs(reader.info().of(Supply::Main).chargeMah - 99.999 / 3.6) < 1e-6);
}

void RecordingFileTest::aForeignMarkGetsItsTime()
{
    RecordingWriter writer;
    Error error;
    QVERIFY(writer.create(path(), {}, Time(0), error));
    QVERIFY(!repair::addMark(path(), QStringLiteral("from elsewhere")));
    const qint64 wallNow = QDateTime::currentMSecsSinceEpoch() * 1000;
    QVERIFY(writer.append(rows(0s, 10s, 1s), {Time(1h), wallNow, 0}, error));
    QVERIFY(!repair::addMark(path(), QStringLiteral("too late for the recorder")));
    writer.abandon();
    QVERIFY(!repair::recover(path()));
    RecordingReader reader;
    QVERIFY(reader.open(path()));
    const std::vector<Mark> marks = reader.marks();
    QCOMPARE(marks.size(), size_t(2));
    QCOMPARE(marks[0].text, QStringLiteral("too late for the recorder"));
    QCOMPARE(marks[0].at, Time(9s));
    QVERIFY(marks[1].at <= Time(1h) && marks[1].at > Time(59min));
}

void RecordingFileTest::mergedRecordingsKeepTheirSums()
{
    std::vector<Event> gapped = rows(0s, 10s, 100ms);
    gapped.emplace_back(GapBegin{10s, GapReason::Silence, {}});
    for (const Event& event : rows(20s, 30s, 100ms))
        gapped.push_back(event);
    gapped.emplace_back(Mark{30s, QStringLiteral("late")});
    write(path("b.qrec"), gapped, cWallStart + 100'000'000);
    write(path("a.qrec"), rows(0s, 10s, 100ms));
    QVERIFY(!repair::merge({path("b.qrec"), path("a.qrec")}, path("m.qrec"), QStringLiteral("test")));
    RecordingReader reader;
    QVERIFY(reader.open(path("m.qrec")));
    QCOMPARE(reader.info().rows, 300);
    QCOMPARE(reader.info().endReason, EndReason::Merged);
    QVERIFY(std::abs(reader.info().of(Supply::Main).chargeMah - 3 * 9.9 / 3.6) < 1e-6);
    QStringList gaps;
    for (const Gap& gap : reader.gaps())
        gaps << QStringLiteral("%1-%2 %3")
                    .arg(gap.from.count() / 1000)
                    .arg(gap.to->count() / 1000)
                    .arg(gapReasonCode(gap.reason));
    QCOMPARE(gaps, (QStringList{"9900-100000 merged", "109900-120000 silence"}));
    QCOMPARE(reader.marks().at(0).at, Time(130s));
}

void RecordingFileTest::wallTimeFollowsTheClockPoints()
{
    // After a minute the wall clock is set back by an hour, and summer time ends.
    write(path(), {rowAt(0s), ClockPoint{60s, cWallStart + 60'000'000 - 3'600'000'000, -3600}, rowAt(120s)});
    RecordingReader reader;
    QVERIFY(reader.open(path()));
    QCOMPARE(reader.wallTime(30s).toMSecsSinceEpoch(), cWallStart / 1000 + 30'000);
    QCOMPARE(reader.wallTime(90s).toMSecsSinceEpoch(), cWallStart / 1000 + 90'000 - 3'600'000);
    QCOMPARE(reader.wallTime(90s).offsetFromUtc(), -3600);
}

/// The three queries of docs/recordings.md, as they are written there.
void RecordingFileTest::theDocumentedQueriesWork()
{
    std::vector<Event> events = rows(0s, 100s, 100ms);
    std::get<recording::Measurement>(events[505]).values.mainPower = 42;
    events.emplace_back(GapBegin{100s, GapReason::Unplugged, {}});
    events.emplace_back(rowAt(110s));
    write(path(), events);
    const QString text = QString::fromUtf8(test::contentOf(QStringLiteral(QUORVEL_RECORDINGS_DOCUMENT)));
    QStringList queries = text.split(QStringLiteral("```sql\n")).mid(1);
    for (QString& query : queries)
        query = query.section(QStringLiteral("```"), 0, 0);
    QCOMPARE(queries.size(), 3);
    Database database;
    Error error;
    QVERIFY(database.open(path(), Database::Access::Read, error));
    QStringList results;
    for (const QString& query : qAsConst(queries)) {
        Statement statement = database.prepare(query);
        QVERIFY2(statement.isValid() && statement.step(), qPrintable(database.lastFailure().detail));
        results << statement.text(0) + QLatin1Char(' ') + statement.text(1);
    }
    // 99.9 s at 1 A.
    QVERIFY2(results[0].startsWith(QLatin1String("27.75")), qPrintable(results[0]));
    QCOMPARE(results.mid(1), (QStringList{"42.0 2023-11-14 22:14:10", "unplugged 1"}));
}

QUORVEL_TEST_MAIN(RecordingFileTest, QCoreApplication)
#include "tst_RecordingFile.moc"
