// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/TestCase.h"

#include "platform/UserFolders.h"

#include <QDir>
#include <QLocale>
#include <QTemporaryDir>
#include <QtTest>

#include <algorithm>
#include <mutex>
#include <vector>

namespace {

/// Guards the variables below, because warnings come from any thread.
std::mutex warningMutex;
std::vector<QRegularExpression> expectedWarnings;
QStringList unexpectedWarnings;
QtMessageHandler nextHandler = nullptr;

void watchWarnings(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    if (type == QtWarningMsg || type == QtCriticalMsg) {
        const std::lock_guard<std::mutex> lock(warningMutex);
        const bool expected = std::any_of(
            expectedWarnings.cbegin(), expectedWarnings.cend(),
            [&message](const QRegularExpression& pattern) { return pattern.match(message).hasMatch(); });
        if (!expected)
            unexpectedWarnings.append(message);
    }
    nextHandler(type, context, message);
}

} // namespace

void TestCase::expectWarning(const QString& pattern)
{
    const std::lock_guard<std::mutex> lock(warningMutex);
    expectedWarnings.emplace_back(pattern);
}

void TestCase::init()
{
    const std::lock_guard<std::mutex> lock(warningMutex);
    expectedWarnings.clear();
    unexpectedWarnings.clear();
    nextHandler = qInstallMessageHandler(watchWarnings);
}

void TestCase::cleanup()
{
    qInstallMessageHandler(nextHandler);
    const std::lock_guard<std::mutex> lock(warningMutex);
    QVERIFY2(unexpectedWarnings.isEmpty(), qPrintable(unexpectedWarnings.join(QLatin1Char('\n'))));
}

bool test::writeFile(const QString& path, const QByteArray& content)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
}

QByteArray test::contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void test::isolateHome()
{
    static const QTemporaryDir home;
    const QDir folder(home.path());
    const QStringList folders{"Documents", "Desktop", "AppData", ".config", "tmp"};
    for (const QString& name : folders)
        folder.mkpath(name);
    writeFile(folder.filePath(".config/user-dirs.dirs"),
              "XDG_DOCUMENTS_DIR=\"$HOME/Documents\"\nXDG_DESKTOP_DIR=\"$HOME/Desktop\"\n");
    qputenv("HOME", QFile::encodeName(home.path()));
    for (const char* variable : {"TMPDIR", "TMP", "TEMP"})
        qputenv(variable, QFile::encodeName(QDir::toNativeSeparators(folder.filePath("tmp"))));
    platform::redirectUserFolders(home.path());
    qunsetenv("XDG_CONFIG_HOME");
    qunsetenv("XDG_DATA_HOME");
    qunsetenv("XDG_CACHE_HOME");

    // Qt reads and keeps the locale here. The C library reads its locale later.
    const QByteArray language = qgetenv("LC_ALL");
    qputenv("LC_ALL", "ar_EG");
    QLocale::system();
    language.isNull() ? qunsetenv("LC_ALL") : qputenv("LC_ALL", language);
}
