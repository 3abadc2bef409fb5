// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>

class GenApplication;
class GenPalette;
class GenSettings;
class HidLink;
class ScreenTools;
class SystemManager;
class ToolsManager;

/**
 * Creates, owns and provides the core objects; the QML singleton "GenToolbox". Lives on the GUI thread.
 *
 * The tools are created in the order of the accessors below. The constructor of a tool may use only the tools
 * above it. The tools are deleted in the same order.
 */
class GenToolbox : public QObject
{
    Q_OBJECT
    Q_PROPERTY(GenPalette* genPalette READ genPalette CONSTANT)
    Q_PROPERTY(ScreenTools* screenTool READ screenTool CONSTANT)
    Q_PROPERTY(GenSettings* genSettings READ genSettings CONSTANT)
    Q_PROPERTY(ToolsManager* toolsManager READ toolsManager CONSTANT)
    Q_PROPERTY(HidLink* hidLink READ hidLink CONSTANT)
    Q_PROPERTY(SystemManager* systemManager READ systemManager CONSTANT)
    Q_PROPERTY(QString version READ version CONSTANT)

public:
    explicit GenToolbox(GenApplication* app);

    /// Passes this toolbox to every tool. Each tool then registers its QML type.
    void setChildToolboxes();

    GenPalette* genPalette() const { return m_genPalette; }
    ScreenTools* screenTool() const { return m_screenTool; }
    GenSettings* genSettings() const { return m_genSettings; }
    ToolsManager* toolsManager() const { return m_toolsManager; }
    HidLink* hidLink() const { return m_hidLink; }
    SystemManager* systemManager() const { return m_systemManager; }
    /// The application version, for example "1.1.4".
    QString version() const;

    /// Returns the bytes as upper-case hexadecimal pairs with one space between them; empty for no bytes.
    Q_INVOKABLE QString byteArrayToHexString(const QByteArray& data) const;

private:
    // Each pointer is null while the tools before it are created: their constructors may read it.
    GenPalette* m_genPalette = nullptr;
    ScreenTools* m_screenTool = nullptr;
    GenSettings* m_genSettings = nullptr;
    ToolsManager* m_toolsManager = nullptr;
    HidLink* m_hidLink = nullptr;
    SystemManager* m_systemManager = nullptr;
};
