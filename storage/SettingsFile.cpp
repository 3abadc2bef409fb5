// SPDX-License-Identifier: GPL-3.0-or-later
#include "storage/SettingsFile.h"

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

SettingsFile::SettingsFile()
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

SettingsFile::~SettingsFile() = default;

void SettingsFile::setValue(const QString& group, const QString& key, const QVariant& value)
{
    const QMutexLocker lock(&m_mutex);
    if (!m_settings)
        return;
    m_settings->beginGroup(group);
    m_settings->setValue(key, value);
    m_settings->endGroup();
    m_settings->sync();
    m_known.insert(group + QLatin1Char('/') + key, value);
}

QVariant SettingsFile::value(const QString& group, const QString& key, const QVariant& defaultValue) const
{
    const QMutexLocker lock(&m_mutex);
    if (!m_settings)
        return defaultValue;
    const QString path = group + QLatin1Char('/') + key;
    auto known = m_known.find(path);
    if (known == m_known.end()) {
        // An invalid value can be stored as well ("@Invalid()"): it is not a missing one.
        known = m_known.insert(path, m_settings->contains(path) ? std::make_optional(m_settings->value(path))
                                                                : std::nullopt);
    }
    return known->value_or(defaultValue);
}
