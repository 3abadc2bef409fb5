# SPDX-License-Identifier: GPL-3.0-or-later
<#
.SYNOPSIS
Installs the WinUSB driver for the controller in its boot mode (USB 1F3A:EFE8).

.DESCRIPTION
Needs administrator rights and Windows 10 or later. May be run again at any time: a package that is installed
already is kept, and devices that are bound already stay bound.

Exit codes: 0 the driver is installed (a device that is plugged in later gets it), 2 a file of the package is
missing, 5 no administrator rights, any other the code of the Windows tool that failed.

.PARAMETER TrustBundledCertificate
Trusts the certificate that the driver package is signed with. A package that ships without a signature gets
one here, with a certificate made on this computer for nothing else, whose private key is deleted at once. A
successful run removes the certificates of earlier runs, and a failed run its own.

.PARAMETER ScanDevices
Looks for new devices afterwards, so that a controller that is plugged in is bound without being replugged.

.PARAMETER ForceBind
Binds a controller that is plugged in even when Windows holds another driver for the better one.
#>
[CmdletBinding()]
param(
    [switch]$TrustBundledCertificate,
    [switch]$ScanDevices,
    [switch]$ForceBind
)

Set-StrictMode -Version 2
$ErrorActionPreference = 'Stop'

$HardwareId = 'USB\VID_1F3A&PID_EFE8'
$InfName = 'quorvel-fel-winusb.inf'
$CatalogName = 'quorvel-fel-winusb.cat'
$CertificateName = 'quorvel-fel-winusb.cer'
$CertificateSubject = 'CN=Quorvel FEL driver (this computer)'

$ExitFilesMissing = 2
$ExitAccessDenied = 5
# What pnputil answers: nothing left to do, and done but a restart completes it. Both are successes here.
$NoMoreItems = 259
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

# The certificates that this run has put into a store, as paths.
$script:addedCertificates = @()
# The thumbprint of the certificate that this run has made.
$script:madeThumbprint = ''

# Puts a certificate into the two stores that the driver installation asks.
function Add-TrustedCertificate([Security.Cryptography.X509Certificates.X509Certificate2]$certificate) {
    foreach ($storeName in @('Root', 'TrustedPublisher')) {
        $store = New-Object Security.Cryptography.X509Certificates.X509Store($storeName, 'LocalMachine')
        $store.Open('ReadWrite')
        try {
            $known = $store.Certificates.Find('FindByThumbprint', $certificate.Thumbprint, $false)
            if ($known.Count -eq 0) {
                $store.Add($certificate)
                $script:addedCertificates += "Cert:\LocalMachine\$storeName\$($certificate.Thumbprint)"
                Write-Output "Certificate $($certificate.Thumbprint) is trusted now ($storeName)."
            }
        } finally {
            $store.Close()
        }
    }
}

# Takes the certificates of this run out of the stores again.
function Remove-AddedCertificate {
    foreach ($path in $script:addedCertificates) {
        Remove-Item -Path $path -ErrorAction Continue
    }
}

# Removes the certificates that earlier runs made. Making one leaves a copy of it in the store 'CA', and an
# interrupted run the one with its key in 'My'. One that cannot be removed does not fail this run.
function Remove-EarlierCertificate {
    foreach ($storeName in @('Root', 'TrustedPublisher', 'CA', 'My')) {
        $earlier = @(Get-ChildItem -Path "Cert:\LocalMachine\$storeName" | Where-Object {
                $_.Subject -eq $CertificateSubject -and $_.Thumbprint -ne $script:madeThumbprint
            })
        foreach ($certificate in $earlier) {
            if ($certificate.HasPrivateKey) {
                Remove-Item -Path $certificate.PSPath -DeleteKey -ErrorAction Continue
            } else {
                Remove-Item -Path $certificate.PSPath -ErrorAction Continue
            }
        }
    }
}

