// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QQmlEngine>

class GenApplication;
class GenToolbox;

/// Returns \a toolbox as a QObject. Defined with the toolbox, because its class is incomplete here.
QObject* toolboxObject(GenToolbox* toolbox);

/**
 * Base of the core objects that the toolbox owns. Lives on the GUI thread; the toolbox is its QObject
 * parent and deletes it.
 */
class GenTool : public QObject
{
    Q_OBJECT

public:
    GenTool(GenApplication* app, GenToolbox* toolbox);

    /// Called by the toolbox when all tools exist. Overrides also register their type for QML.
    virtual void setToolbox(GenToolbox* toolbox);

protected:
    /// Protects \a tool from the QML engine's garbage collection, and registers its class as the uncreatable
    /// type \a typeName 1.0 of the module \a uri. Both texts must be literals.
    template <class Tool>
    static void publishToQml(Tool* tool, const char* uri, const char* typeName)
    {
        QQmlEngine::setObjectOwnership(tool, QQmlEngine::CppOwnership);
        qmlRegisterUncreatableType<Tool>(uri, 1, 0, typeName, QStringLiteral("Reference only"));
    }

    GenApplication* m_app = nullptr;
    GenToolbox* m_toolbox = nullptr;
};
