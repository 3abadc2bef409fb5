// SPDX-License-Identifier: GPL-3.0-or-later
#include "storage/SettingsFile.h"

#include "storage/JsonFile.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QDebug>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QSaveFile>
#include <QStandardPaths>
#include <QThread>

#include <chrono>
#include <utility>

namespace {

/// How long to wait for another process that writes the file, and how often to look. Writing takes
/// milliseconds; the user interface must not wait for a process that hangs.
constexpr int cLockTimeoutMs = 2000;
constexpr unsigned long cLockIntervalMs = 1;
/// The clocks of file systems take steps of up to 10 ms. A file that was changed less than this ago is
/// compared byte by byte.
constexpr std::chrono::nanoseconds cStampSettles = std::chrono::milliseconds(100);
/// Reads that follow each other faster than a file can be written share one look at its stamp.
constexpr std::chrono::microseconds cLookInterval(10);
/// A file of settings has two kilobytes. What is larger is none.
constexpr qint64 cMaximumBytes = qint64(1) << 20;

QString settingsFileName()
{
    return QStringLiteral("Quorvel.ini");
}

QString pathOf(const QString& group, const QString& key)
{
    return group + QLatin1Char('/') + key;
}

/// Waits for \a lock. QLockFile itself looks ten times a second at most, and seldom finds it free between the
/// writes of another process.
void waitFor(QLockFile& lock)
{
    const QDeadlineTimer deadline(cLockTimeoutMs);
    while (!lock.tryLock(0) && lock.error() == QLockFile::LockFailedError && !deadline.hasExpired())
        QThread::msleep(cLockIntervalMs);
}

bool isSettled(const platform::FileStamp& stamp)
{
    const std::chrono::nanoseconds now = std::chrono::system_clock::now().time_since_epoch();
    return stamp.size < 0 ||
           std::chrono::abs(now - std::chrono::nanoseconds(stamp.modifiedNs)) > cStampSettles;
}

} // namespace

SettingsFile::SettingsFile()
{
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
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
    const QFileInfo file(filePath);
    if (!QFileInfo(folder).isWritable() || (file.exists() && !(file.isWritable() && file.isReadable())))
        fail(filePath, QStringLiteral("it may not be written"));
}

SettingsFile::~SettingsFile() = default;

QVariant SettingsFile::value(const QString& group, const QString& key, const QVariant& defaultValue) const
{
    const QMutexLocker lock(&m_mutex);
    if (m_path.isEmpty())
        return defaultValue;
    const QString path = pathOf(group, key);
    const auto unsaved = m_unsaved.constFind(path);
    if (unsaved != m_unsaved.cend())
        return *unsaved;
    refresh();
    return m_document.value(path).value_or(defaultValue);
}

void SettingsFile::setValue(const QString& group, const QString& key, const QVariant& value)
{
    const QMutexLocker lock(&m_mutex);
    if (m_path.isEmpty())
        return;
    m_unsaved.insert(pathOf(group, key), value);
    store();
}

void SettingsFile::setFailureHandler(std::function<void(const QString&)> handler)
{
    const QMutexLocker lock(&m_mutex);
    m_failureHandler = std::move(handler);
    if (m_failureHandler && !m_failedPath.isEmpty())
        std::exchange(m_failureHandler, {})(m_failedPath);
}

void SettingsFile::refresh() const
{
    const auto now = std::chrono::steady_clock::now();
    if (m_stampSettled && now - m_lookedAt < cLookInterval)
        return;
    m_lookedAt = now;
    const platform::FileStamp stamp = platform::fileStamp(m_path);
    if (m_stampSettled && stamp == m_stamp)
        return;
    QByteArray text;
    // A file that is being replaced on Windows cannot be read for a moment: the next read tries again.
    if (readText(text) == Content::Unreadable)
        return;
    m_stamp = stamp;
    m_stampSettled = isSettled(stamp);
    if (text == m_document.text())
        return;
    m_document = IniDocument(text);
    if (m_document.isComplete() && !text.isEmpty())
        m_lastComplete = m_document;
}

SettingsFile::Content SettingsFile::readText(QByteArray& text) const
{
    QFile file(m_path);
    if (!file.exists())
        return Content::Missing;
    if (!file.open(QIODevice::ReadOnly))
        return Content::Unreadable;
    text = file.read(cMaximumBytes);
    return file.error() == QFileDevice::NoError ? Content::Read : Content::Unreadable;
}

void SettingsFile::store()
{
    // Other processes of this user, and earlier versions, lock the same file. It goes on without the lock
    // when one of them hangs: the file is replaced whole all the same.
    QLockFile lock(m_path + QLatin1String(".lock"));
    waitFor(lock);

    QByteArray text;
    const Content content = readText(text);
    if (content == Content::Unreadable) {
        fail(m_path, QStringLiteral("the file cannot be read"));
        return;
    }
    IniDocument document(text);
    if (!document.isText()) {
        // What a user may still want to see.
        const QString copy = m_path + QLatin1String(".damaged");
        QFile::remove(copy);
        QFile::copy(m_path, copy);
        document = m_lastComplete;
    } else if (content == Content::Read && (text.isEmpty() || !document.isComplete())) {
        document.addMissing(m_lastComplete);
    }
    for (auto entry = m_unsaved.cbegin(); entry != m_unsaved.cend(); ++entry)
        document.setValue(entry.key(), entry.value());
    if (document.text() != text) {
        QSaveFile file(m_path);
        if (!jsonfile::stage(file, document.text()) || !file.commit()) {
            fail(m_path, file.errorString());
            return;
        }
    }
    m_unsaved.clear();
    m_lastComplete = document;
    m_stampSettled = false;
    refresh();
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
