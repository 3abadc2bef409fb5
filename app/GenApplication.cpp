// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/GenApplication.h"

#include "app/GenToolbox.h"
#include "app/SceneGraph.h"
#include "hid/HidLink.h"
#include "hid/RecordingControl.h"
#include "instrument/MultimeterReading.h"
#include "instrument/UiControl.h"
#include "platform/WindowSizing.h"
#include "qmlsupport/ChartSeriesFiller.h"
#include "qmlsupport/GenControlQmlGlobal.h"
#include "qmlsupport/ScreenToolsController.h"
#include "qmlsupport/TintedImageProvider.h"
#include "settings/GenSettings.h"
#include "storage/ApplicationInfo.h"
#include "storage/SettingsFile.h"
#include "upgrade/CUpgradeControl.h"

#include <QDebug>
#include <QDir>
#include <QIcon>
#include <QMessageBox>
#include <QQmlApplicationEngine>
#include <QQmlComponent>
#include <QQmlContext>
#include <QQuickWindow>
#include <QTimer>

namespace {

/// Exit code when the main document creates no window.
constexpr int cExitNoWindow = 1;

GenApplication* theApplication = nullptr;

QUrl mainDocument()
{
    return QUrl(QStringLiteral("qrc:/qml/main.qml"));
}

/// Shows a message and does not wait for its end. Readings continue behind it.
QMessageBox* showMessage(QMessageBox::Icon icon, const QString& text, const QString& details)
{
    auto* box = new QMessageBox(icon, QObject::tr("Quorvel"), text, QMessageBox::Ok);
    box->setAttribute(Qt::WA_DeleteOnClose);
    // The main window may appear later. The program ends with that window, not with this message.
    box->setWindowFlag(Qt::WindowStaysOnTopHint);
    box->setAttribute(Qt::WA_QuitOnClose, false);
    box->setModal(false);
    box->setInformativeText(details);
    box->show();
    return box;
}

/// Under Wayland, Qt destroys the surface of a closed window on the GUI thread. When its drawing thread
/// presents a frame at that moment, the program crashes. Therefore one thread does both there.
void chooseRenderLoop()
{
    constexpr char cRenderLoop[] = "QSG_RENDER_LOOP";
    if (platform::isWayland() && !qEnvironmentVariableIsSet(cRenderLoop))
        qputenv(cRenderLoop, "basic");
}

// The engine calls these when QML first uses a singleton, and owns what they return.

QObject* provideToolbox(QQmlEngine*, QJSEngine*)
{
    GenToolbox* toolbox = theApplication->toolbox();
    QQmlEngine::setObjectOwnership(toolbox, QQmlEngine::CppOwnership);
    return toolbox;
}

QObject* provideGlobals(QQmlEngine*, QJSEngine*)
{
    GenToolbox* toolbox = theApplication->toolbox();
    auto* globals = new GenControlQmlGlobal(theApplication, toolbox);
    globals->setToolbox(toolbox);
    return globals;
}

QObject* provideUpgradeControl(QQmlEngine*, QJSEngine*)
{
    return new CUpgradeControl(theApplication->toolbox()->genSettings()->file());
}

QObject* provideRecording(QQmlEngine*, QJSEngine*)
{
    auto* recording = new RecordingControl(theApplication->toolbox()->hidLink()->port());
    QObject::connect(theApplication, &GenApplication::languageChanged, recording,
                     &RecordingControl::retranslate);
    return recording;
}

template <class Singleton>
QObject* provide(QQmlEngine*, QJSEngine*)
{
    return new Singleton;
}

} // namespace

GenApplication* genApp()
{
    return theApplication;
}

GenApplication::GenApplication(int& argc, char** argv) : QApplication(argc, argv)
{
    theApplication = this;
    // Under Wayland a window has no icon of its own. The desktop uses that of the desktop entry.
    setDesktopFileName(QStringLiteral("org.quorvel.Quorvel"));
    m_toolbox = std::make_unique<GenToolbox>(this);
    m_toolbox->setChildToolboxes();
    updateTranslation();
    // The call is queued, because any thread may find the failure, and a message needs the event loop.
    m_toolbox->genSettings()->file()->setFailureHandler([this](const QString& path) {
        QMetaObject::invokeMethod(
            this, [this, path] { reportUnstoredSettings(path); }, Qt::QueuedConnection);
    });
}

GenApplication::~GenApplication()
{
    shutdown();
    theApplication = nullptr;
}

void GenApplication::registerQmlTypes()
{
    qmlRegisterSingletonType<ChartSeriesFiller>("ChartSeriesFiller", 1, 0, "ChartSeriesFiller",
                                                provide<ChartSeriesFiller>);
    qmlRegisterSingletonType<GenToolbox>("GenToolbox", 1, 0, "GenToolbox", provideToolbox);
    qmlRegisterSingletonType<GenControlQmlGlobal>("GenControl", 1, 0, "GenControl", provideGlobals);
    qmlRegisterSingletonType<ScreenToolsController>("GenControl.ScreenToolsController", 1, 0,
                                                    "ScreenToolsController", provide<ScreenToolsController>);
    qmlRegisterSingletonType<CUpgradeControl>("CUpgradeControl", 1, 0, "CUpgradeControl",
                                              provideUpgradeControl);
    qmlRegisterSingletonType<RecordingControl>("Recording", 1, 0, "Recording", provideRecording);
    qmlRegisterUncreatableMetaObject(protocol::staticMetaObject, "Instrument", 1, 0, "Instrument",
                                     QStringLiteral("Enumerations only"));
    qmlRegisterUncreatableType<MultimeterReading>("Instrument", 1, 0, "MultimeterReading",
                                                  QStringLiteral("Enumerations only"));
}

