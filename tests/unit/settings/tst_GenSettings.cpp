// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/UserFolders.h"
#include "settings/GenSettings.h"
#include "storage/SettingsFile.h"
#include "tests/support/TestCase.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QtTest>

#include <array>

namespace {

QString documents()
{
    return platform::userFolder(platform::UserFolder::Documents);
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

/// Makes this program one of the processes that write the same file: the option, then the key.
constexpr const char* cWriterOption = "--writer";
constexpr int cFirstValue = 100;
constexpr int cWrites = 30;
const QByteArray cLastValue = QByteArray::number(cFirstValue + cWrites - 1);

/// Returns 0 when every written value is in the file afterwards.
int writeInTurn(int argc, char** argv)
{
    const QCoreApplication app(argc, argv);
    GenSettings settings(nullptr, nullptr);
    for (int value = cFirstValue; value < cFirstValue + cWrites; ++value) {
        settings.setValue(argv[2], value);
        if (settings.iValue(argv[2]) != value)
            return 1;
    }
    return 0;
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

    void handEditCountsAtTheNextLook()
    {
        GenSettings settings(nullptr, nullptr);
        settings.setValue("language", 1);
        settings.setValue("other", 5);
        writeFile(settingsFile(), test::contentOf(settingsFile()).replace("language=1", "language=10"));
        QTRY_COMPARE(settings.iValue("language"), 10);
        settings.setValue("other", 6);
        QCOMPARE(GenSettings(nullptr, nullptr).iValue("language"), 10);
        QVERIFY(QFile::remove(settingsFile()));
        QTRY_COMPARE(settings.iValue("language", 7), 7);
    }

    void damagedFileIsKeptBeforeTheFirstWrite()
    {
        expectWarning("is damaged; it was copied to");
        const QByteArray damaged("\xff\xfe[broken\n=\n\0garbage", 21);
        writeFile(settingsFile(), damaged);
        GenSettings settings(nullptr, nullptr);
        QCOMPARE(settings.iValue("language", 1), 1);
        settings.setValue("x", 42, "windowGeometry");
        QCOMPARE(GenSettings(nullptr, nullptr).iValue("x", 0, "windowGeometry"), 42);
        QCOMPARE(test::contentOf(settingsFile() + QStringLiteral(".damaged")), damaged);
    }

    void writeBringsBackWhatAHalfWrittenFileLacks_data()
    {
        const test::Table<QByteArray, QByteArray> table("edited", "kept");
        table.row("emptied", "", "serverHost=a");
        table.row("cut within a line", "[system]\nlanguage=0\n\n[sysSett", "serverHost=a");
        table.row("cut within a value", "[sysSettings]\nserverHost=b", "language=1");
    }

    void writeBringsBackWhatAHalfWrittenFileLacks()
    {
        QFETCH(QByteArray, edited);
        QFETCH(QByteArray, kept);
        expectWarning("is damaged; it was copied to");
        GenSettings settings(nullptr, nullptr);
        settings.setValue("serverHost", "a", "sysSettings");
        settings.setValue("language", 1);
        writeFile(settingsFile(), edited);
        settings.setValue("x", 42, "windowGeometry");
        const QByteArray stored = test::contentOf(settingsFile());
        QVERIFY2(stored.contains(kept) && stored.contains("x=42"), stored.constData());
    }

    void withoutFolderNothingIsStoredAndOneMessageSaysSo()
    {
        expectWarning("Settings cannot be stored in");
        writeFile(documents() + QStringLiteral("/Quorvel"), "a file where the folder should be");
        GenSettings settings(nullptr, nullptr);
        QStringList messages;
        settings.file()->setFailureHandler([&messages](const QString& path) { messages.append(path); });
        settings.setValue("key", 5);
        QCOMPARE(settings.iValue("key", 3), 3);
        QCOMPARE(messages, QStringList{documents() + QStringLiteral("//Quorvel")});
    }

    /// A write fails (here: an unreadable file), for an administrator too.
    void valueThatCannotBeWrittenLastsAndIsWrittenLater()
    {
        expectWarning("Settings cannot be stored in");
        GenSettings settings(nullptr, nullptr);
        int messages = 0;
        settings.file()->setFailureHandler([&messages](const QString&) { ++messages; });
        QVERIFY(QDir().mkpath(settingsFile()));
        settings.setValue("language", 1);
        settings.setValue("key", 2);
        QCOMPARE(settings.iValue("language"), 1);
        QCOMPARE(messages, 1);
        QVERIFY(QDir().rmdir(settingsFile()));
        settings.setValue("key", 3);
        QVERIFY(test::contentOf(settingsFile()).contains("language=1"));
    }

    void processesKeepEachOthersKeys()
    {
        const QStringList keys{"first", "second"};
        std::array<QProcess, 2> writers;
        for (std::size_t i = 0; i < writers.size(); ++i)
            writers.at(i).start(QCoreApplication::applicationFilePath(), {cWriterOption, keys.at(int(i))});
        for (QProcess& writer : writers) {
            QVERIFY(writer.waitForFinished());
            QCOMPARE(writer.exitCode(), 0);
        }
        for (const QString& key : keys)
            QVERIFY(test::contentOf(settingsFile()).contains(key.toUtf8() + "=" + cLastValue));
    }
};

int main(int argc, char** argv)
{
    if (argc == 3 && argv[1] == QByteArray(cWriterOption)) {
        // The home folder of the process that started this one.
        platform::redirectUserFolders(qEnvironmentVariable("HOME"));
        return writeInTurn(argc, argv);
    }
    test::isolateHome();
    QCoreApplication app(argc, argv);
    GenSettingsTest testObject;
    return QTest::qExec(&testObject, argc, argv);
}

#include "tst_GenSettings.moc"
