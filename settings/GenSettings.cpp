// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/GenSettings.h"

#include "app/GenApplication.h"

#include <QCoreApplication>
#include <QDebug>
#include <QDir>
#include <QFile>
#include <QSettings>
#include <QStandardPaths>

namespace {

QString settingsFileName()
{
    return QStringLiteral("Quorvel.ini");
}

} // namespace

GenSettings::GenSettings(GenApplication* app, GenToolbox* toolbox)
    : GenTool(app, toolbox), defaultGroup(QStringLiteral("system"))
{
    _init();
}

GenSettings::~GenSettings() = default;

void GenSettings::setToolbox(GenToolbox* toolbox)
{
    GenTool::setToolbox(toolbox);
    publishToQml(this, "GenTool.GenSettings", "GenSettings");
}

void GenSettings::_init()
{
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    const QString folder = QStringLiteral("%1//Quorvel").arg(documents);
    if (!QDir().mkpath(folder)) {
        qDebug().noquote() << QStringLiteral("Quorvel::_init make dir(%1) failed").arg(folder);
        return;
    }
    const QString filePath = QStringLiteral("%1//%2").arg(folder, settingsFileName());
    if (!QFile::exists(filePath)) {
        const QString templatePath =
            QStringLiteral("%1//pack//%2").arg(QCoreApplication::applicationDirPath(), settingsFileName());
        if (!QFile::exists(templatePath))
            qDebug().noquote()
                << QStringLiteral("SettingTool::_init not find ini file(%1)").arg(templatePath);
        else if (!QFile::copy(templatePath, filePath))
            qDebug().noquote() << "GenSettings::_init cannot copy" << templatePath;
    }
    qDebug().noquote() << "filePath:" << filePath;
    m_settings = std::make_unique<QSettings>(filePath, QSettings::IniFormat);
    m_settings->setIniCodec("utf-8");
}

void GenSettings::setValue(const QString& key, const QVariant& value, const QString& group)
{
    {
        const QMutexLocker lock(&m_mutex);
        if (m_settings) {
            const QString& section = group.isEmpty() ? defaultGroup : group;
            m_settings->beginGroup(section);
            m_settings->setValue(key, value);
            m_settings->endGroup();
            m_settings->sync();
            m_known.insert(section + QLatin1Char('/') + key, value);
        }
    }
    // Outside the lock: the application reads the language back from this store.
    if (key == QLatin1String("language") && genApp() != nullptr)
        genApp()->updateTranslation();
}

QVariant GenSettings::value(const QString& key, const QVariant& defaultValue, const QString& group) const
{
    const QMutexLocker lock(&m_mutex);
    if (!m_settings)
        return defaultValue;
    const QString path = (group.isEmpty() ? defaultGroup : group) + QLatin1Char('/') + key;
    auto known = m_known.find(path);
    if (known == m_known.end()) {
        // An invalid value can be stored as well ("@Invalid()"): it is no missing one.
        known = m_known.insert(path, m_settings->contains(path) ? std::make_optional(m_settings->value(path))
                                                                : std::nullopt);
    }
    return known->value_or(defaultValue);
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
