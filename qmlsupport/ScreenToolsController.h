// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QQuickItem>

/**
 * Properties of the platform, and functions that move and resize top-level windows, for QML: the singleton
 * "ScreenToolsController". An item without visual content. Lives on the GUI thread.
 */
class ScreenToolsController : public QQuickItem
{
    Q_OBJECT
    Q_PROPERTY(bool isAndroid READ isAndroid CONSTANT)
    Q_PROPERTY(bool isiOS READ isiOS CONSTANT)
    Q_PROPERTY(bool isMobile READ isMobile CONSTANT)
    Q_PROPERTY(bool isDebug READ isDebug CONSTANT)
    Q_PROPERTY(bool isMacOS READ isMacOS CONSTANT)
    Q_PROPERTY(bool isLinux READ isLinux CONSTANT)
    Q_PROPERTY(bool isWindows READ isWindows CONSTANT)
    Q_PROPERTY(bool isSerialAvailable READ isSerialAvailable CONSTANT)
    Q_PROPERTY(bool hasTouch READ hasTouch CONSTANT)
    Q_PROPERTY(bool canPlaceWindows READ canPlaceWindows CONSTANT)
    Q_PROPERTY(QString iOSDevice READ iOSDevice CONSTANT)
    Q_PROPERTY(QString fixedFontFamily READ fixedFontFamily CONSTANT)
    Q_PROPERTY(QString normalFontFamily READ normalFontFamily CONSTANT)
    Q_PROPERTY(QString boldFontFamily READ boldFontFamily CONSTANT)

public:
    // The interface has the design of the Windows desktop on every system.
    bool isAndroid() const { return false; }
    bool isiOS() const { return false; }
    bool isMobile() const { return false; }
    bool isDebug() const { return false; }
    bool isMacOS() const { return false; }
    bool isLinux() const { return false; }
    bool isWindows() const { return true; }
    bool isSerialAvailable() const { return true; }
    /// True when at least one touch device is present.
    bool hasTouch() const;
    /// True when the program can set the position of its windows and keep them above others. False under
    /// Wayland: the desktop decides both, the position of a window is unknown, and only the system can move
    /// it or resize it by its left and top edges.
    bool canPlaceWindows() const;
    QString iOSDevice() const { return {}; }
    QString fixedFontFamily() const;
    QString normalFontFamily() const;
    QString boldFontFamily() const;

    /// Global cursor position in device-independent pixels.
    Q_INVOKABLE int mouseX() const;
    Q_INVOKABLE int mouseY() const;
    /// Descent, in pixels, of the normal font at \a pointSize.
    Q_INVOKABLE double defaultFontDescent(int pointSize) const;
    /// Sets the geometry of the window with the focus, else of the first visible top-level window.
    Q_INVOKABLE void setWindowGeometry(int x, int y, int width, int height);
    /// Sets the geometry of \a windowObject. Does nothing when that is not a window.
    Q_INVOKABLE void setWindowGeometryForWindow(QObject* windowObject, int x, int y, int width, int height);
    /// Starts the system's interactive resize of \a windowObject by the given edges. Returns false when it is
    /// not a window, is maximised or full screen, no edge is given, or the system refuses.
    Q_INVOKABLE bool startSystemResizeForWindow(QObject* windowObject, bool left, bool top, bool right,
                                                bool bottom);
    /// Starts the system's interactive move of \a windowObject. Call it while the mouse button that was
    /// pressed in the window is down. Returns false when it is not a window, is full screen, or the system
    /// has no such move. After true the window may still not move: a desktop may ignore the request, for
    /// example for a maximised window.
    Q_INVOKABLE bool startSystemMoveForWindow(QObject* windowObject);

    /// Returns the border or corner for a set of edge flags. Corners have priority over single edges, and
    /// left over right, so contradicting flags still give one border.
    static Qt::Edges resizeEdges(bool left, bool top, bool right, bool bottom);
};
