// SPDX-License-Identifier: GPL-3.0-or-later
#include "qmlsupport/ToolsManager.h"

#include "qmlsupport/QmlComponentInfo.h"

#include <QCoreApplication>

namespace {

struct PageEntry
{
    const char* title;
    const char* document;
    const char* icon;
};

// The leading space of the third title is part of its translation key.
constexpr PageEntry cPages[] = {
    {QT_TRANSLATE_NOOP("ToolsManager", "Pointer Gauge"), "qrc:/qml/toolsUI/PointerGauge.qml",
     "qrc:/res/Pointer.svg"},
    {QT_TRANSLATE_NOOP("ToolsManager", "Power Analysis"), "qrc:/qml/toolsUI/PoweWaveAnalysis.qml",
     "qrc:/res/powerImg.svg"},
    {QT_TRANSLATE_NOOP("ToolsManager", " Multimeter Gauge"), "qrc:/qml/toolsUI/MultimeterGauge.qml",
     "qrc:/res/multimeterImg.svg"},
    {QT_TRANSLATE_NOOP("ToolsManager", "Charge Data"), "qrc:/qml/toolsUI/ChargeData.qml",
     "qrc:/res/chargedata.svg"},
    {QT_TRANSLATE_NOOP("ToolsManager", "User Settings"), "qrc:/qml/toolsUI/UserSettings.qml",
     "qrc:/res/userSetImg.svg"},
    {QT_TRANSLATE_NOOP("ToolsManager", "System Settings"), "qrc:/qml/toolsUI/SysSettings.qml",
     "qrc:/res/sysSetImg.svg"},
};

QString translatedTitle(const PageEntry& page)
{
    return QCoreApplication::translate("ToolsManager", page.title);
}

} // namespace

ToolsManager::ToolsManager(GenApplication* app, GenToolbox* toolbox) : GenTool(app, toolbox)
{
    qRegisterMetaType<QmlComponentInfo*>("QmlComponentInfo*");
}

ToolsManager::~ToolsManager() = default;

void ToolsManager::setToolbox(GenToolbox* toolbox)
{
    GenTool::setToolbox(toolbox);
    publishToQml(this, "GenTool.ToolsManager", "ToolsManager");
}

QVariantList ToolsManager::settingsPages()
{
    if (m_pages.empty()) {
        for (const PageEntry& page : cPages) {
            auto info = std::make_unique<QmlComponentInfo>(translatedTitle(page),
                                                           QUrl::fromUserInput(QLatin1String(page.document)),
                                                           QUrl::fromUserInput(QLatin1String(page.icon)));
            // QML reads the pages from a list. Its garbage collector must not delete them.
            QQmlEngine::setObjectOwnership(info.get(), QQmlEngine::CppOwnership);
            m_settingsPages.append(QVariant::fromValue(info.get()));
            m_pages.push_back(std::move(info));
        }
    }
    return m_settingsPages;
}

void ToolsManager::refreshTitles()
{
    for (size_t i = 0; i < m_pages.size(); ++i)
        m_pages[i]->setTitle(translatedTitle(cPages[i]));
    Q_EMIT settingsPagesChanged();
}
