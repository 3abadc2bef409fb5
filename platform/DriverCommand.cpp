// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/DriverCommand.h"

#include "platform/PowerShell.h"

namespace platform::powershell {

namespace {

/// Text of the outer shell: starts \a script with \a parameters in an elevated shell and returns its exit
/// code.
QString elevated(const QString& script, const QString& parameters)
{
    // Start-Process joins its arguments with blanks and adds no quotes, so a path with blanks is quoted here.
    const QString path =
        script.contains(QLatin1Char(' ')) ? QLatin1Char('"') + script + QLatin1Char('"') : script;
    // An error that is written under the preference 'Stop' ends the shell with code 1. Write-Error overrides
    // the preference, so that the code 1223 is returned.
    // The text is joined and not filled in with arg(): a path may contain "%1".
    return QStringLiteral("$ErrorActionPreference = 'Stop'; $script = '") + quoted(path) +
           QStringLiteral("'; $args = @('-NoProfile','-ExecutionPolicy','Bypass','-File',$script,") +
           parameters +
           QStringLiteral(
               "); try {   $p = Start-Process -FilePath 'powershell.exe' -ArgumentList $args -Verb RunAs "
               "-Wait -PassThru;   exit $p.ExitCode } "
               "catch {   Write-Error $_ -ErrorAction Continue; exit 1223 }");
}

} // namespace

QString installDriverCommand(const QString& script)
{
    return elevated(script, QStringLiteral("'-TrustBundledCertificate','-ScanDevices','-ForceBind'"));
}

QString uninstallDriverCommand(const QString& script)
{
    return elevated(script, QStringLiteral("'-ScanDevices'"));
}

} // namespace platform::powershell
