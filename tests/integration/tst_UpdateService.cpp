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
        QVERIFY(m_server.start({"--installer-size", "4"}));
        genApp()->toolbox()->genSettings()->setValue("apiPort", m_server.apiPort(), "sysSettings");
    }

    void init()
    {
        TestCase::init();
        QVERIFY(m_server.command("clear"));
        m_control = std::make_unique<CUpgradeControl>(genApp()->toolbox()->genSettings()->file());
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
        const test::Table<bool, QString, QString, int> table("offered", "latest", "message", "last");
        const QString already = "Already latest version.";
        table.row("newer", true, "1.2.0", {}, CUpgradeControl::UPC_Finished);
        table.row("ignored", true, "1.1.99", {}, CUpgradeControl::UPC_Finished);
        table.row("same", false, "1.1.4", already, CUpgradeControl::UPC_Unknow);
        table.row("older", false, "1.0.0", already, CUpgradeControl::UPC_Unknow);
        table.row("none", false, "1.1.4", already, CUpgradeControl::UPC_Unknow);
        table.row("malformed", false, "", "Invalid update response.", CUpgradeControl::UPC_Unknow);
        table.row("wrong-hash", true, "1.2.0", {}, CUpgradeControl::UPC_NetworkError);
        table.row("upper-case-hash", true, "1.2.0", {}, CUpgradeControl::UPC_Finished);
        table.row("missing-length", true, "1.2.0", {}, CUpgradeControl::UPC_Finished);
        table.row("truncated", true, "1.2.0", {}, CUpgradeControl::UPC_NetworkError);
    }

    /// Answer of each role, and the end of the download that it offers.
    void answers()
    {
        QFETCH(bool, offered);
        QFETCH(int, last);
        QVERIFY(m_server.command(QStringLiteral("update ") + QTest::currentDataTag()));
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

    void hangs_data()
    {
        const test::Table<QString> table("fault");
        for (const char* fault : {"slow", "stalled", "never", "huge"})
            table.row(fault, fault);
    }

    /// A download that does not end by itself ends when the user cancels it.
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

private:
    void offerGoodPackage()
    {
        QVERIFY(m_server.command("update newer"));
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
