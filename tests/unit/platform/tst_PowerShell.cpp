// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/DriverCommand.h"
#include "platform/PowerShell.h"
#include "tests/support/ScriptFolder.h"
#include "tests/support/TestCase.h"

#include <QDir>
#include <QtTest>

using namespace platform;

namespace {

QStringList shellArguments(const QString& command)
{
    return {"-NoProfile", "-ExecutionPolicy", "Bypass", "-Command", command};
}

} // namespace

class PowerShellTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void driverCommands()
    {
        const QString script = QString::fromUtf8("C:\\O'Neil\\100%1\\‘’‚‛“\\install.ps1");
        const QString begin =
            QString::fromUtf8("$ErrorActionPreference = 'Stop'; $script = "
                              "'C:\\O''Neil\\100%1\\‘‘’’‚‚‛‛“\\install.ps1'; $args = "
                              "@('-NoProfile','-ExecutionPolicy','Bypass','-File',$script,");
        const QString end = "); try {   $p = Start-Process -FilePath 'powershell.exe' -ArgumentList $args "
                            "-Verb RunAs -Wait -PassThru;   exit $p.ExitCode } catch {   "
                            "Write-Error $_ -ErrorAction Continue; exit 1223 }";
        QCOMPARE(powershell::installDriverCommand(script),
                 begin + QStringLiteral("'-TrustBundledCertificate','-ScanDevices','-ForceBind'") + end);
        QCOMPARE(powershell::uninstallDriverCommand(script), begin + QStringLiteral("'-ScanDevices'") + end);
    }

    void scriptPathWithBlanks()
    {
        const QString command = powershell::uninstallDriverCommand("C:\\Program Files\\Quorvel\\u.ps1");
        QVERIFY(command.contains(QStringLiteral("$script = '\"C:\\Program Files\\Quorvel\\u.ps1\"'; ")));
    }

    void deviceQuery_data()
    {
        const test::Table<QByteArray, bool, QString> table("steps", "found", "detail");
        const QString detail = "ok=%1 exitCode=%2 key=VID_1F3A&PID_EFE8 stdout=%3 stderr=%4";
        table.row("listed in lower case", "out usb\\\\vid_1f3a&pid_efe8\\\\6&2\\n\nexit 3", true,
                  detail.arg(1).arg(3).arg("usb\\vid_1f3a&pid_efe8\\6&2", QString()));
        table.row("another device", "out USB\\\\VID_1F3A&PID_EFE9\\n  more\\n", false,
                  detail.arg(1).arg(0).arg("USB\\VID_1F3A&PID_EFE9 more", QString()));
        table.row("nothing", "err broken\\n\nexit 1", false, detail.arg(1).arg(1).arg(QString(), "broken"));
        table.row("crash after the answer", "out VID_1F3A&PID_EFE8\\n\ncrash", false,
                  detail.arg(0).arg(test::ScriptFolder::crashExitCode()).arg("VID_1F3A&PID_EFE8", QString()));
        table.row("long answer", "out " + QByteArray(600, 'x'), false,
                  detail.arg(1).arg(0).arg(QString(500, QLatin1Char('x')), QString()));
    }

    void deviceQuery()
    {
        QFETCH(QByteArray, steps);
        const test::ScriptFolder scripts;
        scripts.addRecorder("powershell", steps);
        const UsbQuery query = powershell::queryPnpDevice("1f3a", "efe8", processRunner(nullptr));
        QTEST(query.found, "found");
        QTEST(query.detail, "detail");
        QCOMPARE(scripts.calls("powershell"),
                 QList<QStringList>{
                     shellArguments("$ids = Get-CimInstance Win32_PnPEntity | Select-Object -ExpandProperty "
                                    "PNPDeviceID; $ids | Where-Object { $_ -like '*VID_1F3A&PID_EFE8*' }")});
    }

    void archiveCommand()
    {
        const test::ScriptFolder scripts;
        scripts.addRecorder("powershell", "out done\\n\nerr and a warning\\n\nexit 4");
        const ArchiveOutcome outcome = powershell::archiveFolder(
            "/home/o'neil [x]/Logs", "/home/o'neil/''x.zip", processRunner(nullptr), 0);
        QVERIFY(outcome.ran);
        QCOMPARE(outcome.exitCode, 4);
        QCOMPARE(outcome.standardOutput, QStringLiteral("done\n"));
        QCOMPARE(outcome.standardError, QStringLiteral("and a warning\n"));
        const QString folder = QDir::toNativeSeparators("/home/o''neil `[x`]/Logs");
        const QString archive = QDir::toNativeSeparators("/home/o''neil/''''x.zip");
        QCOMPARE(scripts.calls("powershell"),
                 QList<QStringList>{shellArguments("Compress-Archive -Path '" + folder +
                                                   "\\*' -DestinationPath '" + archive + "' -Force")});
    }
};

QUORVEL_TEST_MAIN(PowerShellTest, QCoreApplication)
#include "tst_PowerShell.moc"
