// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/GenToolbox.h"

#include "app/ApplicationInfo.h"
#include "hid/HidLink.h"
#include "qmlsupport/GenPalette.h"
#include "qmlsupport/ScreenTools.h"
#include "qmlsupport/ToolsManager.h"
#include "settings/GenSettings.h"
#include "system/SystemManager.h"

GenToolbox::GenToolbox(GenApplication* app)
{
    m_genPalette = new GenPalette(app, this);
    m_screenTool = new ScreenTools(app, this);
    m_genSettings = new GenSettings(app, this);
    m_toolsManager = new ToolsManager(app, this);
    m_hidLink = new HidLink(app, this);
    m_systemManager = new SystemManager(app, this);
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
