// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/FileStamp.h"
#include "storage/IniDocument.h"
#include "storage/SettingsTable.h"

#include <QHash>
#include <QMutex>
#include <QString>
#include <QVariant>

#include <chrono>
#include <functional>
#include <type_traits>

/**
 * The file of all settings, "Quorvel.ini" in the Documents folder. Every function may be called from any
 * thread.
 *
 * A read looks at the file's stamp and reads the file again when it has changed, so that a change by hand or
 * by another process counts at once. A write changes the one value in the text that is in the file now, under
 * a lock that other processes respect, and replaces the file whole. Where the file looks half written or
 * damaged, a write brings back the entries of the last text that was complete.
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

    /// Stores a value and writes it to disk before returning. Waits at most two seconds for another process
    /// that is writing.
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
    enum class Content { Read, Missing, Unreadable };

    void refresh() const;
    Content readText(QByteArray& text) const;
    void store();
    void fail(const QString& path, const QString& reason);

    /// Guards everything below.
    mutable QMutex m_mutex;
    /// Empty when the folder could not be created.
    QString m_path;
    /// The file as it was when it had m_stamp.
    mutable IniDocument m_document;
    mutable platform::FileStamp m_stamp;
    mutable std::chrono::steady_clock::time_point m_lookedAt;
    /// False while the stamp is so young that one more change might not show in it.
    mutable bool m_stampSettled = false;
    /// The last text that was complete, or that this object wrote.
    mutable IniDocument m_lastComplete;
    /// Values that could not be written yet, by path.
    QHash<QString, QVariant> m_unsaved;
    /// Where storing failed first; empty while it did not.
    QString m_failedPath;
    std::function<void(const QString&)> m_failureHandler;
};
