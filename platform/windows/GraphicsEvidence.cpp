// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/GraphicsEvidence.h"

#include <QStringList>

#include <windows.h>

namespace platform {

namespace {

/// The driver's version of an adapter whose registry key EnumDisplayDevices gave; empty when there is none.
QString driverVersion(const wchar_t* deviceKey)
{
    constexpr wchar_t cMachineRoot[] = L"\\Registry\\Machine\\";
    const QString key = QString::fromWCharArray(deviceKey);
    const QString root = QString::fromWCharArray(cMachineRoot);
    if (!key.startsWith(root, Qt::CaseInsensitive))
        return QString();
    wchar_t version[64] = {};
    DWORD bytes = sizeof(version) - sizeof(wchar_t);
    const std::wstring path = key.mid(root.size()).toStdWString();
    HKEY opened = nullptr;
    if (RegOpenKeyExW(HKEY_LOCAL_MACHINE, path.c_str(), 0, KEY_QUERY_VALUE, &opened) != ERROR_SUCCESS)
        return QString();
    DWORD type = 0;
    const LSTATUS status =
        RegQueryValueExW(opened, L"DriverVersion", nullptr, &type, reinterpret_cast<BYTE*>(version), &bytes);
    RegCloseKey(opened);
    return status == ERROR_SUCCESS && type == REG_SZ ? QString::fromWCharArray(version) : QString();
}

} // namespace

GraphicsEvidence graphicsEvidence()
{
    GraphicsEvidence evidence;
    QStringList parts;
    bool anyProcessor = false;
    QString withoutProcessor;
    DISPLAY_DEVICEW adapter = {};
    adapter.cb = sizeof(adapter);
    for (DWORD i = 0; EnumDisplayDevicesW(nullptr, i, &adapter, 0) != 0; ++i) {
        if ((adapter.StateFlags & DISPLAY_DEVICE_ATTACHED_TO_DESKTOP) != 0) {
            const QString name = QString::fromWCharArray(adapter.DeviceString);
            parts << name + QLatin1Char(' ') + QString::fromWCharArray(adapter.DeviceID) + QLatin1Char(' ') +
                         driverVersion(adapter.DeviceKey);
            if (isProcessorRenderer(name))
                withoutProcessor = name;
            else
                anyProcessor = true;
        }
        adapter = {};
        adapter.cb = sizeof(adapter);
    }
    evidence.fingerprint = parts.join(QLatin1Char('\n'));
    if (GetSystemMetrics(SM_REMOTESESSION) != 0)
        evidence.noProcessor = QStringLiteral("the session is remote");
    else if (!anyProcessor && !withoutProcessor.isEmpty())
        evidence.noProcessor = QStringLiteral("the display adapter is ") + withoutProcessor;
    return evidence;
}

} // namespace platform
