// SPDX-License-Identifier: GPL-3.0-or-later
#include "firmware/DriverJob.h"
#include "tests/support/TestCase.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

using Finder = QString (*)(const QString& appDir, const QString& workingDir);
Q_DECLARE_METATYPE(Finder)

class DriverJobTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void messages_data()
    {
        const test::Table<bool, int, QString, QString, QString> table("ok", "exitCode", "output", "errors",
                                                                      "message");
        table.row("success", true, 0, "talk", "warning", "done");
        table.row("refused by the user", false, 1223, "", "long story", "cancelled");
        table.row("errors before output", false, 5, "out", " denied \n", "failed 5 denied");
        table.row("output without errors", false, 2, "  missing\n", " \n", "failed 2 missing");
        table.row("silent", false, 1, "", "", "failed 1");
        table.row("crash with code 0", false, 0, "", "", "failed 0");
        table.row("not started", false, -1, "", "Failed to start process: powershell",
                  "failed -1 Failed to start process: powershell");
        table.row("long", false, 9, "", QString(300, 'e'), "failed 9 " + QString(180, 'e'));
    }

    void messages()
    {
        QFETCH(bool, ok);
        QFETCH(int, exitCode);
        QFETCH(QString, output);
        QFETCH(QString, errors);
        DriverTexts texts;
        texts.success = QStringLiteral("done");
        texts.cancelled = QStringLiteral("cancelled");
        texts.failed = QStringLiteral("failed %1");
        QTEST(driver::outcomeMessage(texts, ok, exitCode, output, errors), "message");
    }

    void fileIsFoundWhereItCountsMost_data()
    {
        const test::Table<Finder, QStringList> table("find", "places");
        const QString install = "FELdrivers/install-fel-winusb-driver.ps1";
        const QString uninstall = "FELdrivers/uninstall-fel-winusb-driver.ps1";
        const QString legacy = "sunxi-fel-USB-zadig-2.3.exe";
        table.row("install", Finder(&driver::findFelDriverScript),
                  QStringList{"cwd/docs/" + install, "app/docs/" + install, "app/" + install});
        table.row("uninstall", Finder(&driver::findFelDriverUninstallScript),
                  QStringList{"cwd/docs/" + uninstall, "app/docs/" + uninstall, "app/" + uninstall});
        table.row("legacy", Finder(&driver::findLegacyFelDriverInstaller),
                  QStringList{"cwd/deploy/" + legacy, "app/deploy/" + legacy, "app/" + legacy});
    }

    void fileIsFoundWhereItCountsMost()
    {
        QFETCH(Finder, find);
        QFETCH(QStringList, places);
        const QTemporaryDir home;
        const QDir folder(home.path());
        const QString app = folder.filePath("app");
        const QString working = folder.filePath("cwd");
        QCOMPARE(find(app, working), QString());
        // The least important place first: each further one takes over.
        for (const QString& place : places) {
            const QString path = folder.filePath(place);
            QVERIFY(folder.mkpath(QFileInfo(path).path()));
            QFile file(path);
            QVERIFY(file.open(QIODevice::WriteOnly));
            QCOMPARE(find(app, working), QDir::toNativeSeparators(path));
        }
    }
};

QUORVEL_TEST_MAIN(DriverJobTest, QCoreApplication)
#include "tst_DriverJob.moc"
