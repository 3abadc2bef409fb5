// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/FileManager.h"
#include "tests/support/TestCase.h"

#include <QDBusConnection>
#include <QtTest>

/// A file manager on the session bus that notes what it is asked to show.
class FakeFileManager : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.FileManager1")

public Q_SLOTS:
    void ShowItems(const QStringList& uris, const QString& startupId)
    {
        Q_UNUSED(startupId)
        Q_EMIT asked(uris);
    }

Q_SIGNALS:
    void asked(const QStringList& uris);
};

class FileManagerTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        // What the desktop would open is noted in a file.
        QFile script(m_folder.filePath(QStringLiteral("xdg-open")));
        QVERIFY(script.open(QIODevice::WriteOnly));
        script.write("#!/bin/sh\nprintf '%s' \"$*\" > \"$0.tmp\" && mv \"$0.tmp\" \"$0.opened\"\n");
        script.close();
        QVERIFY(script.setPermissions(script.permissions() | QFileDevice::ExeOwner));
        qputenv("PATH", QFile::encodeName(m_folder.path()) + ':' + qgetenv("PATH"));
        qunsetenv("DBUS_SESSION_BUS_ADDRESS");
        qputenv("XDG_RUNTIME_DIR", QFile::encodeName(m_folder.path()));
    }

    void explorerGetsOneArgument()
    {
        const platform::ShellCommand command =
            platform::explorerSelectCommand(QStringLiteral("C:/My Documents/curve 1.json"));
        QCOMPARE(command.program, QStringLiteral("explorer.exe"));
        QCOMPARE(command.arguments, QStringList{QStringLiteral("/select,C:\\My Documents\\curve 1.json")});
    }

    void folderIsOpenedWithoutABus_data()
    {
        QTest::addColumn<QString>("path");
        QTest::newRow("a file") << m_folder.filePath(QStringLiteral("xdg-open"));
        QTest::newRow("a folder") << m_folder.path();
    }

    void folderIsOpenedWithoutABus()
    {
        QFETCH(QString, path);
        QVERIFY(platform::showInFileManager(path));
        QFile opened(m_opened);
        QTRY_VERIFY(opened.exists());
        QVERIFY(opened.open(QIODevice::ReadOnly));
        QCOMPARE(QFile::decodeName(opened.readAll()), m_folder.path());
        QVERIFY(opened.remove());
    }

    // The last one: from here on the process has a session bus.
    void fileManagerOnTheBusShowsTheFile()
    {
        QProcess daemon;
        daemon.start(QStringLiteral("dbus-daemon"), {QStringLiteral("--session"), QStringLiteral("--nofork"),
                                                     QStringLiteral("--print-address")});
        if (!daemon.waitForStarted())
            QSKIP("needs dbus-daemon");
        QVERIFY(daemon.waitForReadyRead());
        const QByteArray address = daemon.readLine().trimmed();
        qputenv("DBUS_SESSION_BUS_ADDRESS", address);

        const QString objectPath = QStringLiteral("/org/freedesktop/FileManager1");
        QDBusConnection bus =
            QDBusConnection::connectToBus(QString::fromLatin1(address), QStringLiteral("file manager"));
        FakeFileManager fileManager;
        QVERIFY(bus.registerObject(objectPath, &fileManager, QDBusConnection::ExportAllSlots));
        QVERIFY(bus.registerService(QStringLiteral("org.freedesktop.FileManager1")));

        QSignalSpy asked(&fileManager, &FakeFileManager::asked);
        const QString path = m_folder.filePath(QStringLiteral("a curve.json"));
        QVERIFY(platform::showInFileManager(path));
        QVERIFY(asked.wait());
        QCOMPARE(
            asked.first().first().toStringList(),
            QStringList{QStringLiteral("file://") + m_folder.filePath(QStringLiteral("a%20curve.json"))});

        // One that refuses is as good as none.
        bus.unregisterObject(objectPath);
        QVERIFY(platform::showInFileManager(path));
        QTRY_VERIFY(QFile::exists(m_opened));
        QDBusConnection::disconnectFromBus(bus.name());
        daemon.terminate();
        QVERIFY(daemon.waitForFinished());
    }

private:
    const QTemporaryDir m_folder;
    const QString m_opened = m_folder.filePath(QStringLiteral("xdg-open.opened"));
};

QUORVEL_TEST_MAIN(FileManagerTest, QCoreApplication)
#include "tst_FileManager.moc"
