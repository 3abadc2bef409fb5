// SPDX-License-Identifier: GPL-3.0-or-later
#include "qmlsupport/GenTool.h"

GenTool::GenTool(GenApplication* app, GenToolbox* toolbox)
    : QObject(toolboxObject(toolbox)), m_app(app), m_toolbox(toolbox)
{}

void GenTool::setToolbox(GenToolbox* toolbox)
{
    m_toolbox = toolbox;
}
