// SPDX-License-Identifier: GPL-3.0-or-later
#include "system/DriverJob.h"
#include "tests/support/TestCase.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

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

    void scriptIsFoundWhereItCountsMost()
    {
        const QTemporaryDir home;
        const QDir folder(home.path());
        const QString app = folder.filePath(QStringLiteral("app"));
        const QString working = folder.filePath(QStringLiteral("cwd"));
        const QStringList places = driver::scriptCandidates(DriverJob::Uninstall, app, working);
        QCOMPARE(places.size(), 3);
        QCOMPARE(driver::firstExisting(places), QString());
        // The least important place first: each further one takes over.
        for (int i = places.size() - 1; i >= 0; --i) {
            QVERIFY(folder.mkpath(QFileInfo(places.at(i)).path()));
            QFile script(places.at(i));
            QVERIFY(script.open(QIODevice::WriteOnly));
            QCOMPARE(driver::firstExisting(places), QDir::toNativeSeparators(places.at(i)));
        }
        QCOMPARE(places.first(), app + QStringLiteral("/FELdrivers/uninstall-fel-winusb-driver.ps1"));
        QCOMPARE(driver::legacyInstallerCandidates(app, working).at(1),
                 app + QStringLiteral("/deploy/sunxi-fel-USB-zadig-2.3.exe"));
    }
};

QUORVEL_TEST_MAIN(DriverJobTest, QCoreApplication)
#include "tst_DriverJob.moc"
