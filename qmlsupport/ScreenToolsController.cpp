// SPDX-License-Identifier: GPL-3.0-or-later
#include "qmlsupport/ScreenToolsController.h"

#include "platform/WindowSizing.h"
#include "qmlsupport/DesignFonts.h"

#include <QCursor>
#include <QEvent>
#include <QGuiApplication>
#include <QQuickWindow>
#include <QTouchDevice>
#include <QWindow>

#include <algorithm>

namespace {

/// Ends the press of an item when the system has taken the mouse for a move or resize. The system gets the
/// release. Without this the item would stay pressed and take the next click, wherever that is.
class PressGuard : public QObject
{
public:
    explicit PressGuard(QQuickWindow& window) : QObject(&window), m_window(window)
    {
        window.installEventFilter(this);
    }

    bool eventFilter(QObject*, QEvent* event) override
    {
        const bool released = event->type() == QEvent::MouseButtonRelease;
        if (!released && event->type() != QEvent::Leave && event->type() != QEvent::MouseButtonPress)
            return false;
        m_window.removeEventFilter(this);
        deleteLater();
        QQuickItem* pressed = m_window.mouseGrabberItem();
        if (!released && pressed != nullptr)
            pressed->ungrabMouse();
        return false;
    }

private:
    QQuickWindow& m_window;
};

void guardPress(QWindow* window)
{
    if (auto* quickWindow = qobject_cast<QQuickWindow*>(window))
        new PressGuard(*quickWindow);
}

} // namespace

bool ScreenToolsController::hasTouch() const
{
    return !QTouchDevice::devices().isEmpty();
}

bool ScreenToolsController::canPlaceWindows() const
{
    return !platform::isWayland();
}

QString ScreenToolsController::fixedFontFamily() const
{
    return design::fixedFontFamily();
}

QString ScreenToolsController::normalFontFamily() const
{
    return design::normalFontFamily();
}

QString ScreenToolsController::boldFontFamily() const
{
    return design::boldFontFamily();
}

int ScreenToolsController::mouseX() const
{
    return QCursor::pos().x();
}

int ScreenToolsController::mouseY() const
{
    return QCursor::pos().y();
}

double ScreenToolsController::defaultFontDescent(int pointSize) const
{
    return design::fontDescent(pointSize);
}

void ScreenToolsController::setWindowGeometry(int x, int y, int width, int height)
{
    QWindow* target = QGuiApplication::focusWindow();
    if (target == nullptr) {
        const QWindowList windows = QGuiApplication::topLevelWindows();
        const auto visible = std::find_if(windows.cbegin(), windows.cend(),
                                          [](const QWindow* window) { return window->isVisible(); });
        if (visible == windows.cend())
            return;
        target = *visible;
    }
    target->setGeometry(x, y, width, height);
}

void ScreenToolsController::setWindowGeometryForWindow(QObject* windowObject, int x, int y, int width,
                                                       int height)
{
    if (auto* target = qobject_cast<QWindow*>(windowObject))
        target->setGeometry(x, y, width, height);
}

Qt::Edges ScreenToolsController::resizeEdges(bool left, bool top, bool right, bool bottom)
{
    if ((left || right) && (top || bottom)) {
        // The table of corners is searched top first, then left first.
        const Qt::Edge vertical = top ? Qt::TopEdge : Qt::BottomEdge;
        return (left ? Qt::LeftEdge : Qt::RightEdge) | vertical;
    }
    if (left)
        return Qt::LeftEdge;
    if (right)
        return Qt::RightEdge;
    if (top)
        return Qt::TopEdge;
    return bottom ? Qt::Edges(Qt::BottomEdge) : Qt::Edges();
}

bool ScreenToolsController::startSystemResizeForWindow(QObject* windowObject, bool left, bool top, bool right,
                                                       bool bottom)
{
    auto* window = qobject_cast<QWindow*>(windowObject);
    if (window == nullptr || window->visibility() == QWindow::Maximized ||
        window->visibility() == QWindow::FullScreen)
        return false;
    const Qt::Edges edges = resizeEdges(left, top, right, bottom);
    if (edges == Qt::Edges() || !platform::startSystemResize(*window, edges))
        return false;
    guardPress(window);
    return true;
}

bool ScreenToolsController::startSystemMoveForWindow(QObject* windowObject)
{
    auto* window = qobject_cast<QWindow*>(windowObject);
    if (window == nullptr || window->visibility() == QWindow::FullScreen || !window->startSystemMove())
        return false;
    guardPress(window);
    return true;
}
