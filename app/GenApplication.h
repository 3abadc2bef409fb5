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

    /// Builds the toolbox with all tools and applies the stored language; no engine yet.
    GenApplication(int& argc, char** argv);
    ~GenApplication() override;

    GenToolbox* toolbox() const { return m_toolbox.get(); }
    /// The first root object of the main document, the main window; null before it is loaded.
    QObject* rootWindow() const { return m_rootWindow; }
    /// 0 Chinese, 1 English.
    int currentLanguage() const { return m_currentLanguage; }

    /// Re-reads the language setting and applies it: translator, default locale and every qsTr binding.
    Q_INVOKABLE void updateTranslation();
    /// Stores and applies a language (0 Chinese, anything else English). True when it is now in use.
    Q_INVOKABLE bool setLanguage(int language);

    void registerQmlTypes();
    /// Gives \a engine what the interface's documents expect: context properties, image provider, import
    /// path. A QML module that is missing later is said in a message.
    void prepareEngine(QQmlEngine& engine);
    /// Creates the engine and loads the main document. Always true: when the document yields no window, a
    /// message says what is missing, and closing it leaves the event loop with exit code 1.
    bool initQmlEngine();
    /// Deletes the engine, then the toolbox: bindings and QML singletons go before the objects they use.
    void shutdown();

Q_SIGNALS:
    void languageChanged(const QLocale& locale);
    void currentLanguageChanged();

private:
    void reportMissingWindow(const QString& reason);
    /// Says once when a page cannot be made because a QML module is missing.
    void reportMissingModule(const QList<QQmlError>& warnings);
    void reportUnstoredSettings(const QString& path);

    QQmlApplicationEngine* m_engine = nullptr;
    QObject* m_rootWindow = nullptr;
    QTranslator m_translator;
    /// Names for assistive technology, in a catalogue of their own.
    QTranslator m_accessibilityTranslator;
    QLocale m_locale;
    std::unique_ptr<GenToolbox> m_toolbox;
    int m_currentLanguage = Chinese;
    bool m_missingModuleReported = false;
};

/// The application object; null before its construction and after its destruction.
GenApplication* genApp();
