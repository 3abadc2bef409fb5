// SPDX-License-Identifier: GPL-3.0-or-later
#include "qmlsupport/ScreenToolsController.h"

#include "platform/WindowSizing.h"
#include "qmlsupport/DesignFonts.h"

#include <QCursor>
#include <QGuiApplication>
#include <QTouchDevice>
#include <QWindow>

#include <algorithm>

bool ScreenToolsController::hasTouch() const
{
    return !QTouchDevice::devices().isEmpty();
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
    return edges != Qt::Edges() && platform::startSystemResize(*window, edges);
}
