// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/FlashTool.h"
#include "platform/InstallerLauncher.h"
#include "tests/support/ScriptFolder.h"
#include "tests/support/TestCase.h"

#include <QDir>
#include <QtTest>

/// Where the programs of others are found and what they are handed.
class ExternalProgramsTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void flashToolComesFromTheShippedPlaceFirst()
    {
        const test::ScriptFolder scripts;
        // Nothing but this folder on PATH, whatever the machine has installed.
        qputenv("PATH", QFile::encodeName(scripts.path(QString())));
        const QString shipped =
            QCoreApplication::applicationDirPath() + QStringLiteral("/plugins/sunxi-tools/sunxi-fel");
        QFile::remove(shipped);
        QCOMPARE(platform::flashToolPath(), shipped);
        const QString installed = scripts.add("sunxi-fel", ":");
        QCOMPARE(platform::flashToolPath(), installed);
        QVERIFY(QDir().mkpath(QFileInfo(shipped).path()));
        QVERIFY(QFile::copy(installed, shipped));
        QCOMPARE(platform::flashToolPath(), shipped);
        // A note beside it is no tool.
        QVERIFY(QFile::setPermissions(shipped, QFile::ReadOwner | QFile::WriteOwner));
        QCOMPARE(platform::flashToolPath(), installed);
        QVERIFY(QFile::remove(shipped));
    }

    void installerPathIsOneArgument()
    {
        const test::ScriptFolder scripts;
        scripts.addRecorder("xdg-open", ":");
        const QString installer = "/tmp/A User's/Quorvel-installer.exe";
        QVERIFY(platform::openInstaller(installer));
        QTRY_COMPARE(scripts.calls("xdg-open"), QList<QStringList>{{installer}});

        const platform::ShellCommand windows = platform::explorerCommand("C:/A User/x.exe");
        QCOMPARE(windows.program, QStringLiteral("explorer"));
        QCOMPARE(windows.arguments, QStringList{"file:///C:/A User/x.exe"});
    }

    void installerWithoutDesktop()
    {
        const test::ScriptFolder scripts;
        qputenv("PATH", QFile::encodeName(scripts.path(QString())));
        QVERIFY(!platform::openInstaller("/tmp/x.exe"));
    }
};

QUORVEL_TEST_MAIN(ExternalProgramsTest, QCoreApplication)
#include "tst_ExternalPrograms.moc"
