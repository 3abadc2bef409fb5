// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QApplication>
#include <QList>
#include <QLocale>
#include <QQmlError>
#include <QTranslator>

#include <memory>

class GenToolbox;
class QQmlApplicationEngine;
class QQmlEngine;

/**
 * The application object, one per process: owns the toolbox with the core objects and the QML engine,
 * and switches the interface language. Lives on the GUI thread; in QML the context property "GenApp".
 */
class GenApplication : public QApplication
{
    Q_OBJECT
    Q_PROPERTY(int currentLanguage READ currentLanguage NOTIFY currentLanguageChanged)

public:
    enum Language { Chinese = 0, English = 1 };

    /// Creates the toolbox with all tools and applies the stored language. Creates no engine.
    GenApplication(int& argc, char** argv);
    ~GenApplication() override;

    GenToolbox* toolbox() const { return m_toolbox.get(); }
    /// The main window, the first root object of the main document; null before it is loaded.
    QObject* rootWindow() const { return m_rootWindow; }
    /// 0 Chinese, 1 English.
    int currentLanguage() const { return m_currentLanguage; }

    /// Reads the language setting again and applies it: translator, default locale and every qsTr binding.
    Q_INVOKABLE void updateTranslation();
    /// Stores and applies a language: 0 Chinese, any other number English. Returns true when it is in use.
    Q_INVOKABLE bool setLanguage(int language);

    void registerQmlTypes();
    /// Sets the context properties, the image provider and the import path of \a engine for the interface's
    /// documents. When a QML module is missing later, a message reports it.
    void prepareEngine(QQmlEngine& engine);
    /// Creates the engine and loads the main document. Always returns true. When the document creates no
    /// window, a message reports the missing part. Closing the message ends the event loop with exit code 1.
    bool initQmlEngine();
    /// Deletes the engine and then the toolbox, because bindings and QML singletons use its objects.
    void shutdown();

Q_SIGNALS:
    void languageChanged(const QLocale& locale);
    void currentLanguageChanged();

private:
    void reportMissingWindow(const QString& reason);
    /// Reports once that a page cannot be created because a QML module is missing.
    void reportMissingModule(const QList<QQmlError>& warnings);
    void reportUnstoredSettings(const QString& path);

    QQmlApplicationEngine* m_engine = nullptr;
    QObject* m_rootWindow = nullptr;
    QTranslator m_translator;
    /// Translator of the separate catalogue with the names for assistive technology.
    QTranslator m_accessibilityTranslator;
    QLocale m_locale;
    std::unique_ptr<GenToolbox> m_toolbox;
    int m_currentLanguage = Chinese;
    bool m_missingModuleReported = false;
};

/// The application object; null before its construction and after its destruction.
GenApplication* genApp();
