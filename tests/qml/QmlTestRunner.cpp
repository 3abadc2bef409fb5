// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/GenApplication.h"
#include "app/GenToolbox.h"
#include "tests/qml/TestInstrument.h"
#include "tests/support/TestCase.h"

#include <QCursor>
#include <QQmlContext>
#include <QQmlEngine>
#include <QQmlError>
#include <QtQuickTest>

#include <cstdio>

/// Moves the mouse cursor of the screen: in QML "TestCursor".
class TestCursor : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// Global position in device-independent pixels.
    Q_INVOKABLE void moveTo(int x, int y) { QCursor::setPos(x, y); }
};

/// Sets up the engine of each test document like the application's engine, and collects QML warnings.
class QmlTestSetup : public QObject
{
    Q_OBJECT

public:
    explicit QmlTestSetup(GenApplication& app) : m_app(app), m_instrument(*app.toolbox()->hidLink()) {}

    const QStringList& warnings() const { return m_warnings; }

public Q_SLOTS:
    void qmlEngineAvailable(QQmlEngine* engine)
    {
        m_app.prepareEngine(*engine);
        engine->rootContext()->setContextProperty("TestCursor", &m_cursor);
        engine->rootContext()->setContextProperty("TestInstrument", &m_instrument);
        connect(engine, &QQmlEngine::warnings, this, [this](const QList<QQmlError>& errors) {
            for (const QQmlError& error : errors)
                m_warnings.append(error.toString());
        });
    }

private:
    GenApplication& m_app;
    TestCursor m_cursor;
    TestInstrument m_instrument;
    QStringList m_warnings;
};

int main(int argc, char** argv)
{
    test::isolateHome();
    GenApplication app(argc, argv);
    app.registerQmlTypes();
    QmlTestSetup setup(app);
    const int failures = quick_test_main_with_setup(argc, argv, "qml", nullptr, &setup);
    for (const QString& warning : setup.warnings())
        std::fprintf(stderr, "QML warning, which fails the test: %s\n", qPrintable(warning));
    return failures != 0 ? failures : int(!setup.warnings().isEmpty());
}

#include "QmlTestRunner.moc"