void GenApplication::prepareEngine(QQmlEngine& engine)
{
    engine.rootContext()->setContextProperty(QStringLiteral("applicationVersion"),
                                             QCoreApplication::applicationVersion());
    engine.rootContext()->setContextProperty(QStringLiteral("GenApp"), this);
    engine.addImageProvider(QStringLiteral("tint"), new TintedImageProvider);
    engine.addImportPath(QStringLiteral("qrc:/qml"));
    connect(&engine, &QQmlEngine::warnings, this, &GenApplication::reportMissingModule);
}

bool GenApplication::initQmlEngine()
{
    setApplicationVersion(::applicationVersion());
    setWindowIcon(QIcon(QStringLiteral(":/res/quorvel-icon.svg")));
    SceneGraph::instance().decide();
    chooseRenderLoop();
    // The glyphs of the software scene graph: those that OpenGL would make of outlines are thinner.
    QQuickWindow::setTextRenderType(QQuickWindow::NativeTextRendering);
    m_engine = new QQmlApplicationEngine(this);
    prepareEngine(*m_engine);
    m_engine->load(mainDocument());
    if (m_rootWindow == nullptr && !m_engine->rootObjects().isEmpty())
        m_rootWindow = m_engine->rootObjects().constFirst();
    if (auto* window = qobject_cast<QQuickWindow*>(m_rootWindow))
        SceneGraph::instance().watch(*window);
    if (m_rootWindow == nullptr) {
        const QString reason = QQmlComponent(m_engine, mainDocument()).errorString().trimmed();
        qCritical().noquote() << "The main window could not be loaded:" << reason;
        QTimer::singleShot(0, this, [this, reason] { reportMissingWindow(reason); });
    }
    return true;
}

void GenApplication::reportMissingWindow(const QString& reason)
{
    // There is no window behind the message.
    shutdown();
    const QMessageBox* box = showMessage(
        QMessageBox::Critical,
        translate("QObject", "The window of Quorvel cannot be shown because a part of the program is missing "
                             "or damaged. Please install Quorvel again."),
        reason);
    connect(box, &QMessageBox::finished, this, [] { QCoreApplication::exit(cExitNoWindow); });
}

void GenApplication::reportMissingModule(const QList<QQmlError>& warnings)
{
    // While the main document is loaded, initQmlEngine() reports the result.
    if (m_missingModuleReported || (m_engine != nullptr && m_rootWindow == nullptr))
        return;
    for (const QQmlError& warning : warnings) {
        if (!warning.description().contains(QLatin1String("is not installed")) &&
            !warning.description().contains(QLatin1String("plugin cannot be loaded")))
            continue;
        m_missingModuleReported = true;
        showMessage(QMessageBox::Critical,
                    translate("QObject",
                              "A part of Quorvel cannot be shown because it is missing or damaged. Please "
                              "install Quorvel again."),
                    warning.toString());
        return;
    }
}

void GenApplication::reportUnstoredSettings(const QString& path)
{
    // A second instance ends before it has used its settings.
    if (!m_toolbox)
        return;
    showMessage(
        QMessageBox::Warning,
        translate("QObject", "Settings cannot be stored in %1.")
            .arg(QDir::toNativeSeparators(QDir::cleanPath(path))),
        translate("QObject",
                  "Please check that the folder exists, has free space and may be written. Readings are not "
                  "affected."));
}

void GenApplication::shutdown()
{
    delete m_engine;
    m_engine = nullptr;
    m_rootWindow = nullptr;
    // A log line on another thread may use the settings shortly after this object was deleted.
    if (m_toolbox)
        m_toolbox->genSettings()->file()->setFailureHandler({});
    m_toolbox.reset();
}

void GenApplication::updateTranslation()
{
    GenSettings* settings = m_toolbox ? m_toolbox->genSettings() : nullptr;
    const int stored = settings != nullptr ? settings->file()->value(setting::language) : m_currentLanguage;
    const bool english = stored != Chinese;
    m_locale = english ? QLocale(QLocale::English, QLocale::UnitedStates)
                       : QLocale(QLocale::Chinese, QLocale::China);
    removeTranslator(&m_accessibilityTranslator);
    removeTranslator(&m_translator);
    if (m_translator.load(english ? QStringLiteral(":/localization/gen_en.qm")
                                  : QStringLiteral(":/localization/gen_cn.qm")))
        installTranslator(&m_translator);
    if (!english && m_accessibilityTranslator.load(QStringLiteral(":/localization/accessibility_cn.qm")))
        installTranslator(&m_accessibilityTranslator);
    QLocale::setDefault(m_locale);

    const int previous = m_currentLanguage;
    m_currentLanguage = english ? English : Chinese;
    if (m_engine != nullptr)
        m_engine->retranslate();
    if (m_currentLanguage != previous)
        Q_EMIT currentLanguageChanged();
    Q_EMIT languageChanged(m_locale);
}

bool GenApplication::setLanguage(int language)
{
    const int wanted = language != Chinese ? English : Chinese;
    if (wanted == m_currentLanguage)
        return true;
    GenSettings* settings = m_toolbox ? m_toolbox->genSettings() : nullptr;
    if (settings == nullptr) {
        m_currentLanguage = wanted;
        updateTranslation();
    } else {
        // The settings store calls updateTranslation() when this key is stored.
        settings->setValue(QLatin1String(setting::language.key), wanted);
    }
    return m_currentLanguage == wanted;
}
