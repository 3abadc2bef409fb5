// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "recording/Database.h"
#include "recording/RecordingData.h"

#include <QStringList>

/// The tables of a recording; docs/recordings.md describes them for users.
namespace recording::schema {

/// Stands in SQLite's application_id: "QREC".
constexpr int cApplicationId = 0x51524543;
/// Stands in SQLite's user_version. A file with a greater one is refused.
constexpr int cVersion = 1;

/// The columns of the table "measurements" after t, in the order of cMeasurementMembers.
QStringList measurementColumns();
constexpr int cMeasurementValues = 14;
extern const std::array<float protocol::Measurement::*, cMeasurementValues> cMeasurementMembers;

/// Returns the table of \a level, "seconds" or "minutes".
QString bucketTable(Level level);
/// The columns of that table after t and n, in the order of bindBucket().
QStringList bucketColumns();
/// "INSERT OR REPLACE INTO seconds …" with a parameter for each column.
QString insertBucketSql(Level level);
void bindBucket(Statement& statement, const Bucket& bucket);
/// Reads a bucket from a row of t, n and bucketColumns().
Bucket bucketOf(const Statement& statement);

/// "INSERT INTO measurements VALUES (…)".
QString insertMeasurementSql();
void bindMeasurement(Statement& statement, const Measurement& measurement);
/// Reads a measurement from a row of t and measurementColumns().
Measurement measurementOf(const Statement& statement);

/// Creates the tables in an empty file. Returns false on failure.
bool create(Database& database);
/// Returns the failure of a file that is no recording of a version that this program reads; none otherwise.
Error check(Database& database);

/// Reads and writes the table "properties": what concerns the recording as a whole. Names of the keys:
extern const char* const cProgram;       ///< name and version of the program that recorded
extern const char* const cDeviceId;      ///< as the instrument reported it last
extern const char* const cDeviceVersion; ///< as the instrument reported it last
extern const char* const cEndReason;     ///< endReasonCode()
extern const char* const cInterval;      ///< microseconds between stored measurements; 0 for all
extern const char* const cEnd;           ///< microseconds, the time at which the recording was finished
QString property(Database& database, const char* key);
bool setProperty(Database& database, const char* key, const QString& value);

} // namespace recording::schema
