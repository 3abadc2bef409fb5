// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/SceneGraph.h"

#include "platform/GraphicsEvidence.h"
#include "qmlsupport/GenControlQmlGlobal.h"

#include <QCoreApplication>
#include <QDebug>
#include <QFile>
#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QOpenGLFunctions>
#include <QQuickWindow>

#include <memory>

namespace {

constexpr const char* cBackendVariable = "QT_QUICK_BACKEND";
/// Name of OpenGL in that variable, which Qt itself does not know.
constexpr const char* cOpenGlName = "opengl";
constexpr const char* cSoftwareName = "software";
/// Qt's plug-in for X11 reads in it which library gives it OpenGL.
constexpr const char* cIntegrationVariable = "QT_XCB_GL_INTEGRATION";
constexpr const char* cNoIntegration = "none";

/// What OpenGL says about itself.
struct OpenGlNames
{
    QString renderer;
    QString driver;

    /// The names of the context that is current in this thread.
    static OpenGlNames current()
    {
        OpenGlNames names;
        if (const QOpenGLContext* context = QOpenGLContext::currentContext()) {
            const auto text = [context](GLenum name) {
                return QString::fromLatin1(
                    reinterpret_cast<const char*>(context->functions()->glGetString(name)));
            };
            names.renderer = text(GL_RENDERER);
            names.driver = text(GL_VERSION);
        }
        return names;
    }
};

} // namespace

SceneGraph& SceneGraph::instance()
{
    static SceneGraph sceneGraph;
    return sceneGraph;
}

void SceneGraph::prepare()
{
    m_prepared = true;
    const QByteArray wanted = qgetenv(cBackendVariable);
    if (wanted == cOpenGlName) {
        // Empty, it is Qt's own choice, which is OpenGL.
        qputenv(cBackendVariable, "");
        choose(Backend::UserChosen, QStringLiteral("QT_QUICK_BACKEND is opengl"));
        return;
    }
    if (!wanted.isNull()) {
        choose(Backend::UserChosen, QStringLiteral("QT_QUICK_BACKEND is set"));
        if (wanted == cSoftwareName)
            keepOpenGlOut();
        return;
    }
    const platform::GraphicsEvidence evidence = platform::graphicsEvidence();
    if (!evidence.noProcessor.isEmpty()) {
        useSoftware(evidence.noProcessor);
        return;
    }
    m_fingerprint = QStringLiteral("Qt %1\n").arg(QLatin1String(qVersion())) + evidence.fingerprint;
    const auto memory = SceneGraphMemory::read(m_fingerprint, QDateTime::currentDateTimeUtc());
    if (!memory)
        return;
    m_renderer = memory->renderer;
    m_driver = memory->driver;
    switch (memory->state) {
    case SceneGraphMemory::State::Works:
        choose(Backend::OpenGl, QStringLiteral("remembered"));
        break;
    case SceneGraphMemory::State::Trying:
        m_failed = true;
        useSoftware(QStringLiteral("OpenGL showed no frame at the last start"));
        break;
    case SceneGraphMemory::State::Unusable:
        useSoftware(QStringLiteral("remembered"));
        break;
    }
}

void SceneGraph::decide()
{
    if (!m_prepared)
        prepare();
    if (m_hidesOpenGl) {
        // The plug-in reads the variable when it is first asked about OpenGL. Programs that this one starts
        // must not.
        QOpenGLContext::supportsThreadedOpenGL();
        qunsetenv(cIntegrationVariable);
        m_hidesOpenGl = false;
    }
    // Not earlier: a second instance ends without a window, and without having written anything.
    if (m_failed)
        remember(SceneGraphMemory::State::Unusable);
    if (m_backend == Backend::Undecided || m_backend == Backend::OpenGl)
        tryOpenGl();
    qInfo().noquote() << "Scene graph:" << description();
}

QString SceneGraph::description() const
{
    QString name = QLatin1String(m_backend == Backend::Software ? cSoftwareName : cOpenGlName);
    if (m_backend == Backend::UserChosen && !qEnvironmentVariableIsEmpty(cBackendVariable))
        name = qEnvironmentVariable(cBackendVariable);
    return QStringLiteral("%1 (%2)").arg(name, m_reason);
}

void SceneGraph::choose(Backend backend, const QString& reason)
{
    m_backend = backend;
    m_reason = reason;
}

void SceneGraph::useSoftware(const QString& reason)
{
    choose(Backend::Software, reason);
    QQuickWindow::setSceneGraphBackend(QSGRendererInterface::Software);
    keepOpenGlOut();
}

