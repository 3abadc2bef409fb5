// SPDX-License-Identifier: GPL-3.0-or-later
#include "recording/RecordingSchema.h"

#include <QFile>

namespace recording::schema {

namespace {

using protocol::Measurement;

struct ValueColumn
{
    const char* name;
    float Measurement::*member;
};

constexpr ValueColumn cValueColumns[cMeasurementValues] = {
    {"main_voltage", &Measurement::mainInputVoltage},
    {"main_current", &Measurement::mainOutputCurrent},
    {"main_power", &Measurement::mainPower},
    {"main_mah", &Measurement::mainMah},
    {"main_seconds", &Measurement::mainTimeSec},
    {"type_c_voltage", &Measurement::typeCInputVoltage},
    {"type_c_current", &Measurement::typeCInputCurrent},
    {"type_c_power", &Measurement::typeCInputPower},
    {"d_plus", &Measurement::typeCDPlusVoltage},
    {"d_minus", &Measurement::typeCDMinusVoltage},
    {"cc1", &Measurement::typeCCC1Voltage},
    {"cc2", &Measurement::typeCCC2Voltage},
    {"type_c_mah", &Measurement::typeCMah},
    {"type_c_seconds", &Measurement::typeCTimeSec},
};

/// In the order of Quantity.
constexpr const char* cQuantityNames[cQuantityCount] = {
    "main_voltage",
    "main_current",
    "main_power",
    "type_c_voltage",
    "type_c_current",
    "type_c_power",
    "d_plus",
    "d_minus",
    "cc1",
    "cc2",
};

/// In the order of Supply.
constexpr const char* cSupplyNames[cSupplyCount] = {"main", "type_c"};

constexpr const char* cTables = R"(
CREATE TABLE properties (key TEXT PRIMARY KEY, value TEXT NOT NULL) WITHOUT ROWID;
CREATE TABLE gaps (id INTEGER PRIMARY KEY, t_from INTEGER NOT NULL, t_to INTEGER,
                   reason TEXT NOT NULL, detail TEXT NOT NULL);
CREATE TABLE marks (id INTEGER PRIMARY KEY, t INTEGER, wall INTEGER, text TEXT NOT NULL);
CREATE INDEX marks_without_time ON marks(id) WHERE t IS NULL;
CREATE TABLE multimeter (id INTEGER PRIMARY KEY, t INTEGER NOT NULL, mode INTEGER NOT NULL,
                         text TEXT NOT NULL);
CREATE TABLE screens (id INTEGER PRIMARY KEY, t INTEGER NOT NULL, layer0 INTEGER NOT NULL,
                      layer1 INTEGER NOT NULL);
CREATE TABLE clock (t INTEGER PRIMARY KEY, wall INTEGER NOT NULL, utc_offset INTEGER NOT NULL);
)";

QString placeholders(int count)
{
    QStringList marks;
    for (int i = 0; i < count; ++i)
        marks << QStringLiteral("?");
    return marks.join(QLatin1Char(','));
}

bool createTable(Database& database, const QString& name, const QString& firstColumns,
                 const QStringList& columns)
{
    const QString sql = QStringLiteral("CREATE TABLE %1 (%2, %3 REAL)")
                            .arg(name, firstColumns, columns.join(QStringLiteral(" REAL, ")));
    return database.execute(sql.toUtf8().constData());
}

} // namespace

const std::array<float Measurement::*, cMeasurementValues> cMeasurementMembers = [] {
    std::array<float Measurement::*, cMeasurementValues> members{};
    for (size_t i = 0; i < members.size(); ++i)
        members[i] = cValueColumns[i].member;
    return members;
}();

const char* const cProgram = "program";
const char* const cDeviceId = "device_id";
const char* const cDeviceVersion = "device_version";
const char* const cEndReason = "end_reason";
const char* const cInterval = "interval";
const char* const cEnd = "end";

QStringList measurementColumns()
{
    QStringList names;
    for (const ValueColumn& column : cValueColumns)
        names << QLatin1String(column.name);
    return names;
}

QString bucketTable(Level level)
{
    return level == Level::Second ? QStringLiteral("seconds") : QStringLiteral("minutes");
}

QStringList bucketColumns()
{
    QStringList names;
    for (const char* const quantity : cQuantityNames)
        for (const char* const kind : {"_min", "_mean", "_max"})
            names << QLatin1String(quantity) + QLatin1String(kind);
    for (const char* const supply : cSupplyNames)
        for (const char* const kind : {"_charge_mah", "_energy_wh", "_counter_mah"})
            names << QLatin1String(supply) + QLatin1String(kind);
    return names;
}

