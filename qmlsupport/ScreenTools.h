// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "qmlsupport/GenTool.h"

#include <QString>

/// Cursor position and font metrics for QML; a tool of the toolbox. Lives on the GUI thread.
class ScreenTools : public GenTool
{
    Q_OBJECT

public:
    using GenTool::GenTool;

    void setToolbox(GenToolbox* toolbox) override;

    /// Global cursor position in device-independent pixels.
    Q_INVOKABLE int mouseX() const;
    Q_INVOKABLE int mouseY() const;
    /// Descent, in pixels, of the normal font at \a pointSize.
    Q_INVOKABLE double defaultFontDescent(int pointSize) const;
    Q_INVOKABLE QString normalFontFamily() const;
    Q_INVOKABLE QString boldFontFamily() const;
};
