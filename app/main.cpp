// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/GenApplication.h"
#include "platform/Allocator.h"
#include "storage/ApplicationInfo.h"

#include <QDebug>
#include <QLocalServer>
#include <QLocalSocket>
#include <QMessageBox>
#include <QTextCodec>

#include <limits>
#include <memory>

namespace {

constexpr int cInstanceProbeTimeoutMs = 30;

/// Whether another instance listens on the single-instance socket.
bool anotherInstanceRuns()
{
    QLocalSocket probe;
    probe.connectToServer(singleInstanceKey(), QIODevice::ReadWrite);
    if (!probe.waitForConnected(cInstanceProbeTimeoutMs))
        return false;
    probe.disconnectFromServer();
    return true;
}

} // namespace

int main(int argc, char** argv)
{
    platform::returnLargeBlocksAtOnce();
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling, true);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps, true);
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts, true);
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));

    auto app = std::make_unique<GenApplication>(argc, argv);
    if (anotherInstanceRuns()) {
        // Before the message, whose event loop would start the timers of the core objects: they would open
        // the instrument that the running instance reads.
        app->shutdown();
        QMessageBox::warning(nullptr, QObject::tr("Quorvel"),
                             QObject::tr("An application is already running."), QMessageBox::Ok);
        return 0;
    }
    // Without parent and outside the application: it stays open until the process leaves main.
    QLocalServer instanceServer;
    // Nobody takes the connections of later instances. With a limit, enough of them would end the listening.
    instanceServer.setMaxPendingConnections(std::numeric_limits<int>::max());
    QLocalServer::removeServer(singleInstanceKey());
    if (!instanceServer.listen(singleInstanceKey()))
        return -1;
    app->registerQmlTypes();
    if (!app->initQmlEngine())
        return -1;
    const int exitCode = QCoreApplication::exec();
    app->shutdown();
    app.reset();
    qDebug() << "After app delete";
    return exitCode;
}