QString insertBucketSql(Level level)
{
    return QStringLiteral("INSERT OR REPLACE INTO %1 VALUES (%2)")
        .arg(bucketTable(level), placeholders(2 + bucketColumns().size()));
}

void bindBucket(Statement& statement, const Bucket& bucket)
{
    int parameter = 0;
    statement.bind(parameter++, static_cast<qint64>(bucket.start.count()));
    statement.bind(parameter++, bucket.count);
    for (const Extent& extent : bucket.extents)
        for (const double value : {extent.minimum, extent.mean, extent.maximum})
            statement.bind(parameter++, value);
    for (const Delivered& delivered : bucket.delivered)
        for (const double value : {delivered.chargeMah, delivered.energyWh, delivered.counterMah})
            statement.bind(parameter++, value);
}

Bucket bucketOf(const Statement& statement)
{
    int column = 0;
    Bucket bucket;
    bucket.start = Time(statement.integer(column++));
    bucket.count = statement.integer(column++);
    for (Extent& extent : bucket.extents)
        for (double* const value : {&extent.minimum, &extent.mean, &extent.maximum})
            *value = statement.real(column++);
    for (Delivered& delivered : bucket.delivered)
        for (double* const value : {&delivered.chargeMah, &delivered.energyWh, &delivered.counterMah})
            *value = statement.real(column++);
    return bucket;
}

QString insertMeasurementSql()
{
    return QStringLiteral("INSERT INTO measurements VALUES (%1)").arg(placeholders(1 + cMeasurementValues));
}

void bindMeasurement(Statement& statement, const recording::Measurement& measurement)
{
    int parameter = 0;
    statement.bind(parameter++, static_cast<qint64>(measurement.at.count()));
    for (const ValueColumn& column : cValueColumns)
        statement.bind(parameter++, static_cast<double>(measurement.values.*column.member));
}

recording::Measurement measurementOf(const Statement& statement)
{
    int index = 0;
    recording::Measurement measurement;
    measurement.at = Time(statement.integer(index++));
    for (const ValueColumn& column : cValueColumns)
        measurement.values.*column.member = static_cast<float>(statement.real(index++));
    return measurement;
}

bool create(Database& database)
{
    const QByteArray header = QStringLiteral("PRAGMA application_id=%1; PRAGMA user_version=%2;")
                                  .arg(cApplicationId)
                                  .arg(cVersion)
                                  .toLatin1();
    const QString key = QStringLiteral("t INTEGER PRIMARY KEY");
    return database.execute("BEGIN IMMEDIATE") && database.execute(header.constData()) &&
           database.execute(cTables) &&
           createTable(database, QStringLiteral("measurements"), key, measurementColumns()) &&
           createTable(database, bucketTable(Level::Second), key + QStringLiteral(", n INTEGER NOT NULL"),
                       bucketColumns()) &&
           createTable(database, bucketTable(Level::Minute), key + QStringLiteral(", n INTEGER NOT NULL"),
                       bucketColumns()) &&
           database.execute("COMMIT");
}

Error check(Database& database)
{
    const qint64 application = database.integer("PRAGMA application_id", -1);
    if (application == -1)
        return database.lastFailure();
    if (application != cApplicationId)
        return {Failure::NotARecording, database.path(), {}};
    const qint64 version = database.integer("PRAGMA user_version");
    if (version > cVersion)
        return {Failure::NewerSchema, database.path(), QStringLiteral("schema %1").arg(version)};
    if (version < 1)
        return {Failure::NotARecording, database.path(), {}};
    // SQLite notices a file that was cut short only when it reads a missing page.
    const qint64 size = database.integer("PRAGMA page_count") * database.integer("PRAGMA page_size");
    const bool hasLog = QFile(database.path() + QStringLiteral("-wal")).size() > 0;
    if (!hasLog && QFile(database.path()).size() < size)
        return {Failure::Damaged, database.path(), {}};
    return {};
}

QString property(Database& database, const char* key)
{
    Statement statement = database.prepare(QStringLiteral("SELECT value FROM properties WHERE key = ?"));
    if (!statement.isValid())
        return {};
    statement.bind(0, QString::fromLatin1(key));
    return statement.step() ? statement.text(0) : QString();
}

bool setProperty(Database& database, const char* key, const QString& value)
{
    Statement statement = database.prepare(QStringLiteral("INSERT OR REPLACE INTO properties VALUES (?, ?)"));
    if (!statement.isValid())
        return false;
    statement.bind(0, QString::fromLatin1(key));
    statement.bind(1, value);
    return statement.run();
}

} // namespace recording::schema
