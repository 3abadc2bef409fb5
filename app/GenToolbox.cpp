// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/GenToolbox.h"

#include "app/GenApplication.h"
#include "hid/HidLink.h"
#include "qmlsupport/GenPalette.h"
#include "qmlsupport/ScreenTools.h"
#include "qmlsupport/ToolsManager.h"
#include "settings/GenSettings.h"
#include "storage/ApplicationInfo.h"
#include "system/SystemManager.h"

QObject* toolboxObject(GenToolbox* toolbox)
{
    return toolbox;
}

GenToolbox::GenToolbox(GenApplication* app)
{
    const auto applyLanguage = [] {
        if (genApp() != nullptr)
            genApp()->updateTranslation();
    };
    m_genPalette = new GenPalette(app, this);
    m_screenTool = new ScreenTools(app, this);
    m_genSettings = new GenSettings(app, this, applyLanguage);
    m_toolsManager = new ToolsManager(app, this);
    if (app != nullptr)
        connect(app, &GenApplication::languageChanged, m_toolsManager, &ToolsManager::refreshTitles);
    m_hidLink = new HidLink(app, this, m_genSettings->file());
    m_systemManager = new SystemManager(app, this, m_genSettings->file());
}

void GenToolbox::setChildToolboxes()
{
    m_genPalette->setToolbox(this);
    m_screenTool->setToolbox(this);
    m_hidLink->setToolbox(this);
    m_genSettings->setToolbox(this);
    m_toolsManager->setToolbox(this);
    m_systemManager->setToolbox(this);
}

QString GenToolbox::version() const
{
    return applicationVersion();
}

QString GenToolbox::byteArrayToHexString(const QByteArray& data) const
{
    return QString::fromLatin1(data.toHex(' ')).toUpper();
}
