// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/WindowSizing.h"
#include "qmlsupport/ScreenToolsController.h"
#include "tests/support/TestCase.h"

#include <QCursor>
#include <QGuiApplication>
#include <QWindow>
#include <QtTest>

Q_DECLARE_METATYPE(Qt::Edges)

class ScreenToolsControllerTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    /// The flags are a text of the edges that are set.
    void edgesNameOneBorder_data()
    {
        const test::Table<QString, int> table("flags", "command");
        table.row("none", "", 0);
        table.row("left", "l", 0xF001);
        table.row("right", "r", 0xF002);
        table.row("top", "t", 0xF003);
        table.row("top left", "lt", 0xF004);
        table.row("top right", "rt", 0xF005);
        table.row("bottom", "b", 0xF006);
        table.row("bottom left", "lb", 0xF007);
        table.row("bottom right", "rb", 0xF008);
        table.row("left before right", "lr", 0xF001);
        table.row("top before bottom", "tb", 0xF003);
        table.row("a corner before its opposite", "rlt", 0xF004);
        table.row("right top before left bottom", "rtb", 0xF005);
        table.row("everything", "lrtb", 0xF004);
    }

    void edgesNameOneBorder()
    {
        QFETCH(QString, flags);
        const Qt::Edges edges = ScreenToolsController::resizeEdges(
            flags.contains(QLatin1Char('l')), flags.contains(QLatin1Char('t')),
            flags.contains(QLatin1Char('r')), flags.contains(QLatin1Char('b')));
        QTEST(platform::sizingCommand(edges), "command");
    }

    void refusesToResizeWhatCannotBe()
    {
        ScreenToolsController controller;
        QObject noWindow;
        QWindow window;
        window.setVisibility(QWindow::Maximized);
        QVERIFY(!controller.startSystemResizeForWindow(nullptr, true, false, false, false));
        QVERIFY(!controller.startSystemResizeForWindow(&noWindow, true, false, false, false));
        QVERIFY(!controller.startSystemResizeForWindow(&window, true, false, false, false));
        window.setVisibility(QWindow::Windowed);
        QVERIFY(!controller.startSystemResizeForWindow(&window, false, false, false, false));
    }

    void movesWindowsAndNothingElse()
    {
        ScreenToolsController controller;
        QObject noWindow;
        controller.setWindowGeometry(1, 2, 30, 40);
        controller.setWindowGeometryForWindow(&noWindow, 1, 2, 30, 40);
        controller.setWindowGeometryForWindow(nullptr, 1, 2, 30, 40);
        QWindow window;
        controller.setWindowGeometryForWindow(&window, 10, 20, 300, 200);
        QCOMPARE(window.geometry(), QRect(10, 20, 300, 200));
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        controller.setWindowGeometry(5, 6, 310, 210);
        QCOMPARE(window.geometry(), QRect(5, 6, 310, 210));
    }

    void reportsTheGlobalCursor()
    {
        const ScreenToolsController controller;
        QCursor::setPos(123, 45);
        QCOMPARE(QPoint(controller.mouseX(), controller.mouseY()), QCursor::pos());
        QVERIFY(controller.defaultFontDescent(10) > 0);
    }
};

QUORVEL_TEST_MAIN(ScreenToolsControllerTest, QGuiApplication)
#include "tst_ScreenToolsController.moc"
