// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/GenApplication.h"
#include "app/GenToolbox.h"
#include "hid/HidLink.h"
#include "qmlsupport/GenPalette.h"
#include "qmlsupport/ScreenTools.h"
#include "qmlsupport/ToolsManager.h"
#include "settings/GenSettings.h"
#include "system/SystemManager.h"
#include "tests/qml/TestInstrument.h"
#include "tests/support/HttpFaultServer.h"
#include "tests/support/ScriptFolder.h"
#include "tests/support/TestCase.h"
#include "tests/unit/app/ItemSearch.h"

#include <umockdev.h>

#include <QMetaMethod>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickWindow>
#include <QtTest>

#include <array>

namespace {

const QByteArray cBootController("P: /devices/usb1/1-2\nE: SUBSYSTEM=usb\nE: DEVTYPE=usb_device\n"
                                 "E: PRODUCT=1f3a/efe8/2b3\nA: idVendor=1f3a\\n\nA: idProduct=efe8\\n\n\n");
/// It starts the program again, and this one is a test.
const QByteArray cLeftOut("restartApp()");
constexpr int cLoadTimeoutMs = 20000;

} // namespace

/// Every method that the interface may call returns before anything else happens. Page, language and
/// connection change and the window closes while the work continues, but never while the call is on the
/// stack.
class InvokablesTest : public TestCase
{
    Q_OBJECT

private:
    /// Returns every object that the interface can reach.
    QList<QObject*> objects() const
    {
        const GenToolbox* toolbox = genApp()->toolbox();
        QList<QObject*> all{genApp(),
                            genApp()->toolbox(),
                            toolbox->genPalette(),
                            toolbox->screenTool(),
                            toolbox->genSettings(),
                            toolbox->toolsManager(),
                            toolbox->hidLink(),
                            toolbox->systemManager()};
        for (const auto& [module, type] :
             {std::pair("GenControl", "GenControl"),
              std::pair("GenControl.ScreenToolsController", "ScreenToolsController"),
              std::pair("ChartSeriesFiller", "ChartSeriesFiller"),
              std::pair("CUpgradeControl", "CUpgradeControl"), std::pair("Recording", "Recording")})
            all.append(qmlEngine(m_window)->singletonInstance<QObject*>(qmlTypeId(module, 1, 0, type)));
        return all;
    }

    QQuickItem* page() const { return m_stack->property("currentPage").value<QQuickItem*>(); }

public:
    /// Calls the method of the current row from a handler of the page.
    Q_INVOKABLE void call()
    {
        std::array<QVariant, 6> values;
        std::array<QGenericArgument, 6> arguments;
        for (int i = 0; i < m_method.parameterCount(); ++i) {
            QVariant& value = values.at(size_t(i));
            value = QVariant(m_method.parameterType(i), nullptr);
            // A firmware type, and a key that can be stored.
            if (m_method.name() == "startUpgrade" || (m_method.name() == "setValue" && i == 0))
                value = QStringLiteral("F1");
            arguments.at(size_t(i)) = QGenericArgument(value.typeName(), value.constData());
        }
        m_calling = true;
        m_method.invoke(m_object, Qt::DirectConnection, arguments.at(0), arguments.at(1), arguments.at(2),
                        arguments.at(3), arguments.at(4), arguments.at(5));
        m_calling = false;
    }

private:
    void disturb()
    {
        m_disturbedDuringTheCall = m_calling;
        m_disturbed = true;
        const int other = m_stack->property("currentIndex").toInt() == 5 ? 4 : 5;
        QMetaObject::invokeMethod(m_column, "selectIndex", Q_ARG(QVariant, other), Q_ARG(QVariant, true));
        genApp()->setLanguage(1 - genApp()->currentLanguage());
        m_instrument.unplug();
        m_window->close();
    }

private Q_SLOTS:
    void initTestCase()
    {
        m_testbed = umockdev_testbed_new();
        if (!umockdev_in_mock_environment())
            QSKIP("Run this under umockdev-wrapper.");
        QVERIFY(umockdev_testbed_add_from_string(m_testbed, cBootController.constData(), nullptr));
        m_scripts.add("sunxi-fel", "out AWUSBFEX\\n\nif 1 -p write writes|\nif 1 -p hang");
        m_scripts.add("xdg-open");
        m_server.setReply("/boot.bin", HttpFaultServer::Reply::of("image"));
        m_server.setReply(
            "/api/mcu/firmware_list",
            HttpFaultServer::Reply::of("{\"firmware\":[{\"type\":\"F1\",\"files\":[{\"name\":\"boot.bin\","
                                       "\"url\":\"" +
                                       m_server.url("/boot.bin").toLatin1() + "\"}]}]}"));
        QGuiApplication::setQuitOnLastWindowClosed(false);
        genApp()->registerQmlTypes();
        SystemManager* manager = genApp()->toolbox()->systemManager();
        manager->setServerHost("http://127.0.0.1");
        manager->setApiPort(m_server.port());
        QVERIFY(genApp()->initQmlEngine());
        m_window = qobject_cast<QQuickWindow*>(genApp()->rootWindow());
        QVERIFY(m_window && QTest::qWaitForWindowExposed(m_window));
        m_stack = itemWith(m_window->contentItem(), "currentPage");
        m_column = itemWith(m_window->contentItem(), "collapsedButtonHeight");
        QVERIFY(m_stack && m_column);
        QTRY_VERIFY_WITH_TIMEOUT(page(), cLoadTimeoutMs);
        QTRY_COMPARE(manager->mcuTypes(), QStringList{"F1"});
    }

