// SPDX-License-Identifier: GPL-3.0-or-later
#include "qmlsupport/ScreenTools.h"

#include "qmlsupport/DesignFonts.h"

#include <QCursor>

void ScreenTools::setToolbox(GenToolbox* toolbox)
{
    GenTool::setToolbox(toolbox);
    publishToQml(this, "GenTool.ScreenTools", "ScreenTools");
}

int ScreenTools::mouseX() const
{
    return QCursor::pos().x();
}

int ScreenTools::mouseY() const
{
    return QCursor::pos().y();
}

double ScreenTools::defaultFontDescent(int pointSize) const
{
    return design::fontDescent(pointSize);
}

QString ScreenTools::normalFontFamily() const
{
    return design::normalFontFamily();
}

QString ScreenTools::boldFontFamily() const
{
    return design::boldFontFamily();
}
