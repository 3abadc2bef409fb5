// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/GenApplication.h"
#include "app/SceneGraph.h"
#include "app/SingleInstance.h"
#include "platform/Allocator.h"

#include <QDebug>
#include <QMessageBox>
#include <QTextCodec>

#include <memory>

namespace {

/// Exit code when the socket for later instances cannot be opened. The system shows 255.
constexpr int cExitNoSocket = -1;

} // namespace

int main(int argc, char** argv)
{
    platform::returnLargeBlocksAtOnce();
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling, true);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps, true);
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts, true);
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
    SceneGraph::instance().prepare();

    // This object outlives the application object. Until then the instrument may still be open.
    SingleInstance instance;
    auto app = std::make_unique<GenApplication>(argc, argv);
    const SingleInstance::Claim claim = instance.claim();
    // This check comes before any message. The event loop of a message would start the timers of the core
    // objects, and they would open the instrument that the running instance reads.
    if (claim != SingleInstance::Claim::First)
        app->shutdown();
    if (claim == SingleInstance::Claim::AnotherRuns) {
        QMessageBox::warning(nullptr, QObject::tr("Quorvel"),
                             QObject::tr("An application is already running."), QMessageBox::Ok);
        return 0;
    }
    if (claim == SingleInstance::Claim::Failed) {
        qCritical().noquote() << "Quorvel cannot start:" << instance.errorString();
        QMessageBox::critical(nullptr, QObject::tr("Quorvel"),
                              QObject::tr("Quorvel cannot start because it cannot open its local socket.") +
                                  QLatin1String("\n\n") + instance.errorString());
        return cExitNoSocket;
    }
    app->registerQmlTypes();
    app->initQmlEngine();
    const int exitCode = QCoreApplication::exec();
    app->shutdown();
    app.reset();
    qDebug() << "After app delete";
    return exitCode;
}
