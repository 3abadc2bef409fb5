// SPDX-License-Identifier: GPL-3.0-or-later
#include "firmware/DriverRunner.h"
#include "tests/unit/firmware/FirmwareFixture.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

using Finder = QString (*)(const QString& appDir, const QString& workingDir);
Q_DECLARE_METATYPE(Finder)

class DriverJobTest : public FirmwareTestCase
{
    Q_OBJECT

private:
    const QString m_workingFolder = QDir::currentPath();

    /// Makes a folder with a driver script the working folder. Returns the path of the script.
    QString addScript(bool install) const
    {
        const QDir folder(m_fixture->scripts.path("it's"));
        const QString script =
            folder.filePath(install ? QStringLiteral("docs/FELdrivers/install-fel-winusb-driver.ps1")
                                    : QStringLiteral("docs/FELdrivers/uninstall-fel-winusb-driver.ps1"));
        if (!folder.mkpath("docs/FELdrivers") || !test::writeFile(script, {}))
            qFatal("a script could not be written");
        QDir::setCurrent(folder.path());
        return script;
    }

private Q_SLOTS:
    void initTestCase() { qRegisterMetaType<DriverJob>("DriverJob"); }

    void cleanup()
    {
        QDir::setCurrent(m_workingFolder);
        FirmwareTestCase::cleanup();
    }

    void messages_data()
    {
        const test::Table<bool, int, QString, QString, QString> table("ran", "exitCode", "output", "errors",
                                                                      "message");
        table.row("success", true, 0, "talk", "warning", "done");
        table.row("refused by the user", true, 1223, "", "long story", "cancelled");
        table.row("errors before output", true, 5, "out", " denied \n", "failed 5 denied");
        table.row("output without errors", true, 2, "  missing\n", " \n", "failed 2 missing");
        table.row("silent", true, 1, "", "", "failed 1");
        table.row("crash with code 0", false, 0, "", "", "failed 0");
        table.row("not started", false, -1, "", "Failed to start process: powershell",
                  "failed -1 Failed to start process: powershell");
        table.row("long", true, 9, "", QString(300, 'e'), "failed 9 " + QString(180, 'e'));
    }

    void messages()
    {
        QFETCH(bool, ran);
        QFETCH(int, exitCode);
        QFETCH(QString, output);
        QFETCH(QString, errors);
        const DriverJobOutcome outcome{DriverJobOutcome::End::Ended, ran, exitCode, output, errors};
        DriverTexts texts;
        texts.success = QStringLiteral("done");
        texts.cancelled = QStringLiteral("cancelled");
        texts.failed = QStringLiteral("failed %1");
        QTEST(driver::outcomeMessage(texts, outcome), "message");
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
        // The places have rising priority: each new one is used instead of the earlier ones.
        for (const QString& place : places) {
            const QString path = folder.filePath(place);
            QVERIFY(folder.mkpath(QFileInfo(path).path()));
            QFile file(path);
            QVERIFY(file.open(QIODevice::WriteOnly));
            QCOMPARE(find(app, working), QDir::toNativeSeparators(path));
        }
    }

    void job_data()
    {
        const test::Table<bool, QByteArray, bool, QString> table("install", "powershell", "ok", "errors");
        table.row("installed", true, "exit 0", true, {});
        table.row("removed", false, "exit 0", true, {});
        table.row("denied", true, "err denied\\n\nexit 5", false, "denied\n");
        // Windows always has one; so has the tests' folder there.
        if (!QFile::exists(QCoreApplication::applicationDirPath() + "/powershell.exe"))
            table.row("no PowerShell", true, {}, false, "Failed to start process: powershell");
    }

    void job()
    {
        QFETCH(bool, install);
        QFETCH(QByteArray, powershell);
        if (!powershell.isEmpty())
            m_fixture->scripts.addRecorder("powershell", powershell);
        DriverRunner runner(true, m_fixture->log);
        const QSignalSpy busy(&runner, &DriverRunner::busyChanged);
        const QSignalSpy finished(&runner, &DriverRunner::finished);
        const auto outcome = [&finished](int index) {
            return finished.value(index).value(1).value<DriverJobOutcome>();
        };
        // A job cannot start without its script.
        runner.start(DriverJob::Install);
        QCOMPARE(outcome(0).end, DriverJobOutcome::End::FilesMissing);
        QCOMPARE(busy.count(), 0);
        const QString script = addScript(install);
        runner.start(install ? DriverJob::Install : DriverJob::Uninstall);
        QVERIFY(runner.isBusy());
        // A second job does nothing while the first one runs.
        runner.start(DriverJob::Install);
        QTRY_COMPARE(finished.count(), 2);
        QTEST(outcome(1).ok(), "ok");
        QTEST(outcome(1).standardError, "errors");
        QCOMPARE(busy.count(), 2);
        const QList<QStringList> calls = m_fixture->scripts.calls("powershell");
        QCOMPARE(calls.size(), powershell.isEmpty() ? 0 : 1);
        QVERIFY(calls.isEmpty() ||
                calls.first().last().contains(QDir::toNativeSeparators(script).replace("'", "''")));
    }

    void stoppingDuringAJob()
    {
        const QString id = m_fixture->addHanging("powershell");
        DriverRunner runner(true, m_fixture->log);
        addScript(true);
        const QSignalSpy finished(&runner, &DriverRunner::finished);
        runner.start(DriverJob::Install);
        QTRY_VERIFY(test::processIdIn(id) > 0);
        runner.stop();
        QCOMPARE(finished.count(), 1);
        QVERIFY(!test::processRuns(test::processIdIn(id)));
        runner.start(DriverJob::Install);
        QVERIFY(!runner.isBusy());
    }
};

QUORVEL_TEST_MAIN(DriverJobTest, QCoreApplication)
#include "tst_DriverJob.moc"
