// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/GraphicsNodes.h"

#include <QDir>
#include <QFile>

namespace platform {

namespace {

// What chooses display, driver and renderer.
constexpr const char* cGraphicsVariables[] = {"DISPLAY",
                                              "WAYLAND_DISPLAY",
                                              "XDG_SESSION_TYPE",
                                              "QT_QPA_PLATFORM",
                                              "QT_XCB_GL_INTEGRATION",
                                              "GALLIUM_DRIVER",
                                              "MESA_LOADER_DRIVER_OVERRIDE",
                                              "__GLX_VENDOR_LIBRARY_NAME",
                                              "DRI_PRIME"};

QString textOf(const QString& path)
{
    QFile file(path);
    // Entries of the device tree are small; their size is unknown.
    constexpr qint64 cMaxBytes = 4096;
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.read(cMaxBytes)).simplified() : QString();
}

/// A display of the X server of another computer, or one forwarded by a secure shell.
bool isRemoteDisplay(const QString& display)
{
    const QString host = display.section(QLatin1Char(':'), 0, -2);
    return !host.isEmpty() && host != QLatin1String("unix") && !host.startsWith(QLatin1Char('/'));
}

} // namespace

GraphicsEvidence graphicsEvidence(const QProcessEnvironment& environment, const QString& devices,
                                  const QString& tree)
{
    GraphicsEvidence evidence;
    QStringList parts;
    for (const char* name : cGraphicsVariables) {
        const QString variable = QLatin1String(name);
        if (environment.contains(variable))
            parts << variable + QLatin1Char('=') + environment.value(variable);
    }
    const QStringList renderNodes = QDir(devices + QLatin1String("/dri"))
                                        .entryList({QStringLiteral("renderD*")}, QDir::System | QDir::Files);
    for (const QString& node : renderNodes)
        parts << node + QLatin1Char(' ') +
                     textOf(tree + QLatin1String("/class/drm/") + node + QLatin1String("/device/uevent"));
    // Drivers with nodes of their own: NVIDIA's, Windows' under its Linux subsystem, those of ARM computers.
    const QStringList otherNodes = QDir(devices).entryList(
        {QStringLiteral("nvidiactl"), QStringLiteral("dxg"), QStringLiteral("mali*"),
         QStringLiteral("kgsl-3d0"), QStringLiteral("galcore"), QStringLiteral("pvrsrvkm")},
        QDir::System | QDir::Files);
    parts << otherNodes << textOf(tree + QLatin1String("/module/nvidia/version"));
    evidence.fingerprint = parts.join(QLatin1Char('\n'));

    const QString always = environment.value(QStringLiteral("LIBGL_ALWAYS_SOFTWARE")).toLower();
    if (!always.isEmpty() && always != QLatin1String("0") && always != QLatin1String("false"))
        evidence.noProcessor = QStringLiteral("LIBGL_ALWAYS_SOFTWARE is set");
    else if (environment.value(QStringLiteral("WAYLAND_DISPLAY")).isEmpty() &&
             isRemoteDisplay(environment.value(QStringLiteral("DISPLAY"))))
        evidence.noProcessor = QStringLiteral("the display is remote");
    else if (renderNodes.isEmpty() && otherNodes.isEmpty())
        evidence.noProcessor = QStringLiteral("there is no graphics processor");
    return evidence;
}

GraphicsEvidence graphicsEvidence()
{
    return graphicsEvidence(QProcessEnvironment::systemEnvironment(), QStringLiteral("/dev"),
                            QStringLiteral("/sys"));
}

} // namespace platform