    void invokable_data()
    {
        const test::Table<QObject*, int> table("object", "method");
        const QList<QObject*> all = objects();
        for (QObject* object : all) {
            QVERIFY(object);
            const QMetaObject* type = object->metaObject();
            for (int i = type->methodOffset(); i < type->methodCount(); ++i) {
                const QMetaMethod method = type->method(i);
                if (method.methodType() == QMetaMethod::Method && method.methodSignature() != cLeftOut)
                    table.row((type->className() + QByteArray("::") + method.methodSignature()).constData(),
                              object, i);
            }
        }
    }

    void invokable()
    {
        QFETCH(QObject*, object);
        QFETCH(int, method);
        m_object = object;
        m_method = object->metaObject()->method(method);
        m_disturbed = false;
        QVERIFY(m_instrument.plugIn());
        m_window->show();
        const QPointer<QQuickItem> before(page());
        QQmlComponent handler(qmlEngine(m_window));
        handler.setData("import QtQml 2.12\nQtObject { signal act(var test); onAct: test.call() }", QUrl());
        QObject* button = handler.create(qmlContext(page()));
        QVERIFY2(button, qPrintable(handler.errorString()));
        button->setParent(page());
        QMetaObject::invokeMethod(
            this, [this] { disturb(); }, Qt::QueuedConnection);
        QMetaObject::invokeMethod(button, "act", Q_ARG(QVariant, QVariant::fromValue<QObject*>(this)));
        QTRY_VERIFY(m_disturbed);
        QVERIFY(!m_disturbedDuringTheCall);
        QTRY_VERIFY_WITH_TIMEOUT(page() && page() != before, cLoadTimeoutMs);
        // The longest call still works.
        if (m_method.name() == "startUpgrade")
            QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(m_scripts.path("writes")), cLoadTimeoutMs);
    }

    void cleanupTestCase()
    {
        genApp()->shutdown();
        g_object_unref(m_testbed);
    }

private:
    UMockdevTestbed* m_testbed = nullptr;
    test::ScriptFolder m_scripts;
    HttpFaultServer m_server;
    TestInstrument m_instrument{*genApp()->toolbox()->hidLink()};
    QQuickWindow* m_window = nullptr;
    QQuickItem* m_stack = nullptr;
    QQuickItem* m_column = nullptr;
    QObject* m_object = nullptr;
    QMetaMethod m_method;
    bool m_calling = false;
    bool m_disturbed = false;
    bool m_disturbedDuringTheCall = false;
};

QUORVEL_TEST_MAIN(InvokablesTest, GenApplication)
#include "tst_Invokables.moc"
