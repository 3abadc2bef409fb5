// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "qmlsupport/GenTool.h"

#include <QString>
#include <QVariant>

#include <functional>
#include <memory>

class SettingsFile;

/**
 * The one persistent store of user and system settings: "Quorvel.ini" in the Documents folder. Created
 * on the GUI thread; every getter and setValue may be called from any thread.
 *
 * An empty group means the default group "system". When the settings folder cannot be created, getters
 * return their defaults and nothing is stored.
 */
class GenSettings : public GenTool
{
    Q_OBJECT

public:
    /// Calls \a onLanguageStored, when there is one, after each storing of the key "language".
    GenSettings(GenApplication* app, GenToolbox* toolbox, std::function<void()> onLanguageStored = {});
    ~GenSettings() override;

    void setToolbox(GenToolbox* toolbox) override;

    /// The file behind this store, for those who outlive it or use it from other threads.
    std::shared_ptr<SettingsFile> file() const { return m_file; }

    /// Stores a value and writes it to disk before returning. The key "language" also makes the
    /// application apply the new language; store that key from the GUI thread only.
    Q_INVOKABLE void setValue(const QString& key, const QVariant& value, const QString& group = QString());
    /// The stored text, or \a defaultValue when there is none.
    Q_INVOKABLE QString sValue(const QString& key, const QString& defaultValue = QString(),
                               const QString& group = QString()) const;
    /// The stored integer, \a defaultValue when there is none, 0 when it is no number.
    Q_INVOKABLE int iValue(const QString& key, int defaultValue = 0, const QString& group = QString()) const;
    /// The stored real, \a defaultValue when there is none, 0.0 when it is no number.
    Q_INVOKABLE double dValue(const QString& key, double defaultValue = 0.0,
                              const QString& group = QString()) const;
    /// The stored switch, \a defaultValue when there is none.
    Q_INVOKABLE bool bValue(const QString& key, bool defaultValue = false,
                            const QString& group = QString()) const;

private:
    QVariant value(const QString& key, const QVariant& defaultValue, const QString& group) const;

    const QString m_defaultGroup;
    const std::shared_ptr<SettingsFile> m_file;
    const std::function<void()> m_onLanguageStored;
};
