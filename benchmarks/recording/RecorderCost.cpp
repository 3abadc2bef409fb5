// SPDX-License-Identifier: GPL-3.0-or-later
// What writing and reading a recording costs: time against bare SQLite with prepared statements, bytes
// against CSV, and the growth of memory.
#include "benchmarks/services/Measure.h"
#include "recording/MeasurementText.h"
#include "recording/RecordingReader.h"
#include "recording/RecordingWriter.h"

#include <QFileInfo>
#include <QTemporaryDir>

#include <sqlite3.h>

#include <cmath>
#include <random>

using namespace recording;
using namespace std::chrono_literals;

namespace {

constexpr int cRuns = 5;
constexpr int cRows = 100'000;
/// The rows of one transaction at 1,000 measurements a second.
constexpr int cRowsPerTransaction = 900;
constexpr int cValues = 14;
constexpr int cManyRows = 1'000'000;
constexpr double cHighestWriteRatio = 1.3;
constexpr double cHighestSizeRatio = 1.3;
constexpr int cHighestGrowthKb = 1024;

/// A supply with noise, as an instrument sends it: every digit of a float is used.
recording::Measurement makeRow(int index)
{
    static std::mt19937 random(1);
    static std::normal_distribution<float> noise(0, 0.001F);
    recording::Measurement row{Time(1000LL * index), {}};
    row.values.mainInputVoltage = 5.1F + noise(random);
    row.values.mainOutputCurrent = 1.2F + 0.5F * std::sin(static_cast<float>(index) / 5000) + noise(random);
    row.values.mainPower = row.values.mainInputVoltage * row.values.mainOutputCurrent;
    row.values.mainMah = static_cast<float>(index) / 3000;
    row.values.mainTimeSec = static_cast<float>(index) / 1000;
    row.values.typeCInputVoltage = 9.0F + noise(random);
    row.values.typeCInputCurrent = 1.5F + noise(random);
    row.values.typeCInputPower = row.values.typeCInputVoltage * row.values.typeCInputCurrent;
    row.values.typeCDPlusVoltage = 0.6F + noise(random);
    row.values.typeCDMinusVoltage = 0.6F + noise(random);
    row.values.typeCCC1Voltage = 1.68F + noise(random);
    row.values.typeCMah = row.values.mainMah;
    row.values.typeCTimeSec = row.values.mainTimeSec;
    return row;
}

/// The rows are made once, so that making them is in no time.
recording::Measurement rowAt(int index)
{
    constexpr int cDifferentRows = 10'000;
    static const std::vector<recording::Measurement> rows = [] {
        std::vector<recording::Measurement> made;
        for (int row = 0; row < cDifferentRows; ++row)
            made.push_back(makeRow(row));
        return made;
    }();
    recording::Measurement row = rows[static_cast<size_t>(index % cDifferentRows)];
    row.at = Time(1000LL * index);
    return row;
}

void writeOurs(const QString& path, int rows)
{
    RecordingWriter writer;
    Error error;
    if (!writer.create(path, {}, Time(0), error))
        std::abort();
    std::vector<Event> batch;
    for (int index = 0; index < rows;) {
        batch.clear();
        for (int i = 0; i < cRowsPerTransaction && index < rows; ++i)
            batch.emplace_back(rowAt(index++));
        if (!writer.append(batch, {}, error))
            std::abort();
    }
    if (!writer.finish(EndReason::Stopped, Time(0), error))
        std::abort();
}

void execute(sqlite3* database, const char* sql)
{
    if (sqlite3_exec(database, sql, nullptr, nullptr, nullptr) != SQLITE_OK)
        std::abort();
}

void writeBare(const QString& path, int rows)
{
    sqlite3* database = nullptr;
    sqlite3_stmt* insert = nullptr;
    sqlite3_open(QFile::encodeName(path).constData(), &database);
    execute(database,
            "PRAGMA journal_mode=WAL; PRAGMA synchronous=NORMAL;"
            "CREATE TABLE r (t INTEGER PRIMARY KEY, a REAL, b REAL, c REAL, d REAL, e REAL, f REAL, g REAL,"
            "h REAL, i REAL, j REAL, k REAL, l REAL, m REAL, n REAL)");
    sqlite3_prepare_v2(database, "INSERT INTO r VALUES (?,?,?,?,?,?,?,?,?,?,?,?,?,?,?)", -1, &insert,
                       nullptr);
    for (int index = 0; index < rows;) {
        execute(database, "BEGIN");
        for (int i = 0; i < cRowsPerTransaction && index < rows; ++i) {
            const recording::Measurement row = rowAt(index++);
            sqlite3_bind_int64(insert, 1, row.at.count());
            // The values lie one after the other.
            const float* const values = &row.values.mainInputVoltage;
            for (int value = 0; value < cValues; ++value)
                sqlite3_bind_double(insert, value + 2, static_cast<double>(values[value]));
            if (sqlite3_step(insert) != SQLITE_DONE)
                std::abort();
            sqlite3_reset(insert);
        }
        execute(database, "COMMIT");
    }
    sqlite3_finalize(insert);
    execute(database, "PRAGMA journal_mode=DELETE");
    sqlite3_close(database);
}

bool reportWriting(const QTemporaryDir& folder)
{
    int number = 0;
    const auto nextPath = [&] { return folder.filePath(QString::number(number++)); };
    const Comparison measured = compare(
        cRuns, [&] { writeOurs(nextPath(), cRows); }, [&] { writeBare(nextPath(), cRows); });
    return report("100,000 measurements written", "bare SQLite", measured, cHighestWriteRatio);
}

bool reportSize(const QTemporaryDir& folder)
{
    const QString path = folder.filePath(QStringLiteral("size"));
    writeOurs(path, cRows);
    RecordingReader reader;
    if (!reader.open(path))
        std::abort();
    const MeasurementText text(MeasurementText::Format::Csv, {});
    qint64 csvBytes = text.header().size();
    QByteArray line;
    reader.measurements({}, [&](const recording::Measurement& measurement) {
        line.resize(0);
        text.append(line, measurement);
        csvBytes += line.size();
        return true;
    });
    const double ours = double(QFileInfo(path).size()) / cRows;
    const double csv = double(csvBytes) / cRows;
    std::printf("%-44s %9.1f bytes   CSV %9.1f bytes   ratio %5.2fx (aim at most %.1fx)\n",
                "a measurement on disk", ours, csv, ours / csv, cHighestSizeRatio);
    return ours / csv <= cHighestSizeRatio;
}

bool reportMemory(const QTemporaryDir& folder)
{
    writeOurs(folder.filePath(QStringLiteral("few")), cRows / 10);
    resetPeakMemory();
    writeOurs(folder.filePath(QStringLiteral("some")), cRows / 10);
    const int few = peakMemoryKb();
    resetPeakMemory();
    writeOurs(folder.filePath(QStringLiteral("many")), cManyRows);
    const int many = peakMemoryKb();
    std::printf("%-44s %9d KiB   after 10,000 %9d KiB   growth %d KiB (aim at most %d KiB)\n",
                "memory of writing 1,000,000 measurements", many, few, many - few, cHighestGrowthKb);
    return many - few <= cHighestGrowthKb;
}

} // namespace

int main()
{
    const QTemporaryDir folder;
    const bool writing = reportWriting(folder);
    const bool size = reportSize(folder);
    const bool memory = reportMemory(folder);
    return writing && size && memory ? 0 : 2;
}
