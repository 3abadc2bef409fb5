// SPDX-License-Identifier: GPL-3.0-or-later
#include "storage/SettingsFile.h"

#include "platform/UserFolders.h"

#include <QCoreApplication>
#include <QDebug>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSettings>

#include <utility>

namespace {

/// Reads that follow each other faster than this share one look at the file.
constexpr std::chrono::milliseconds cLookInterval(1);
/// A look at the file also tries to write what could not be written before; that is tried less often.
constexpr std::chrono::milliseconds cRetryInterval(1000);

QString settingsFileName()
{
    return QStringLiteral("Quorvel.ini");
}

QString pathOf(const QString& group, const QString& key)
{
    return group + QLatin1Char('/') + key;
}

} // namespace

SettingsFile::SettingsFile()
{
    const QString documents = platform::userFolder(platform::UserFolder::Documents);
    const QString folder = QStringLiteral("%1//Quorvel").arg(documents);
    if (!QDir().mkpath(folder)) {
        qDebug().noquote() << QStringLiteral("Quorvel::_init make dir(%1) failed").arg(folder);
        fail(folder, QStringLiteral("the folder cannot be created"));
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
        else // An installed template may be read-only.
            QFile::setPermissions(filePath, QFile::permissions(filePath) | QFile::WriteOwner);
    }
    qDebug().noquote() << "filePath:" << filePath;
    m_path = filePath;
    open();
    m_lastWhole = values();
    const QFileInfo file(filePath);
    if (!QFileInfo(folder).isWritable() || (file.exists() && !(file.isWritable() && file.isReadable())))
        fail(filePath, QStringLiteral("it may not be written"));
}

SettingsFile::~SettingsFile() = default;

QVariant SettingsFile::value(const QString& group, const QString& key, const QVariant& defaultValue) const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (!m_settings)
        return defaultValue;
    refresh();
    const QString path = pathOf(group, key);
    // An invalid value can be stored as well ("@Invalid()"): it is not a missing one.
    return m_settings->contains(path) ? m_settings->value(path) : defaultValue;
}

void SettingsFile::setValue(const QString& group, const QString& key, const QVariant& value)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (!m_settings)
        return;
    m_settings->sync();
    restoreCutFile(keepDamagedFile());
    m_settings->setValue(pathOf(group, key), value);
    // Merges with what other processes wrote, under a lock that they respect, and replaces the file whole.
    m_settings->sync();
    m_lookedAt = std::chrono::steady_clock::now();
    if (m_settings->status() == QSettings::AccessError) {
        fail(m_path, QStringLiteral("the file cannot be written"));
        open();
    }
    m_lastWhole = values();
}

void SettingsFile::setFailureHandler(std::function<void(const QString&)> handler)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_failureHandler = std::move(handler);
    if (m_failureHandler && !m_failedPath.isEmpty())
        std::exchange(m_failureHandler, {})(m_failedPath);
}

/// Makes a new view of the file. The status of QSettings keeps its first error, so a new view forgets it;
/// values that are not written yet stay, because all views of a file share them.
void SettingsFile::open() const
{
    auto settings = std::make_unique<QSettings>(m_path, QSettings::IniFormat);
    settings->setIniCodec("utf-8");
    m_settings = std::move(settings);
}

void SettingsFile::refresh() const
{
    const auto now = std::chrono::steady_clock::now();
    if (now - m_lookedAt < (m_failedPath.isEmpty() ? cLookInterval : cRetryInterval))
        return;
    m_lookedAt = now;
    // Reads the file again when its size or time has changed.
    m_settings->sync();
}

QHash<QString, QVariant> SettingsFile::values() const
{
    QHash<QString, QVariant> all;
    const QStringList paths = m_settings->allKeys();
    for (const QString& path : paths) {
        // A damaged line may have given an empty key, which QSettings does not look up.
        if (!path.isEmpty())
            all.insert(path, m_settings->value(path));
    }
    return all;
}

/// QSettings drops lines that it does not understand with the next write. True when there are such lines.
bool SettingsFile::keepDamagedFile()
{
    // Sections are parsed when they are first used; this parses all of them.
    m_settings->allKeys();
    if (m_settings->status() != QSettings::FormatError)
        return false;
    const QString copy = m_path + QLatin1String(".damaged");
    QFile::remove(copy);
    if (QFile::copy(m_path, copy))
        qWarning().noquote() << "Settings:" << m_path << "is damaged; it was copied to" << copy;
    open();
    return true;
}

/// Text editors empty a file before they write it: what a file lacks that is damaged or ends within a line
/// may be on its way. Who deletes the whole file wants the defaults.
void SettingsFile::restoreCutFile(bool damaged)
{
    QFile file(m_path);
    if (!file.open(QIODevice::ReadOnly) || (!damaged && file.readAll().endsWith('\n')))
        return;
    for (auto entry = m_lastWhole.cbegin(); entry != m_lastWhole.cend(); ++entry) {
        if (!m_settings->contains(entry.key()))
            m_settings->setValue(entry.key(), entry.value());
    }
}

void SettingsFile::fail(const QString& path, const QString& reason)
{
    if (!m_failedPath.isEmpty())
        return;
    m_failedPath = path;
    qWarning().noquote() << "Settings cannot be stored in" << path + QLatin1Char(':') << reason;
    if (m_failureHandler)
        std::exchange(m_failureHandler, {})(path);
}
