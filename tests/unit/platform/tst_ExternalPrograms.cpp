// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/FileManager.h"
#include "platform/FlashTool.h"
#include "platform/InstallerLauncher.h"
#include "tests/support/ScriptFolder.h"
#include "tests/support/TestCase.h"

#include <QDir>
#include <QtTest>

/// Places and arguments of external programs.
class ExternalProgramsTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void flashToolComesFromTheShippedPlaceFirst()
    {
        if (platform::flashToolPath().endsWith(QLatin1String(".exe")))
            QSKIP("On Windows the shipped tool is the only one.");
        const test::ScriptFolder scripts;
        // Only this folder is on PATH, so that installed programs are not found.
        qputenv("PATH", QFile::encodeName(scripts.path(QString())));
        const QString shipped =
            QCoreApplication::applicationDirPath() + QStringLiteral("/plugins/sunxi-tools/sunxi-fel");
        QFile::remove(shipped);
        QCOMPARE(platform::flashToolPath(), shipped);
        const QString installed = scripts.add("sunxi-fel");
        QCOMPARE(platform::flashToolPath(), installed);
        QVERIFY(QDir().mkpath(QFileInfo(shipped).path()));
        QVERIFY(QFile::copy(installed, shipped));
        QCOMPARE(platform::flashToolPath(), shipped);
        // A text file is not a tool.
        QVERIFY(QFile::setPermissions(shipped, QFile::ReadOwner | QFile::WriteOwner));
        QCOMPARE(platform::flashToolPath(), installed);
        QVERIFY(QFile::remove(shipped));
    }

    void installerPathIsOneArgument()
    {
        const test::ScriptFolder scripts;
        scripts.addRecorder(test::ScriptFolder::opener());
        const QString installer = "/tmp/A User's/Quorvel-installer.exe";
        QVERIFY(platform::openInstaller(installer));
        QTRY_COMPARE(scripts.calls(test::ScriptFolder::opener()),
                     QList<QStringList>{{test::ScriptFolder::openerArgument(installer)}});
    }

    /// A blank or a comma outside the quotes would split the path. A switch inside them would not work.
    void explorerGetsAQuotedPath()
    {
        const platform::ShellCommand open = platform::explorerCommand("C:/A User/x,%1.exe");
        QCOMPARE(open.program, QStringLiteral("explorer"));
        QCOMPARE(open.nativeArguments, QStringLiteral("\"file:///C:/A User/x,%1.exe\""));
        const platform::ShellCommand show = platform::explorerSelectCommand("C:/My Documents/curve 1,2.json");
        QCOMPARE(show.program, QStringLiteral("explorer.exe"));
        QCOMPARE(show.nativeArguments, QStringLiteral("/select,\"C:\\My Documents\\curve 1,2.json\""));
    }

    void installerWithoutDesktop()
    {
        if (test::ScriptFolder::opener() == QLatin1String("explorer"))
            QSKIP("Windows always has Explorer.");
        const test::ScriptFolder scripts;
        qputenv("PATH", QFile::encodeName(scripts.path(QString())));
        QVERIFY(!platform::openInstaller("/tmp/x.exe"));
    }
};

QUORVEL_TEST_MAIN(ExternalProgramsTest, QCoreApplication)
#include "tst_ExternalPrograms.moc"
