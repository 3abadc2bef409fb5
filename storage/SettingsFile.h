// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>
#include <QMutex>
#include <QString>
#include <QVariant>

#include <memory>
#include <optional>

class QSettings;

/**
 * The file of all settings, "Quorvel.ini" in the Documents folder. Every function may be called from any
 * thread.
 *
 * Its users share it, so it lives as long as the last of them. When the settings folder cannot be created,
 * reads return their defaults and nothing is stored.
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
    /// Stores a value and writes it to disk before returning.
    void setValue(const QString& group, const QString& key, const QVariant& value);

private:
    /// Guards m_settings (whose entered group is state) and m_known.
    mutable QMutex m_mutex;
    std::unique_ptr<QSettings> m_settings;
    /// Values read or written so far, by "group/key"; empty where nothing is stored. This object is the
    /// only writer of the file, and the link asks for the debug switch with every packet.
    mutable QHash<QString, std::optional<QVariant>> m_known;
};
