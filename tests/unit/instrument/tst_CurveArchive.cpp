// SPDX-License-Identifier: GPL-3.0-or-later
#include "instrument/CurveArchive.h"
#include "tests/support/FileSizeLimit.h"
#include "tests/support/TestCase.h"

#include <QtTest>

#include <limits>

class CurveArchiveTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void namesOfAnArchive()
    {
        const QString name = CurveArchive::fileName(QDateTime(QDate(2026, 3, 1), QTime(14, 5, 9)));
        QCOMPARE(name, QStringLiteral("curve_20260301_140509.json"));
        QCOMPARE(CurveArchive::csvPath(name), QStringLiteral("curve_20260301_140509.csv"));
    }

    void textsOfAnArchive()
    {
        CurveArchive archive;
        archive.createdAt = QStringLiteral("2026-03-01T14:05:09");
        archive.sampleIntervalSec = 0.5;
        archive.voltageSamples = {1.5, 2};
        archive.currentSamples = {12.34567, 1e-7, 0.75};
        QCOMPARE(archive.toCsv(),
                 QByteArray("index,time_sec,voltage,current\n0,0,1.5,12.3457\n1,0.5,2,1e-07\n2,1,0,0.75\n"));
        QCOMPARE(
            archive.toJson(),
            QByteArray("{\n    \"created_at\": \"2026-03-01T14:05:09\",\n    \"current_samples\": [\n"
                       "        12.34567,\n        1e-07,\n        0.75\n    ],\n    \"device_id\": \"\",\n"
                       "    \"device_version\": \"\",\n"
                       "    \"sample_interval_sec\": 0.5,\n    \"voltage_samples\": [\n"
                       "        1.5,\n        2\n    ]\n}\n"));
        QCOMPARE(CurveArchive().toCsv(), QByteArray("index,time_sec,voltage,current\n"));
    }

    void whatIsNoNumberBecomesZero()
    {
        CurveArchive archive;
        archive.voltageSamples = {"2.5",
                                  "NaN",
                                  QVariant(),
                                  QVariantList{1},
                                  std::numeric_limits<double>::quiet_NaN(),
                                  std::numeric_limits<double>::infinity(),
                                  3};
        const std::optional<CurveArchive> read = CurveArchive::fromJson(archive.toJson());
        QVERIFY(read.has_value());
        QCOMPARE(read->voltageSamples, (QVariantList{2.5, 0.0, 0.0, 0.0, 0.0, 0.0, 3.0}));
        QCOMPARE(archive.toCsv().split('\n').at(5), QByteArray("4,0,0,0"));
    }

    void savedArchiveComesBack()
    {
        QTemporaryDir folder;
        const QString path = folder.filePath("curve_20260301_140509.json");
        CurveArchive written;
        written.createdAt = QStringLiteral("2026-03-01T14:05:09");
        written.deviceId = QStringLiteral("仪表 \"7\"\n");
        written.deviceVersion = QStringLiteral("V1.2");
        written.sampleIntervalSec = 0.08;
        written.voltageSamples = {0.1, -1e-7, 1234567.8, 5e-324, 9007199254740993.0};
        written.currentSamples = {0.1, 0.2};
        QVERIFY(written.save(path));
        QVERIFY(QFile::exists(CurveArchive::csvPath(path)));

        CurveArchive read;
        QCOMPARE(CurveArchive::load(path, read), CurveArchive::LoadStatus::Loaded);
        QCOMPARE(read.toMap(path), written.toMap(path));
    }

    void hostileTexts_data()
    {
        const test::Table<QByteArray, bool, QVariantList> table("text", "valid", "voltages");

        table.row("no member", "{}", true, {});
        table.row("wrong types",
                  "{\"voltage_samples\": \"1,2\", \"current_samples\": {\"a\": 1},"
                  " \"created_at\": 5, \"device_id\": [], \"device_version\": null,"
                  " \"sample_interval_sec\": \"0.08\"}",
                  true, {});
        table.row("wrong elements",
                  "{\"voltage_samples\": [1, \"2\", null, true, [3], {\"v\": 4}, \"NaN\", 5.5]}", true,
                  QVariantList{1.0, 0.0, 0.0, 0.0, 0.0, 0.0, 0.0, 5.5});
        table.row("an array", "[1, 2]", false, {});
        table.row("NaN", "{\"voltage_samples\": [NaN]}", false, {});
        table.row("truncated", "{\"voltage_samples\": [1, 2", false, {});
        table.row("table", "index,time_sec,voltage,current\n0,0,1,2\n", false, {});
        table.row("empty", {}, false, {});
        table.row("bytes", QByteArray(10000, '\0'), false, {});
        table.row("deep", QByteArray("{\"voltage_samples\": ") + QByteArray(1000000, '['), false, {});
        table.row("many samples", "{\"voltage_samples\": [1" + QByteArray(",1").repeated(5000000) + "]}",
                  false, {});
        table.row("many members", "{\"a\":1" + QByteArray(",\"a\":1").repeated(500000) + '}', false, {});
        table.row("long number", "{\"voltage_samples\": [0." + QByteArray(1000000, '1') + "]}", true,
                  QVariantList{1.0 / 9});
    }

    void hostileTexts()
    {
        QFETCH(QByteArray, text);
        QFETCH(bool, valid);
        const std::optional<CurveArchive> archive = CurveArchive::fromJson(text);
        QCOMPARE(archive.has_value(), valid);
        if (!valid)
            return;
        const QVariantMap map = archive->toMap("path");
        QTEST(map.value("voltageSamples").toList(), "voltages");
        QCOMPARE(map.value("currentSamples"), QVariant(QVariantList()));
        QCOMPARE(map.value("sampleIntervalSec"), QVariant(0.0));
        QCOMPARE(map.value("createdAt"), QVariant(QString()));
        QCOMPARE(map.value("filePath").toString(), QStringLiteral("path"));
    }

    void whatIsNoFileIsNotOpened()
    {
        const QTemporaryDir folder;
        CurveArchive archive;
        for (const QString& path :
             {folder.path(), folder.filePath("missing.json"), QString(), QStringLiteral("/dev/zero")})
            QCOMPARE(CurveArchive::load(path, archive), CurveArchive::LoadStatus::NotOpened);
    }

    void fullDiskLeavesTheOldArchive()
    {
        if (!test::FileSizeLimit::isSupported())
            QSKIP("the size of files cannot be limited here");
        const QTemporaryDir folder;
        const QString path = folder.filePath("curve.json");
        CurveArchive archive;
        archive.voltageSamples = {1, 2, 3};
        QVERIFY(archive.save(path));
        CurveArchive larger;
        larger.voltageSamples = QVector<QVariant>(1000, 1.5).toList();
        {
            const test::FileSizeLimit diskFull(10000);
            QVERIFY(!larger.save(path));
        }
        CurveArchive read;
        QCOMPARE(CurveArchive::load(path, read), CurveArchive::LoadStatus::Loaded);
        QCOMPARE(read.voltageSamples, archive.voltageSamples);
        QCOMPARE(QDir(folder.path()).entryList(QDir::Files).size(), 2);
    }

    void unwritableCsvIsLeftOut()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath("curve.json");
        QVERIFY(QDir().mkpath(CurveArchive::csvPath(path)));
        QVERIFY(CurveArchive().save(path));
        QVERIFY(QFile::exists(path));
    }
};

QUORVEL_TEST_MAIN(CurveArchiveTest, QCoreApplication)
#include "tst_CurveArchive.moc"