void SceneGraph::keepOpenGlOut()
{
    if (QCoreApplication::instance() != nullptr)
        return;
    // With it, the application object would make a context, and there will be none to share with.
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts, false);
    if (!qEnvironmentVariableIsSet(cIntegrationVariable)) {
        qputenv(cIntegrationVariable, cNoIntegration);
        m_hidesOpenGl = true;
    }
}

void SceneGraph::tryOpenGl()
{
    // From here to the first frame, the end of the process is OpenGL's fault, unless it ends in order.
    remember(SceneGraphMemory::State::Trying);
    m_trying = true;
    QObject::connect(qApp, &QCoreApplication::aboutToQuit, qApp, [this] {
        if (m_trying)
            QFile::remove(SceneGraphMemory::path());
    });

    std::unique_ptr<QOpenGLContext> own;
    QOpenGLContext* context = QOpenGLContext::globalShareContext();
    if (context == nullptr) {
        own = std::make_unique<QOpenGLContext>();
        own->create();
        context = own.get();
    }
    if (!context->isValid()) {
        giveUpOpenGl(QStringLiteral("OpenGL is not available"));
        return;
    }
    if (m_backend == Backend::OpenGl)
        return;
    QOffscreenSurface surface;
    surface.setFormat(context->format());
    surface.create();
    if (!context->makeCurrent(&surface)) {
        giveUpOpenGl(QStringLiteral("OpenGL cannot be used"));
        return;
    }
    const OpenGlNames names = OpenGlNames::current();
    context->doneCurrent();
    m_renderer = names.renderer;
    m_driver = names.driver;
    if (platform::isProcessorRenderer(names.renderer))
        giveUpOpenGl(QStringLiteral("OpenGL is rendered by %1").arg(names.renderer));
    else
        choose(Backend::OpenGl, names.renderer);
}

void SceneGraph::giveUpOpenGl(const QString& reason)
{
    m_trying = false;
    remember(SceneGraphMemory::State::Unusable);
    useSoftware(reason);
}

void SceneGraph::watch(QQuickWindow& window)
{
    if (m_backend != Backend::OpenGl && m_backend != Backend::UserChosen)
        return;
    QObject::connect(&window, &QQuickWindow::sceneGraphError, &window,
                     [this](QQuickWindow::SceneGraphError, const QString& message) { onFailure(message); });
    if (m_backend != Backend::OpenGl)
        return;
    // In the thread that draws, while its OpenGL context is current.
    QObject::connect(
        &window, &QQuickWindow::sceneGraphInitialized, &window,
        [this, &window] {
            const OpenGlNames names = OpenGlNames::current();
            QMetaObject::invokeMethod(&window, [this, names] {
                m_renderer = names.renderer;
                m_driver = names.driver;
            });
        },
        Qt::DirectConnection);
    m_firstFrame =
        QObject::connect(&window, &QQuickWindow::frameSwapped, &window, [this] { onFirstFrame(); });
}

void SceneGraph::onFirstFrame()
{
    QObject::disconnect(m_firstFrame);
    m_trying = false;
    // The driver changed without a trace, or the graphics processor is out of order: right at the next start.
    const bool processor = platform::isProcessorRenderer(m_renderer);
    remember(processor ? SceneGraphMemory::State::Unusable : SceneGraphMemory::State::Works);
    if (processor)
        qInfo().noquote() << "Scene graph: software from the next start, because OpenGL is rendered by"
                          << m_renderer;
}

void SceneGraph::onFailure(const QString& message)
{
    qCritical().noquote() << "OpenGL cannot show the window, Quorvel starts again without it:" << message;
    m_trying = false;
    remember(SceneGraphMemory::State::Unusable);
    // Also where nothing can be remembered, the next process must not try again.
    qputenv(cBackendVariable, cSoftwareName);
    QMetaObject::invokeMethod(
        qApp, [] { GenControlQmlGlobal(nullptr, nullptr).restartApp(); }, Qt::QueuedConnection);
}

void SceneGraph::remember(SceneGraphMemory::State state) const
{
    SceneGraphMemory memory;
    memory.state = state;
    memory.fingerprint = m_fingerprint;
    memory.renderer = m_renderer;
    memory.driver = m_driver;
    memory.written = QDateTime::currentDateTimeUtc();
    if (!memory.write())
        qDebug() << "What was learnt about OpenGL cannot be written to" << SceneGraphMemory::path();
}
