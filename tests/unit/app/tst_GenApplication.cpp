// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/GenApplication.h"
#include "app/GenToolbox.h"
#include "settings/GenSettings.h"
#include "tests/support/TestCase.h"

#include <QSignalSpy>
#include <QtTest>

class GenApplicationTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    /// Runs first, while nothing is stored.
    void startsInChinese()
    {
        QCOMPARE(genApp()->currentLanguage(), int(GenApplication::Chinese));
        QCOMPARE(QLocale().name(), QStringLiteral("zh_CN"));
        QCOMPARE(QCoreApplication::translate("QObject", "An application is already running."),
                 QStringLiteral("应用程序已经在运行。"));
    }

    void switchesLanguageOnceAndKeepsIt()
    {
        QSignalSpy current(genApp(), &GenApplication::currentLanguageChanged);
        QSignalSpy locale(genApp(), &GenApplication::languageChanged);
        QVERIFY(genApp()->setLanguage(5));
        QCOMPARE(genApp()->currentLanguage(), int(GenApplication::English));
        QCOMPARE(current.count(), 1);
        QCOMPARE(locale.count(), 1);
        QCOMPARE(locale.first().first().toLocale().name(), QStringLiteral("en_US"));
        QCOMPARE(genApp()->toolbox()->genSettings()->iValue("language", -1), 1);
        QCOMPARE(QCoreApplication::translate("QObject", "An application is already running."),
                 QStringLiteral("An application is already running."));

        QVERIFY(genApp()->setLanguage(1));
        QCOMPARE(locale.count(), 1);
        genApp()->updateTranslation();
        QCOMPARE(current.count(), 1);
        QCOMPARE(locale.count(), 2);
        QVERIFY(genApp()->setLanguage(GenApplication::Chinese));
        QCOMPARE(current.count(), 2);
    }

    void storingTheLanguageAppliesIt()
    {
        QSignalSpy locale(genApp(), &GenApplication::languageChanged);
        GenSettings* settings = genApp()->toolbox()->genSettings();
        settings->setValue("language", genApp()->currentLanguage());
        QCOMPARE(locale.count(), 1);
        settings->setValue("other", 1);
        QCOMPARE(locale.count(), 1);
    }

    void toolboxWritesBytesAsHexadecimalText_data()
    {
        const test::Table<QByteArray, QString> table("bytes", "text");
        table.row("none", {}, {});
        table.row("one", "\x05", "05");
        table.row("three", "\x0A\x1B\xFF", "0A 1B FF");
    }

    void toolboxWritesBytesAsHexadecimalText()
    {
        QFETCH(QByteArray, bytes);
        QTEST(genApp()->toolbox()->byteArrayToHexString(bytes), "text");
    }

    /// Runs last, because it deletes the application's core.
    void shutsDownOnceOnly()
    {
        genApp()->shutdown();
        QVERIFY(genApp()->toolbox() == nullptr);
        QVERIFY(genApp()->rootWindow() == nullptr);
        genApp()->shutdown();
        // Without a settings store the language is kept in memory.
        QVERIFY(genApp()->setLanguage(GenApplication::English));
        QCOMPARE(genApp()->currentLanguage(), int(GenApplication::English));
    }
};

QUORVEL_TEST_MAIN(GenApplicationTest, GenApplication)
#include "tst_GenApplication.moc"
