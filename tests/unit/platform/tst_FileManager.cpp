// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/FileManager.h"
#include "tests/support/ScriptFolder.h"
#include "tests/support/TestCase.h"

#include <QDBusConnection>
#include <QtTest>

/// A file manager on the session bus that records the requests.
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
        qunsetenv("DBUS_SESSION_BUS_ADDRESS");
        qputenv("XDG_RUNTIME_DIR", QFile::encodeName(m_folder.path()));
    }

    void folderIsOpenedWithoutABus()
    {
        for (const char* name : {"xdg-open", ""}) {
            const test::ScriptFolder scripts;
            scripts.addRecorder("xdg-open");
            QVERIFY(platform::showInFileManager(scripts.path(name)));
            QTRY_COMPARE(scripts.calls("xdg-open"), QList<QStringList>{{scripts.path({})}});
        }
    }

    // This test runs last, because the process keeps its session bus from here on.
    void fileManagerOnTheBusShowsTheFile()
    {
        QProcess daemon;
        daemon.start("dbus-daemon", {"--session", "--nofork", "--print-address"});
        if (!daemon.waitForStarted())
            QSKIP("needs dbus-daemon");
        QVERIFY(daemon.waitForReadyRead());
        const QByteArray address = daemon.readLine().trimmed();
        qputenv("DBUS_SESSION_BUS_ADDRESS", address);

        const QString objectPath = "/org/freedesktop/FileManager1";
        QDBusConnection bus = QDBusConnection::connectToBus(QString::fromLatin1(address), "file manager");
        FakeFileManager fileManager;
        QVERIFY(bus.registerObject(objectPath, &fileManager, QDBusConnection::ExportAllSlots));
        QVERIFY(bus.registerService("org.freedesktop.FileManager1"));

        QSignalSpy asked(&fileManager, &FakeFileManager::asked);
        const QString path = m_folder.filePath("a curve.json");
        QVERIFY(platform::showInFileManager(path));
        QVERIFY(asked.wait());
        QCOMPARE(asked.first().first().toStringList(),
                 QStringList{QStringLiteral("file://") + m_folder.filePath("a%20curve.json")});

        // A file manager that refuses counts as missing.
        bus.unregisterObject(objectPath);
        const test::ScriptFolder scripts;
        scripts.addRecorder("xdg-open");
        QVERIFY(platform::showInFileManager(path));
        QTRY_COMPARE(scripts.calls("xdg-open"), QList<QStringList>{{m_folder.path()}});
        QDBusConnection::disconnectFromBus(bus.name());
        daemon.terminate();
        QVERIFY(daemon.waitForFinished());
    }

private:
    const QTemporaryDir m_folder;
};

QUORVEL_TEST_MAIN(FileManagerTest, QCoreApplication)
#include "tst_FileManager.moc"
