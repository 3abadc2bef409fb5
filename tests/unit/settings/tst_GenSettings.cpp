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
    QVERIFY(QFileInfo(path).dir().mkpath(QStringLiteral(".")));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(content), qint64(content.size()));
}

QByteArray fileContent(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
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
        QCOMPARE(settings.iValue(QStringLiteral("language")), 0);
        QCOMPARE(settings.sValue(QStringLiteral("a"), QStringLiteral("x")), QStringLiteral("x"));
        QCOMPARE(settings.dValue(QStringLiteral("a"), 0.92), 0.92);
        QCOMPARE(settings.bValue(QStringLiteral("a"), true), true);
        QVERIFY(!QFile::exists(settingsFile()));
    }

    void writesAreOnDiskWhenTheCallReturns()
    {
        GenSettings settings(nullptr, nullptr);
        settings.setValue(QStringLiteral("serverHost"), QStringLiteral("http://测试"),
                          QStringLiteral("sysSettings"));
        settings.setValue(QStringLiteral("language"), 1);
        const QByteArray content = fileContent(settingsFile());
        QVERIFY(content.contains("[sysSettings]"));
        QVERIFY(content.contains("[system]"));
        QVERIFY(content.contains("language=1"));

        const GenSettings reopened(nullptr, nullptr);
        QCOMPARE(reopened.iValue(QStringLiteral("language")), 1);
        QCOMPARE(reopened.sValue(QStringLiteral("serverHost"), {}, QStringLiteral("sysSettings")),
                 QStringLiteral("http://测试"));
        QCOMPARE(reopened.sValue(QStringLiteral("serverHost")), QString());
    }

    void convertsWhatIsStored_data()
    {
        QTest::addColumn<QByteArray>("stored");
        QTest::addColumn<int>("asInt");
        QTest::addColumn<double>("asDouble");
        QTest::addColumn<bool>("asBool");
        QTest::newRow("number") << QByteArray("70000") << 70000 << 70000.0 << true;
        QTest::newRow("real") << QByteArray("0.5") << 0 << 0.5 << true;
        QTest::newRow("false") << QByteArray("false") << 0 << 0.0 << false;
        QTest::newRow("true") << QByteArray("true") << 0 << 0.0 << true;
        QTest::newRow("no number") << QByteArray("abc") << 0 << 0.0 << true;
        QTest::newRow("empty") << QByteArray() << 0 << 0.0 << false;
        QTest::newRow("invalid, not missing") << QByteArray("@Invalid()") << 0 << 0.0 << false;
    }

    void convertsWhatIsStored()
    {
        QFETCH(QByteArray, stored);
        writeFile(settingsFile(), "[g]\nkey=" + stored + "\n");
        const GenSettings settings(nullptr, nullptr);
        QTEST(settings.iValue(QStringLiteral("key"), 7, QStringLiteral("g")), "asInt");
        QTEST(settings.dValue(QStringLiteral("key"), 7, QStringLiteral("g")), "asDouble");
        QTEST(settings.bValue(QStringLiteral("key"), true, QStringLiteral("g")), "asBool");
    }

    void firstRunTakesTheTemplate()
    {
        writeFile(templateFile(), "[system]\nlanguage=1\n");
        {
            const GenSettings settings(nullptr, nullptr);
            QCOMPARE(settings.iValue(QStringLiteral("language")), 1);
        }
        writeFile(templateFile(), "[system]\nlanguage=0\n");
        const GenSettings second(nullptr, nullptr);
        QCOMPARE(second.iValue(QStringLiteral("language")), 1);
    }

    void malformedFileReadsAsDefaultsAndCanBeWritten()
    {
        writeFile(settingsFile(), QByteArray("\xff\xfe[broken\n=\n\0garbage", 21));
        GenSettings settings(nullptr, nullptr);
        QCOMPARE(settings.iValue(QStringLiteral("language"), 1), 1);
        settings.setValue(QStringLiteral("x"), 42, QStringLiteral("windowGeometry"));
        const GenSettings reopened(nullptr, nullptr);
        QCOMPARE(reopened.iValue(QStringLiteral("x"), 0, QStringLiteral("windowGeometry")), 42);
    }

    void withoutFolderNothingIsStoredAndNothingFails()
    {
        writeFile(documents() + QStringLiteral("/Quorvel"), "a file where the folder should be");
        GenSettings settings(nullptr, nullptr);
        settings.setValue(QStringLiteral("key"), 5);
        QCOMPARE(settings.iValue(QStringLiteral("key"), 3), 3);
    }

    /// Readers of one group and a writer of another must never see each other's group.
    void groupsStayApartBetweenThreads()
    {
        GenSettings settings(nullptr, nullptr);
        const QString key = QStringLiteral("key");
        settings.setValue(key, 1, QStringLiteral("a"));
        std::atomic<int> mixedUp{0};
        std::thread reader([&settings, &mixedUp, &key] {
            for (int i = 0; i < 2000; ++i)
                mixedUp += settings.iValue(key, 0, QStringLiteral("a")) != 1;
        });
        for (int i = 0; i < 50; ++i)
            settings.setValue(key, 2, QStringLiteral("b"));
        reader.join();
        QCOMPARE(mixedUp.load(), 0);
    }
};

QUORVEL_TEST_MAIN(GenSettingsTest, QCoreApplication)
#include "tst_GenSettings.moc"
