// SPDX-License-Identifier: GPL-3.0-or-later
#include "instrument/MultimeterHistory.h"
#include "tests/support/FileSizeLimit.h"
#include "tests/support/TestCase.h"

#include <QtTest>

namespace {

const QDateTime cNow(QDate(2026, 3, 1), QTime(14, 5, 9));

void recordRows(MultimeterHistory& history, int count, bool persistent = true)
{
    for (int i = 0; i < count; ++i)
        history.record(1, QString::number(i) + QLatin1Char('V'), cNow.addSecs(i), persistent);
}

} // namespace

class MultimeterHistoryTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TestCase::init();
        m_folder = std::make_unique<QTemporaryDir>();
        m_path = m_folder->filePath("multimeter_history.json");
    }

    void rowOfEachMode_data()
    {
        const test::Table<int, QString> table("mode", "column");
        table.row("none", 0, {});
        table.row("voltage", 1, "VoltageValue");
        table.row("resistance", 2, "ResistanceValue");
        table.row("capacitance", 3, "CapacitanceValue");
        table.row("diode", 4, "DiodeValue");
        table.row("buzzer", 5, "DiodeValue");
        table.row("unknown", 7, {});
    }

    void rowOfEachMode()
    {
        QFETCH(int, mode);
        QFETCH(QString, column);
        MultimeterHistory history;
        QCOMPARE(history.record(mode, "4.7", cNow, false), !column.isEmpty());
        QCOMPARE(history.currentTable().size(), column.isEmpty() ? 0 : 1);
        if (column.isEmpty())
            return;
        QVariantMap row = history.currentTable().first().toMap();
        QVERIFY(!QUuid::fromString(QLatin1Char('{') + row.take("id").toString() + QLatin1Char('}')).isNull());
        QCOMPARE(row.take("dateTime").toString(), QStringLiteral("2026-03-01 14:05:09"));
        QCOMPARE(row.take(column).toString(), QStringLiteral("4.7"));
        QCOMPARE(row.size(), 3);
        for (const QVariant& other : qAsConst(row))
            QCOMPARE(other, QVariant(QString()));
    }

    void listsAreCappedAndNewestFirst()
    {
        MultimeterHistory history;
        recordRows(history, MultimeterHistory::cMaxRows + 3);
        for (const QVariantList& rows :
             {history.currentTable(), history.sessionHistory(), history.persistentHistory()}) {
            QCOMPARE(rows.size(), MultimeterHistory::cMaxRows);
            QCOMPARE(rows.first().toMap().value("VoltageValue").toString(), QStringLiteral("1002V"));
            QCOMPARE(rows.last().toMap().value("VoltageValue").toString(), QStringLiteral("3V"));
        }
    }

    void fileHoldsTheRowsAndComesBack()
    {
        MultimeterHistory written;
        written.load(m_path);
        recordRows(written, 3);
        QVERIFY(written.save(m_path));
        const QJsonDocument document = QJsonDocument::fromJson(test::contentOf(m_path));
        QCOMPARE(test::contentOf(m_path), document.toJson(QJsonDocument::Indented));
        QCOMPARE(document.array().toVariantList(), written.persistentHistory());

        MultimeterHistory read;
        read.load(m_path);
        QCOMPARE(read.persistentHistory(), written.persistentHistory());
        QCOMPARE(read.sessionHistory().size(), 0);

        read.clearHistories();
        QVERIFY(read.save(m_path));
        QCOMPARE(QJsonDocument::fromJson(test::contentOf(m_path)), QJsonDocument(QJsonArray()));
        QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files).size(), 1);
    }

    void loadingTakesEveryObjectAndRecordingCaps()
    {
        constexpr int cRows = MultimeterHistory::cMaxRows + 500;
        QJsonArray rows{1, "text", QJsonArray(), QJsonValue::Null};
        for (int i = 0; i < cRows; ++i)
            rows.append(QJsonObject{{"VoltageValue", QString::number(i)}});
        QVERIFY(test::writeFile(m_path, QJsonDocument(rows).toJson()));
        MultimeterHistory history;
        history.load(m_path);
        QCOMPARE(history.persistentHistory().size(), cRows);
        recordRows(history, 1);
        QCOMPARE(history.persistentHistory().size(), MultimeterHistory::cMaxRows);
        QVERIFY(history.save(m_path));
        QCOMPARE(QJsonDocument::fromJson(test::contentOf(m_path)).array().size(),
                 MultimeterHistory::cMaxRows);
    }

    void aFileThatWasNotReadIsKept_data()
    {
        const test::Table<QByteArray, bool> table("content", "load");
        table.row("truncated", "[{\"id\": \"1\"},", true);
        table.row("an object", "{\"id\": \"1\"}", true);
        table.row("empty", {}, true);
        table.row("no text", QByteArray(4096, '\xff'), true);
        table.row("deep", QByteArray(200000, '['), true);
        table.row("100 MB", '[' + QByteArray(100 * 1024 * 1024, ' ') + ']', true);
        table.row("too many elements", "[0" + QByteArray(",0").repeated(1500000) + ']', true);
        table.row("from before", "[]", false);
    }

    void aFileThatWasNotReadIsKept()
    {
        QFETCH(QByteArray, content);
        QFETCH(bool, load);
        QVERIFY(test::writeFile(m_path, content));
        MultimeterHistory history;
        if (load)
            history.load(m_path);
        QCOMPARE(history.persistentHistory().size(), 0);
        recordRows(history, 2);
        QVERIFY(history.save(m_path));
        QVERIFY(history.save(m_path));
        QCOMPARE(QJsonDocument::fromJson(test::contentOf(m_path)).array().size(), 2);

        const QFileInfoList kept = QDir(m_folder->path()).entryInfoList({"*.unread-*.json"});
        QCOMPARE(kept.size(), 1);
        QVERIFY(test::contentOf(kept.first().filePath()) == content);
    }

    void failedWriteKeepsFileAndRows_data()
    {
        const test::Table<bool> table("known");
        table.row("known file", true);
        table.row("unread file", false);
    }

    void failedWriteKeepsFileAndRows()
    {
        QFETCH(bool, known);
        if (!test::FileSizeLimit::isSupported())
            QSKIP("the size of files cannot be limited here");
        QVERIFY(test::writeFile(m_path, known ? "[{\"id\":\"1\"}]" : "no history"));
        const QByteArray before = test::contentOf(m_path);
        MultimeterHistory history;
        history.load(m_path);
        recordRows(history, MultimeterHistory::cMaxRows);
        {
            const test::FileSizeLimit diskFull(10000);
            QVERIFY(!history.save(m_path));
        }
        QCOMPARE(test::contentOf(m_path), before);
        QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files).size(), 1);
        QCOMPARE(history.persistentHistory().size(), MultimeterHistory::cMaxRows);
        QVERIFY(history.save(m_path));
        QCOMPARE(QJsonDocument::fromJson(test::contentOf(m_path)).array().size(),
                 MultimeterHistory::cMaxRows);
    }

    void noFolderAndFolderInPlaceOfTheFile()
    {
        MultimeterHistory history;
        recordRows(history, 1);
        QVERIFY(!history.save(m_folder->filePath("missing/file.json")));

        QVERIFY(QDir().mkpath(m_path));
        history.load(m_path);
        recordRows(history, 1);
        QVERIFY(!history.save(m_path));
        QVERIFY(QFileInfo(m_path).isDir());
        QCOMPARE(history.persistentHistory().size(), 1);
    }

private:
    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_path;
};

QUORVEL_TEST_MAIN(MultimeterHistoryTest, QCoreApplication)
#include "tst_MultimeterHistory.moc"
