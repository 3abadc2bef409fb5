# SPDX-License-Identifier: GPL-3.0-or-later
<#
.SYNOPSIS
Removes the WinUSB driver of the controller in its boot mode (USB 1F3A:EFE8).

.DESCRIPTION
Needs administrator rights and Windows 10 or later. Removes every installed version of the package, from the
devices that use it too, and every certificate that an installation made or trusted. Without one it has nothing
to do.

Exit codes: 0 the driver is gone, 5 no administrator rights, any other the code of the Windows tool that failed.

.PARAMETER ScanDevices
Looks for devices afterwards, so that a controller that is plugged in is seen as the new device that it now is.
#>
[CmdletBinding()]
param(
    [switch]$ScanDevices
)

Set-StrictMode -Version 2
$ErrorActionPreference = 'Stop'

$InfName = 'quorvel-fel-winusb.inf'
$CertificateName = 'quorvel-fel-winusb.cer'
$CertificateSubject = 'CN=Quorvel FEL driver (this computer)'
$ExitAccessDenied = 5
$RebootRequired = 3010

function Stop-Script([int]$code, [string]$message) {
    [Console]::Error.WriteLine($message)
    exit $code
}

function Test-Administrator {
    $identity = [Security.Principal.WindowsIdentity]::GetCurrent()
    $principal = New-Object Security.Principal.WindowsPrincipal($identity)
    return $principal.IsInRole([Security.Principal.WindowsBuiltInRole]::Administrator)
}

# Runs pnputil; its output goes on, its exit code is returned.
function Invoke-PnpUtil([string[]]$arguments) {
    $output = & (Join-Path $env:SystemRoot 'System32\pnputil.exe') @arguments
    $code = $LASTEXITCODE
    $output | ForEach-Object { Write-Host $_ }
    return $code
}

# The names under which Windows keeps the package (oem12.inf). Its list is translated, so only the file names
# in it are read: each package begins with its own name, and its original name follows.
function Get-InstalledPackage {
    $current = $null
    $packages = @()
    foreach ($line in (& (Join-Path $env:SystemRoot 'System32\pnputil.exe') '/enum-drivers')) {
        if ($line -match '\b(oem\d+\.inf)\b') {
            $current = $Matches[1]
        } elseif ($current -and $line -match ('(^|[\s:])' + [Regex]::Escape($InfName) + '\s*$')) {
            $packages += $current
            $current = $null
        }
    }
    return $packages
}

# Removes the certificates that installations made. Making one leaves a copy of it in the store 'CA', and an
# interrupted installation the one with its key in 'My'.
function Remove-MadeCertificate {
    foreach ($storeName in @('Root', 'TrustedPublisher', 'CA', 'My')) {
        $made = @(Get-ChildItem -Path "Cert:\LocalMachine\$storeName" |
                Where-Object { $_.Subject -eq $CertificateSubject })
        foreach ($certificate in $made) {
            if ($certificate.HasPrivateKey) {
                Remove-Item -Path $certificate.PSPath -DeleteKey
            } else {
                Remove-Item -Path $certificate.PSPath
            }
        }
    }
}

# Stops trusting the certificate that a signed package brings along in $file.
function Remove-BundledCertificate([string]$file) {
    if (-not (Test-Path -LiteralPath $file)) { return }
    $certificate = New-Object Security.Cryptography.X509Certificates.X509Certificate2($file)
    foreach ($storeName in @('Root', 'TrustedPublisher')) {
        $path = "Cert:\LocalMachine\$storeName\$($certificate.Thumbprint)"
        if (Test-Path -Path $path) { Remove-Item -Path $path }
    }
}

try {
    if (-not (Test-Administrator)) {
        Stop-Script $ExitAccessDenied 'The driver can only be removed with administrator rights.'
    }
    $packages = @(Get-InstalledPackage)
    foreach ($package in $packages) {
        $code = Invoke-PnpUtil @('/delete-driver', $package, '/uninstall', '/force')
        if ($code -notin @(0, $RebootRequired)) {
            Stop-Script $code "Windows did not remove the driver package $package (pnputil exit code $code)."
        }
    }
    Remove-MadeCertificate
    Remove-BundledCertificate (Join-Path (Split-Path -Parent $MyInvocation.MyCommand.Path) $CertificateName)
    if ($ScanDevices) {
        # Older releases of Windows 10 know no such command; a replugged device is found there as well.
        $scan = Invoke-PnpUtil @('/scan-devices')
        if ($scan -ne 0) { Write-Output 'Unplug the controller and plug it in again.' }
    }
    if ($packages.Count -eq 0) {
        Write-Output 'The WinUSB driver for the controller in boot mode is not installed.'
    } else {
        Write-Output 'The WinUSB driver for the controller in boot mode is removed.'
    }
    exit 0
} catch {
    Stop-Script 1 "The driver could not be removed: $($_.Exception.Message)"
}
