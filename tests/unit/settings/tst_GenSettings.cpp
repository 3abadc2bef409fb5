// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/GenSettings.h"
#include "tests/support/TestCase.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <QtTest>

#include <atomic>
#include <thread>

namespace {

QString documents()
{
    return QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
}

QString settingsFile()
{
    return documents() + QStringLiteral("/Quorvel/Quorvel.ini");
}

QString templateFile()
{
    return QCoreApplication::applicationDirPath() + QStringLiteral("/pack/Quorvel.ini");
}

void writeFile(const QString& path, const QByteArray& content)
{
    QVERIFY(QFileInfo(path).dir().mkpath("."));
    QVERIFY(test::writeFile(path, content));
}

} // namespace

class GenSettingsTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TestCase::init();
        QDir(documents() + QStringLiteral("/Quorvel")).removeRecursively();
        QFile::remove(documents() + QStringLiteral("/Quorvel"));
        QFile::remove(templateFile());
    }

    void emptyStoreGivesDefaults()
    {
        const GenSettings settings(nullptr, nullptr);
        QCOMPARE(settings.iValue("language"), 0);
        QCOMPARE(settings.sValue("a", "x"), QStringLiteral("x"));
        QCOMPARE(settings.dValue("a", 0.92), 0.92);
        QCOMPARE(settings.bValue("a", true), true);
        QVERIFY(!QFile::exists(settingsFile()));
    }

    void writesAreOnDiskWhenTheCallReturns()
    {
        GenSettings settings(nullptr, nullptr);
        settings.setValue("serverHost", "http://测试", "sysSettings");
        settings.setValue("language", 1);
        const QByteArray content = test::contentOf(settingsFile());
        QVERIFY(content.contains("[sysSettings]"));
        QVERIFY(content.contains("[system]"));
        QVERIFY(content.contains("language=1"));

        const GenSettings reopened(nullptr, nullptr);
        QCOMPARE(reopened.iValue("language"), 1);
        QCOMPARE(reopened.sValue("serverHost", {}, "sysSettings"), QStringLiteral("http://测试"));
        QCOMPARE(reopened.sValue("serverHost"), QString());
    }

    void convertsWhatIsStored_data()
    {
        const test::Table<QByteArray, int, double, bool> table("stored", "asInt", "asDouble", "asBool");
        table.row("number", "70000", 70000, 70000.0, true);
        table.row("real", "0.5", 0, 0.5, true);
        table.row("false", "false", 0, 0.0, false);
        table.row("true", "true", 0, 0.0, true);
        table.row("no number", "abc", 0, 0.0, true);
        table.row("empty", {}, 0, 0.0, false);
        table.row("invalid, not missing", "@Invalid()", 0, 0.0, false);
    }

    void convertsWhatIsStored()
    {
        QFETCH(QByteArray, stored);
        writeFile(settingsFile(), "[g]\nkey=" + stored + "\n");
        const GenSettings settings(nullptr, nullptr);
        QTEST(settings.iValue("key", 7, "g"), "asInt");
        QTEST(settings.dValue("key", 7, "g"), "asDouble");
        QTEST(settings.bValue("key", true, "g"), "asBool");
    }

    void firstRunTakesTheTemplate()
    {
        writeFile(templateFile(), "[system]\nlanguage=1\n");
        {
            const GenSettings settings(nullptr, nullptr);
            QCOMPARE(settings.iValue("language"), 1);
        }
        writeFile(templateFile(), "[system]\nlanguage=0\n");
        const GenSettings second(nullptr, nullptr);
        QCOMPARE(second.iValue("language"), 1);
    }

    void malformedFileReadsAsDefaultsAndCanBeWritten()
    {
        writeFile(settingsFile(), QByteArray("\xff\xfe[broken\n=\n\0garbage", 21));
        GenSettings settings(nullptr, nullptr);
        QCOMPARE(settings.iValue("language", 1), 1);
        settings.setValue("x", 42, "windowGeometry");
        const GenSettings reopened(nullptr, nullptr);
        QCOMPARE(reopened.iValue("x", 0, "windowGeometry"), 42);
    }

    void withoutFolderNothingIsStoredAndNothingFails()
    {
        writeFile(documents() + QStringLiteral("/Quorvel"), "a file where the folder should be");
        GenSettings settings(nullptr, nullptr);
        settings.setValue("key", 5);
        QCOMPARE(settings.iValue("key", 3), 3);
    }

    /// Readers of one group and a writer of another must never see each other's group.
    void groupsStayApartBetweenThreads()
    {
        GenSettings settings(nullptr, nullptr);
        const QString key = "key";
        settings.setValue(key, 1, "a");
        std::atomic<int> mixedUp{0};
        std::thread reader([&settings, &mixedUp, &key] {
            for (int i = 0; i < 2000; ++i)
                mixedUp += settings.iValue(key, 0, "a") != 1;
        });
        for (int i = 0; i < 50; ++i)
            settings.setValue(key, 2, "b");
        reader.join();
        QCOMPARE(mixedUp.load(), 0);
    }
};

QUORVEL_TEST_MAIN(GenSettingsTest, QCoreApplication)
#include "tst_GenSettings.moc"