# Signs the package in $folder with a certificate made for it and trusts that certificate.
function New-PackageSignature([string]$folder) {
    $catalog = Join-Path $folder $CatalogName
    $certificate = New-SelfSignedCertificate -Subject $CertificateSubject -Type CodeSigningCert `
        -CertStoreLocation 'Cert:\LocalMachine\My' -NotAfter (Get-Date).AddYears(10)
    $script:madeThumbprint = $certificate.Thumbprint
    $copy = "Cert:\LocalMachine\CA\$($certificate.Thumbprint)"
    try {
        $public = New-Object Security.Cryptography.X509Certificates.X509Certificate2(, $certificate.RawData)
        # The signature is valid only while its certificate is trusted.
        Add-TrustedCertificate $public
        New-FileCatalog -Path (Join-Path $folder $InfName) -CatalogFilePath $catalog -CatalogVersion 2.0 | Out-Null
        $signature = Set-AuthenticodeSignature -FilePath $catalog -Certificate $certificate -HashAlgorithm SHA256
        if ($signature.Status -ne 'Valid') {
            throw "The driver package could not be signed: $($signature.StatusMessage)"
        }
    } finally {
        # With its key: nothing else can ever be signed with a certificate that this computer trusts.
        Remove-Item -Path "Cert:\LocalMachine\My\$($certificate.Thumbprint)" -DeleteKey
        if (Test-Path -Path $copy) { Remove-Item -Path $copy -ErrorAction Continue }
    }
}

# Runs pnputil; its output goes on, its exit code is returned.
function Invoke-PnpUtil([string[]]$arguments) {
    $output = & (Join-Path $env:SystemRoot 'System32\pnputil.exe') @arguments
    $code = $LASTEXITCODE
    $output | ForEach-Object { Write-Host $_ }
    return $code
}

function Test-DevicePresent {
    $devices = @(Get-CimInstance Win32_PnPEntity | Where-Object { $_.PNPDeviceID -like "$HardwareId*" })
    return $devices.Count -gt 0
}

# Binds every device that is plugged in to the package, whatever driver it has. Returns 0 or the Windows code.
function Set-DeviceDriver([string]$inf) {
    Add-Type -Namespace Quorvel -Name Newdev -MemberDefinition @'
[DllImport("newdev.dll", CharSet = CharSet.Unicode, SetLastError = true)]
public static extern bool UpdateDriverForPlugAndPlayDevicesW(
    IntPtr parent, string hardwareId, string infPath, uint flags, out bool rebootRequired);
'@
    $installForce = 1
    $reboot = $false
    if ([Quorvel.Newdev]::UpdateDriverForPlugAndPlayDevicesW([IntPtr]::Zero, $HardwareId, $inf, $installForce, [ref]$reboot)) {
        if ($reboot) { Write-Output 'Windows asks for a restart to complete the binding.' }
        return 0
    }
    return [Runtime.InteropServices.Marshal]::GetLastWin32Error()
}

$work = $null
$installed = $false
try {
    if (-not (Test-Administrator)) {
        Stop-Script $ExitAccessDenied 'The driver can only be installed with administrator rights.'
    }
    $source = Split-Path -Parent $MyInvocation.MyCommand.Path
    if (-not (Test-Path -LiteralPath (Join-Path $source $InfName))) {
        Stop-Script $ExitFilesMissing "The driver package is incomplete: $InfName is missing in $source."
    }

    # Outside the program folder: the signature is made in the package's folder, and nobody else may write there.
    $work = Join-Path $env:SystemRoot ("Temp\quorvel-fel-" + [Guid]::NewGuid().ToString('N'))
    New-Item -ItemType Directory -Path $work | Out-Null
    Copy-Item -LiteralPath (Join-Path $source $InfName) -Destination $work
    $catalog = Join-Path $source $CatalogName
    if (Test-Path -LiteralPath $catalog) {
        Copy-Item -LiteralPath $catalog -Destination $work
        $bundled = Join-Path $source $CertificateName
        if ($TrustBundledCertificate -and (Test-Path -LiteralPath $bundled)) {
            Add-TrustedCertificate (New-Object Security.Cryptography.X509Certificates.X509Certificate2($bundled))
        }
    } elseif ($TrustBundledCertificate) {
        New-PackageSignature $work
    } else {
        Stop-Script $ExitFilesMissing "The driver package is not signed. Run with -TrustBundledCertificate to sign it on this computer."
    }

    $inf = Join-Path $work $InfName
    $code = Invoke-PnpUtil @('/add-driver', $inf, '/install')
    if ($code -notin @(0, $NoMoreItems, $RebootRequired)) {
        Stop-Script $code "Windows refused the driver package (pnputil exit code $code)."
    }
    # Windows holds the package from here on, whatever becomes of the binding: its certificate stays.
    $installed = $true
    Remove-EarlierCertificate
    if ($ScanDevices) {
        # Older releases of Windows 10 know no such command; a replugged device is found there as well.
        $scan = Invoke-PnpUtil @('/scan-devices')
        if ($scan -ne 0) { Write-Output 'Unplug the controller and plug it in again.' }
    }
    if ($ForceBind -and (Test-DevicePresent)) {
        $bind = @(Set-DeviceDriver $inf)
        $code = [int]$bind[-1]
        if ($code -ne 0) { Stop-Script $code "The controller could not be bound to WinUSB (Windows error $code)." }
    }
    Write-Output 'The WinUSB driver for the controller in boot mode is installed.'
    exit 0
} catch {
    Stop-Script 1 "The driver could not be installed: $($_.Exception.Message)"
} finally {
    if (-not $installed) { Remove-AddedCertificate }
    if ($work -and (Test-Path -LiteralPath $work)) {
        Remove-Item -LiteralPath $work -Recurse -Force -ErrorAction SilentlyContinue
    }
}
