// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "storage/DailyLog.h"

#include <memory>

class SettingsFile;

/**
 * A daily log that is written only while the user's "USB Debug" switch is on. The switch is read for every
 * line. Copies write into the same file and keep the settings alive. Any thread may write.
 */
class DebugLog
{
public:
    /// \a fileNamePattern as in DailyLog. Without \a settings nothing is ever written.
    DebugLog(const QString& fileNamePattern, std::shared_ptr<const SettingsFile> settings);

    void write(const QString& message) const;
    /// Today's file; its folder is created.
    QString filePath() const;

private:
    DailyLog m_log;
    std::shared_ptr<const SettingsFile> m_settings;
};
