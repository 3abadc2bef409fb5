// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/GenSettings.h"

#include "storage/SettingsFile.h"

#include <utility>

GenSettings::GenSettings(GenApplication* app, GenToolbox* toolbox, std::function<void()> onLanguageStored)
    : GenTool(app, toolbox)
    , m_defaultGroup(QStringLiteral("system"))
    , m_file(std::make_shared<SettingsFile>())
    , m_onLanguageStored(std::move(onLanguageStored))
{}

GenSettings::~GenSettings() = default;

void GenSettings::setToolbox(GenToolbox* toolbox)
{
    GenTool::setToolbox(toolbox);
    publishToQml(this, "GenTool.GenSettings", "GenSettings");
}

void GenSettings::setValue(const QString& key, const QVariant& value, const QString& group)
{
    m_file->setValue(group.isEmpty() ? m_defaultGroup : group, key, value);
    if (key == QLatin1String(setting::language.key) && m_onLanguageStored)
        m_onLanguageStored();
}

QVariant GenSettings::value(const QString& key, const QVariant& defaultValue, const QString& group) const
{
    return m_file->value(group.isEmpty() ? m_defaultGroup : group, key, defaultValue);
}

QString GenSettings::sValue(const QString& key, const QString& defaultValue, const QString& group) const
{
    return value(key, defaultValue, group).toString();
}

int GenSettings::iValue(const QString& key, int defaultValue, const QString& group) const
{
    return value(key, defaultValue, group).toInt();
}

double GenSettings::dValue(const QString& key, double defaultValue, const QString& group) const
{
    return value(key, defaultValue, group).toDouble();
}

bool GenSettings::bValue(const QString& key, bool defaultValue, const QString& group) const
{
    return value(key, defaultValue, group).toBool();
}
