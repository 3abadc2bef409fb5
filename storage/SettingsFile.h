// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "storage/SettingsTable.h"

#include <QHash>
#include <QString>
#include <QVariant>

#include <chrono>
#include <functional>
#include <memory>
#include <mutex>
#include <type_traits>

class QSettings;

/**
 * The file of all settings, "Quorvel.ini" in the Documents folder. Every function may be called from any
 * thread.
 *
 * A read sees changes by hand or by another process within a millisecond. A write changes one value, keeps
 * the values that others wrote, and replaces the file whole. A damaged file is copied to
 * "Quorvel.ini.damaged" before the first write changes it, and values that a damaged or half-written file
 * lacks come back with that write.
 *
 * Its users share it, so it lives as long as the last of them. When the settings folder cannot be created,
 * reads return their defaults and nothing is stored. When only a write fails, its value lasts as long as this
 * object and is stored with the next write that succeeds.
 */
class SettingsFile
{
public:
    /// Opens the file; a missing one is copied from the template beside the executable, if there is one.
    SettingsFile();
    ~SettingsFile();
    Q_DISABLE_COPY(SettingsFile)

    /// The stored value of \a key in \a group, or \a defaultValue when none is stored.
    QVariant value(const QString& group, const QString& key, const QVariant& defaultValue) const;
    /// The stored value of \a setting, or its default; a text that does not convert gives 0 or false.
    template <typename T>
    auto value(const setting::Setting<T>& setting) const
    {
        using Value = std::conditional_t<std::is_same_v<T, const char*>, QString, T>;
        return value(QLatin1String(setting.group), QLatin1String(setting.key), setting.byDefault)
            .template value<Value>();
    }

    /// Stores a value and writes it to disk before returning.
    void setValue(const QString& group, const QString& key, const QVariant& value);
    /// The same for an entry of the table.
    template <typename T>
    void setValue(const setting::Setting<T>& setting, const QVariant& value)
    {
        setValue(QLatin1String(setting.group), QLatin1String(setting.key), value);
    }

    /// Calls \a handler with the path concerned when settings cannot be stored: at once when that is known,
    /// else with the first write that fails, on its thread; never twice. It must not call this object.
    void setFailureHandler(std::function<void(const QString& path)> handler);

private:
    void open() const;
    void refresh() const;
    QHash<QString, QVariant> values() const;
    bool keepDamagedFile();
    void restoreCutFile(bool damaged);
    void fail(const QString& path, const QString& reason);

    /// Guards all members below.
    mutable std::mutex m_mutex;
    /// Empty when the folder could not be created.
    QString m_path;
    /// Null when the folder could not be created.
    mutable std::unique_ptr<QSettings> m_settings;
    mutable std::chrono::steady_clock::time_point m_lookedAt;
    /// All values after the start or the last write, by path.
    QHash<QString, QVariant> m_lastWhole;
    /// Path of the first failure; empty before it.
    QString m_failedPath;
    std::function<void(const QString&)> m_failureHandler;
};
