// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "qmlsupport/GenTool.h"

#include <QVariantList>

#include <memory>
#include <vector>

class QmlComponentInfo;

/**
 * The pages of the main window in the order of the page column, with titles in the interface language.
 * Lives on the GUI thread. All pages are created when the list is first read.
 */
class ToolsManager : public GenTool
{
    Q_OBJECT
    Q_PROPERTY(QVariantList settingsPages READ settingsPages NOTIFY settingsPagesChanged)

public:
    ToolsManager(GenApplication* app, GenToolbox* toolbox);
    ~ToolsManager() override;

    void setToolbox(GenToolbox* toolbox) override;

    /// Returns one QmlComponentInfo* per page, always the same objects.
    virtual QVariantList settingsPages();

public Q_SLOTS:
    /// Translates the titles of the existing pages into the current language.
    void refreshTitles();

Q_SIGNALS:
    void settingsPagesChanged();

private:
    std::vector<std::unique_ptr<QmlComponentInfo>> m_pages;
    QVariantList m_settingsPages;
};
