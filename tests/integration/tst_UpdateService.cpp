// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/GenApplication.h"
#include "app/GenToolbox.h"
#include "settings/GenSettings.h"
#include "tests/integration/LocalServerProcess.h"
#include "tests/support/TestCase.h"
#include "upgrade/CUpgradeControl.h"

#include <QDir>
#include <QSignalSpy>
#include <QtTest>

namespace {

constexpr int cTimeoutMs = 30'000;

QString installerPath()
{
    return QDir::tempPath() + QStringLiteral("/Quorvel-installer.exe");
}

} // namespace

/// The update control against the local server in each of its roles.
class UpdateServiceTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(m_server.start({QStringLiteral("--installer-size"), QStringLiteral("4")}));
        genApp()->toolbox()->genSettings()->setValue(QStringLiteral("apiPort"), m_server.apiPort(),
                                                     QStringLiteral("sysSettings"));
    }

    void init()
    {
        TestCase::init();
        QVERIFY(m_server.command(QStringLiteral("clear")));
        m_control = std::make_unique<CUpgradeControl>();
        m_status = std::make_unique<QSignalSpy>(m_control.get(), &CUpgradeControl::updateStatus);
    }

    void cleanup()
    {
        m_control.reset();
        QFile::remove(installerPath());
        TestCase::cleanup();
    }

    void answers_data()
    {
        QTest::addColumn<QString>("answer");
        QTest::addColumn<bool>("offered");
        QTest::addColumn<QString>("latest");
        QTest::addColumn<QString>("message");
        QTest::addColumn<int>("last");
        const QString already = QStringLiteral("Already latest version.");
        const auto row = [](const char* answer, bool offered, const char* latest, const QString& message,
                            int last) {
            QTest::newRow(answer) << QString::fromLatin1(answer) << offered << QString::fromLatin1(latest)
                                  << message << last;
        };
        row("newer", true, "1.2.0", {}, CUpgradeControl::UPC_Finished);
        row("ignored", true, "1.1.99", {}, CUpgradeControl::UPC_Finished);
        row("same", false, "1.1.4", already, CUpgradeControl::UPC_Unknow);
        row("older", false, "1.0.0", already, CUpgradeControl::UPC_Unknow);
        row("none", false, "1.1.4", already, CUpgradeControl::UPC_Unknow);
        row("malformed", false, "", QStringLiteral("Invalid update response."), CUpgradeControl::UPC_Unknow);
        row("wrong-hash", true, "1.2.0", {}, CUpgradeControl::UPC_NetworkError);
        row("upper-case-hash", true, "1.2.0", {}, CUpgradeControl::UPC_Finished);
        row("missing-length", true, "1.2.0", {}, CUpgradeControl::UPC_Finished);
        row("truncated", true, "1.2.0", {}, CUpgradeControl::UPC_NetworkError);
    }

    /// What is told, and how the download of what was offered ends.
    void answers()
    {
        QFETCH(QString, answer);
        QFETCH(bool, offered);
        QFETCH(int, last);
        QVERIFY(m_server.command(QStringLiteral("update ") + answer));
        QSignalSpy checked(m_control.get(), &CUpgradeControl::manualCheckFinished);
        m_control->checkUpdateNow();
        QTRY_COMPARE_WITH_TIMEOUT(checked.count(), 1, cTimeoutMs);
        QCOMPARE(checked.first().at(0).toBool(), offered);
        QTEST(checked.first().at(2).toString(), "latest");
        QTEST(checked.first().at(5).toString(), "message");
        if (!offered)
            return;
        m_control->startUpdate({});
        QTRY_COMPARE_WITH_TIMEOUT(
            reports(), (QList<int>{CUpgradeControl::UPC_Start, CUpgradeControl::UPC_Finished, last}),
            cTimeoutMs);
        QCOMPARE(QFileInfo::exists(installerPath()), last == CUpgradeControl::UPC_Finished);
    }

    void faults_data()
    {
        QTest::addColumn<QString>("fault");
        for (const char* fault : {"truncated", "status:503", "redirect", "loop", "garbage"})
            QTest::newRow(fault) << QString::fromLatin1(fault);
    }

    void faults()
    {
        QFETCH(QString, fault);
        offerGoodPackage();
        QVERIFY(m_server.command(QStringLiteral("fault /download/* ") + fault));
        m_control->startUpdate({});
        QTRY_COMPARE_WITH_TIMEOUT(reports(),
                                  (QList<int>{CUpgradeControl::UPC_Start, CUpgradeControl::UPC_Finished,
                                              CUpgradeControl::UPC_NetworkError}),
                                  cTimeoutMs);
        QVERIFY(!QFileInfo::exists(installerPath()));
    }

    void hangs_data()
    {
        QTest::addColumn<QString>("fault");
        for (const char* fault : {"slow", "stalled", "never", "huge"})
            QTest::newRow(fault) << QString::fromLatin1(fault);
    }

    /// What does not end by itself ends when the user wants it.
    void hangs()
    {
        QFETCH(QString, fault);
        offerGoodPackage();
        QVERIFY(m_server.command(QStringLiteral("fault /download/* ") + fault));
        m_control->startUpdate({});
        if (fault != QLatin1String("never"))
            QTRY_VERIFY_WITH_TIMEOUT(QFileInfo(installerPath()).size() > 0, cTimeoutMs);
        m_control->stopUpdate();
        QTRY_COMPARE_WITH_TIMEOUT(
            reports(), (QList<int>{CUpgradeControl::UPC_Start, CUpgradeControl::UPC_Canceled}), cTimeoutMs);
    }

    void serverLostInTheMiddle()
    {
        offerGoodPackage();
        QVERIFY(m_server.command(QStringLiteral("fault /download/* slow")));
        m_control->startUpdate({});
        QTRY_VERIFY_WITH_TIMEOUT(QFileInfo(installerPath()).size() > 0, cTimeoutMs);
        m_server.kill();
        QTRY_COMPARE_WITH_TIMEOUT(reports(),
                                  (QList<int>{CUpgradeControl::UPC_Start, CUpgradeControl::UPC_Finished,
                                              CUpgradeControl::UPC_NetworkError}),
                                  cTimeoutMs);
        QVERIFY(!QFileInfo::exists(installerPath()));
    }

private:
    void offerGoodPackage()
    {
        QVERIFY(m_server.command(QStringLiteral("update newer")));
        QSignalSpy checked(m_control.get(), &CUpgradeControl::manualCheckFinished);
        m_control->checkUpdateNow();
        QTRY_COMPARE_WITH_TIMEOUT(checked.count(), 1, cTimeoutMs);
    }

    QList<int> reports() const
    {
        QList<int> values;
        for (const QVariantList& arguments : *m_status) {
            if (arguments.constFirst().toInt() != CUpgradeControl::UPC_Download)
                values.append(arguments.constFirst().toInt());
        }
        return values;
    }

    LocalServerProcess m_server;
    std::unique_ptr<CUpgradeControl> m_control;
    std::unique_ptr<QSignalSpy> m_status;
};

QUORVEL_TEST_MAIN(UpdateServiceTest, GenApplication)
#include "tst_UpdateService.moc"
