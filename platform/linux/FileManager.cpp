// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/FileManager.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QFileInfo>
#include <QProcess>
#include <QUrl>

namespace {

/// D-Bus interface of file managers (freedesktop.org).
const QString cFileManagerService = QStringLiteral("org.freedesktop.FileManager1");
const QString cFileManagerPath = QStringLiteral("/org/freedesktop/FileManager1");

bool openFolderOf(const QString& path)
{
    const QFileInfo info(path);
    const platform::ShellCommand command =
        platform::xdgOpenCommand(info.isDir() ? info.absoluteFilePath() : info.absolutePath());
    return QProcess::startDetached(command.program, command.arguments);
}

/// Returns true when a session bus exists. Without one the D-Bus library would start a daemon of its own,
/// which has no other users and outlives this process.
bool hasSessionBus()
{
    return qEnvironmentVariableIsSet("DBUS_SESSION_BUS_ADDRESS") ||
           QFileInfo::exists(qEnvironmentVariable("XDG_RUNTIME_DIR") + QStringLiteral("/bus"));
}

bool hasFileManager(const QDBusConnection& bus)
{
    if (!bus.isConnected())
        return false;
    if (bus.interface()->isServiceRegistered(cFileManagerService))
        return true;
    const QDBusReply<QStringList> activatable = bus.call(QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/"), QStringLiteral("org.freedesktop.DBus"),
        QStringLiteral("ListActivatableNames")));
    return activatable.isValid() && activatable.value().contains(cFileManagerService);
}

} // namespace

bool platform::showInFileManager(const QString& path)
{
    if (!hasSessionBus() || !hasFileManager(QDBusConnection::sessionBus()))
        return openFolderOf(path);

    QDBusMessage request = QDBusMessage::createMethodCall(cFileManagerService, cFileManagerPath,
                                                          cFileManagerService, QStringLiteral("ShowItems"));
    const QUrl url = QUrl::fromLocalFile(QFileInfo(path).absoluteFilePath());
    request << QStringList{url.toString(QUrl::FullyEncoded)} << QString();
    // A file manager may take seconds to start, so the answer is awaited in the background.
    auto* reply = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(request), qApp);
    QObject::connect(reply, &QDBusPendingCallWatcher::finished, reply, [path](QDBusPendingCallWatcher* call) {
        if (call->isError())
            openFolderOf(path);
        call->deleteLater();
    });
    return true;
}
