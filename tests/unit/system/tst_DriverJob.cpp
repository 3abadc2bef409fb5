// SPDX-License-Identifier: GPL-3.0-or-later
#include "system/DriverJob.h"
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
        QTest::addColumn<bool>("ok");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QString>("output");
        QTest::addColumn<QString>("errors");
        QTest::addColumn<QString>("message");
        QTest::newRow("success") << true << 0 << "talk"
                                 << "warning"
                                 << "done";
        QTest::newRow("refused by the user") << false << 1223 << ""
                                             << "long story"
                                             << "cancelled";
        QTest::newRow("errors before output") << false << 5 << "out"
                                              << " denied \n"
                                              << "failed 5 denied";
        QTest::newRow("output without errors") << false << 2 << "  missing\n"
                                               << " \n"
                                               << "failed 2 missing";
        QTest::newRow("silent") << false << 1 << ""
                                << ""
                                << "failed 1";
        QTest::newRow("crash with code 0") << false << 0 << ""
                                           << ""
                                           << "failed 0";
        QTest::newRow("not started") << false << -1 << ""
                                     << "Failed to start process: powershell"
                                     << "failed -1 Failed to start process: powershell";
        QTest::newRow("long") << false << 9 << "" << QString(300, 'e') << "failed 9 " + QString(180, 'e');
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
        QTest::addColumn<Finder>("find");
        QTest::addColumn<QStringList>("places");
        const QString install = QStringLiteral("FELdrivers/install-fel-winusb-driver.ps1");
        const QString uninstall = QStringLiteral("FELdrivers/uninstall-fel-winusb-driver.ps1");
        const QString legacy = QStringLiteral("sunxi-fel-USB-zadig-2.3.exe");
        QTest::newRow("install") << Finder(&driver::findFelDriverScript)
                                 << QStringList{"cwd/docs/" + install, "app/docs/" + install,
                                                "app/" + install};
        QTest::newRow("uninstall") << Finder(&driver::findFelDriverUninstallScript)
                                   << QStringList{"cwd/docs/" + uninstall, "app/docs/" + uninstall,
                                                  "app/" + uninstall};
        QTest::newRow("legacy") << Finder(&driver::findLegacyFelDriverInstaller)
                                << QStringList{"cwd/deploy/" + legacy, "app/deploy/" + legacy,
                                               "app/" + legacy};
    }

    void fileIsFoundWhereItCountsMost()
    {
        QFETCH(Finder, find);
        QFETCH(QStringList, places);
        const QTemporaryDir home;
        const QDir folder(home.path());
        const QString app = folder.filePath(QStringLiteral("app"));
        const QString working = folder.filePath(QStringLiteral("cwd"));
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
