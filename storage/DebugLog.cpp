// SPDX-License-Identifier: GPL-3.0-or-later
#include "storage/DebugLog.h"

#include "storage/SettingsFile.h"

#include <utility>

DebugLog::DebugLog(const QString& fileNamePattern, std::shared_ptr<const SettingsFile> settings)
    : m_log(fileNamePattern), m_settings(std::move(settings))
{}

void DebugLog::write(const QString& message) const
{
    if (m_settings != nullptr && m_settings->value(setting::usbDebugEnabled))
        m_log.append(message);
}

QString DebugLog::filePath() const
{
    return m_log.filePath(QDateTime::currentDateTime());
}
