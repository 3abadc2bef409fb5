// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/GenApplication.h"

#include "app/GenToolbox.h"
#include "instrument/MultimeterReading.h"
#include "instrument/UiControl.h"
#include "qmlsupport/ChartSeriesFiller.h"
#include "qmlsupport/GenControlQmlGlobal.h"
#include "qmlsupport/ScreenToolsController.h"
#include "qmlsupport/TintedImageProvider.h"
#include "settings/GenSettings.h"
#include "storage/ApplicationInfo.h"
#include "upgrade/CUpgradeControl.h"

#include <QDebug>
#include <QIcon>
#include <QOpenGLContext>
#include <QQmlApplicationEngine>
#include <QQmlContext>
#include <QQuickWindow>
#include <QTimer>

namespace {

GenApplication* theApplication = nullptr;

/// Qt Quick aborts the process when it finds no OpenGL, so look first and paint in software instead. The
/// context that the application shares between its windows tells, where it has one.
void chooseSceneGraphBackend()
{
    if (!QQuickWindow::sceneGraphBackend().isEmpty() || qEnvironmentVariableIsSet("QT_QUICK_BACKEND"))
        return;
    const QOpenGLContext* shared = QOpenGLContext::globalShareContext();
    if (shared != nullptr ? shared->isValid() : QOpenGLContext().create())
        return;
    qInfo() << "OpenGL is not available, the interface is painted in software";
    QQuickWindow::setSceneGraphBackend(QSGRendererInterface::Software);
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
    m_toolbox = std::make_unique<GenToolbox>(this);
    m_toolbox->setChildToolboxes();
    updateTranslation();
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
    qmlRegisterUncreatableMetaObject(PacketCodec::staticMetaObject, "Instrument", 1, 0, "Instrument",
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
}

bool GenApplication::initQmlEngine()
{
    setApplicationVersion(::applicationVersion());
    setWindowIcon(QIcon(QStringLiteral(":/res/quorvel-icon.svg")));
    chooseSceneGraphBackend();
    m_engine = new QQmlApplicationEngine(this);
    prepareEngine(*m_engine);
    m_engine->load(QUrl(QStringLiteral("qrc:/qml/main.qml")));
    if (m_rootWindow == nullptr && !m_engine->rootObjects().isEmpty())
        m_rootWindow = m_engine->rootObjects().constFirst();
    if (m_rootWindow == nullptr) {
        qCritical() << "The main window could not be loaded; the installation is damaged.";
        QTimer::singleShot(0, this, [] { QCoreApplication::exit(1); });
    }
    return true;
}

void GenApplication::shutdown()
{
    delete m_engine;
    m_engine = nullptr;
    m_rootWindow = nullptr;
    m_toolbox.reset();
}

void GenApplication::updateTranslation()
{
    GenSettings* settings = m_toolbox ? m_toolbox->genSettings() : nullptr;
    const int stored =
        settings != nullptr ? settings->iValue(QStringLiteral("language"), Chinese) : m_currentLanguage;
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
        // Storing this key makes the settings store call updateTranslation().
        settings->setValue(QStringLiteral("language"), wanted);
    }
    return m_currentLanguage == wanted;
}
