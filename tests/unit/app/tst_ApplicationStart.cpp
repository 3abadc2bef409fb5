// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/GenApplication.h"
#include "app/GenToolbox.h"
#include "app/SingleInstance.h"
#include "qmlsupport/GenControlQmlGlobal.h"
#include "storage/ApplicationInfo.h"
#include "tests/support/TestCase.h"

#include <QLocalServer>
#include <QMessageBox>
#include <QProcess>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QTemporaryDir>
#include <QThread>
#include <QTimer>
#include <QtTest>

#include <sys/stat.h>
#include <unistd.h>

#include <memory>
#include <vector>

namespace {

/// Makes this program play an instance: claim, or claim and restart once, with a line in this file for each
/// instance that started and one for what its claim gave.
constexpr const char* cLogVariable = "QUORVEL_TEST_INSTANCE_LOG";
constexpr uint cOtherUser = 65534;

void say(const QByteArray& line)
{
    QFile log(qEnvironmentVariable(cLogVariable));
    if (log.open(QIODevice::WriteOnly | QIODevice::Append))
        log.write(line + '\n');
}

/// Does the same as main(), and restarts as soon as the event loop runs.
int playInstance(int argc, char** argv)
{
    const bool restarted = qEnvironmentVariableIsSet(cRestartVariable);
    SingleInstance instance;
    GenApplication app(argc, argv);
    say("started");
    const SingleInstance::Claim claim = instance.claim();
    say("claim " + QByteArray::number(int(claim)));
    if (restarted || claim != SingleInstance::Claim::First)
        return 0;
    GenControlQmlGlobal globals(&app, app.toolbox());
    QTimer::singleShot(0, &globals, &GenControlQmlGlobal::restartApp);
    const int exitCode = QCoreApplication::exec();
    // Plays the slow end of an instance that has to finish its work.
    return QTest::qWaitFor(
               [] { return test::contentOf(qEnvironmentVariable(cLogVariable)).count("started") == 2; })
               ? exitCode
               : 1;
}

/// Returns the result of a claim by this program, run as another user.
QByteArray claimAs(uint user, const QString& temporaryFolder)
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("TMPDIR", temporaryFolder);
    environment.insert(cRestartVariable, "1"); // one claim, and the end
    environment.insert(cLogVariable, temporaryFolder + "/log-" + QString::number(user));
    process.setProcessEnvironment(environment);
    const QString id = QString::number(user);
    process.start("setpriv",
                  {"--reuid", id, "--regid", id, "--clear-groups", QCoreApplication::applicationFilePath()});
    process.waitForFinished();
    return test::contentOf(environment.value(cLogVariable)).split('\n').value(1);
}

/// Returns the shown message, or null.
QMessageBox* messageBox()
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget* window : windows) {
        auto* box = qobject_cast<QMessageBox*>(window);
        if (box != nullptr && box->isVisible())
            return box;
    }
    return nullptr;
}

} // namespace

class ApplicationStartTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TestCase::init();
        m_folder = std::make_unique<QTemporaryDir>("/tmp/quorvel-runtime-XXXXXX");
        qputenv("XDG_RUNTIME_DIR", QFile::encodeName(m_folder->path()));
        // Shared by all users.
        m_shared = std::make_unique<QTemporaryDir>("/tmp/quorvel-shared-XXXXXX");
        qputenv("TMPDIR", QFile::encodeName(m_shared->path()));
        QCOMPARE(::chmod(QFile::encodeName(m_shared->path()).constData(), 01777), 0);
    }

    void secondInstanceOfAUserFindsTheFirst()
    {
        SingleInstance first;
        SingleInstance second;
        QCOMPARE(first.claim(), SingleInstance::Claim::First);
        QCOMPARE(second.claim(), SingleInstance::Claim::AnotherRuns);
        // Another user's folder.
        const QTemporaryDir other("/tmp/quorvel-runtime-XXXXXX");
        qputenv("XDG_RUNTIME_DIR", QFile::encodeName(other.path()));
        QCOMPARE(second.claim(), SingleInstance::Claim::First);
    }

    void instancesOfOneMomentAgreeOnTheFirst()
    {
        std::atomic<int> firsts{0};
        std::atomic<int> undecided{8};
        std::vector<std::unique_ptr<QThread>> threads;
        for (int i = undecided; i > 0; --i) {
            threads.emplace_back(QThread::create([&firsts, &undecided] {
                SingleInstance instance;
                firsts += instance.claim() == SingleInstance::Claim::First;
                --undecided;
                while (undecided > 0)
                    QThread::yieldCurrentThread();
            }));
            threads.back()->start();
        }
        for (const auto& thread : threads)
            QVERIFY(thread->wait());
        QCOMPARE(firsts.load(), 1);
    }

    void socketOfAKilledInstanceIsReplaced()
    {
        // A server that is destroyed removes its socket; a second name of the socket outlives it.
        const QByteArray path = QFile::encodeName(m_folder->filePath(singleInstanceKey()));
        {
            QLocalServer killed;
            QVERIFY(killed.listen(m_folder->filePath("killed")));
            QCOMPARE(::link(QFile::encodeName(killed.fullServerName()).constData(), path.constData()), 0);
        }
        SingleInstance instance;
        QCOMPARE(instance.claim(), SingleInstance::Claim::First);
    }

    void instanceOfAnEarlierVersionCounts()
    {
        QLocalServer earlier;
        QVERIFY(earlier.listen(singleInstanceKey()));
        SingleInstance instance;
        QCOMPARE(instance.claim(), SingleInstance::Claim::AnotherRuns);
    }

    /// Another user may have made the folder below /tmp before.
    void folderThatOthersMayWriteIsRefused()
    {
        qunsetenv("XDG_RUNTIME_DIR");
        const QString folder = m_shared->filePath("quorvel-" + QString::number(::geteuid()));
        if (QFile::exists("/run/user/" + QString::number(::geteuid())))
            QSKIP("this user has a runtime folder");
        SingleInstance instance;
        QVERIFY(QDir().mkdir(folder));
        QCOMPARE(::chmod(QFile::encodeName(folder).constData(), 0777), 0);
        QCOMPARE(instance.claim(), SingleInstance::Claim::Failed);
        QVERIFY2(instance.errorString().contains(folder), qPrintable(instance.errorString()));
        QVERIFY(QDir().rmdir(folder));
        QCOMPARE(instance.claim(), SingleInstance::Claim::First);
    }

    void usersDoNotMeetInASharedFolder()
    {
        if (::geteuid() != 0)
            QSKIP("only the administrator can play two users");
        qunsetenv("XDG_RUNTIME_DIR");
        QLocalServer squatter;
        QVERIFY(squatter.listen(singleInstanceKey()));
        SingleInstance instance;
        const QByteArray first = "claim " + QByteArray::number(int(SingleInstance::Claim::First));
        const QByteArray failed = "claim " + QByteArray::number(int(SingleInstance::Claim::Failed));
        QCOMPARE(claimAs(cOtherUser, m_shared->path()), first);
        // A folder made for somebody else beforehand.
        QVERIFY(QDir().mkdir(m_shared->filePath("quorvel-1234")));
        QCOMPARE(claimAs(1234, m_shared->path()), failed);
    }

    void restartLeavesOneInstance()
    {
        const QString log = m_folder->filePath("log");
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(cLogVariable, log);
        process.setProcessEnvironment(environment);
        process.start(QCoreApplication::applicationFilePath(), QStringList());
        QVERIFY(process.waitForFinished());
        QCOMPARE(process.exitCode(), 0);
        const QByteArray first = "claim " + QByteArray::number(int(SingleInstance::Claim::First));
        QTRY_COMPARE(test::contentOf(log).count('\n'), 4);
        QCOMPARE(test::contentOf(log).count(first), 2);
    }

    void missingModuleOfAPageIsSaid()
    {
        expectWarning("is not installed|propagateSizeHints");
        QQmlEngine engine;
        genApp()->prepareEngine(engine);
        QQmlComponent page(&engine);
        page.setData(
            "import QtQuick 2.12\nLoader { source: 'data:text/plain,import Missing.Module 1.0; Item {}' }",
            QUrl());
        const std::unique_ptr<QObject> loader(page.create());
        QTRY_VERIFY(messageBox() != nullptr);
        QVERIFY(messageBox()->informativeText().contains("Missing.Module"));
        messageBox()->accept();
    }

    /// Runs last, because a message ends the program.
    void missingInterfaceIsSaid()
    {
        expectWarning("main.qml|failed to load component|quorvel-icon|propagateSizeHints");
        genApp()->registerQmlTypes();
        QVERIFY(genApp()->initQmlEngine());
        QTimer closing;
        QString said;
        connect(&closing, &QTimer::timeout, this, [&said] {
            if (QMessageBox* box = messageBox()) {
                said = box->informativeText();
                box->accept();
            }
        });
        closing.start(1);
        QCOMPARE(QCoreApplication::exec(), 1);
        QVERIFY2(said.contains("main.qml"), qPrintable(said));
    }

private:
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<QTemporaryDir> m_shared;
};

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsSet(cLogVariable))
        return playInstance(argc, argv);
    test::isolateHome();
    GenApplication app(argc, argv);
    ApplicationStartTest testObject;
    return QTest::qExec(&testObject, argc, argv);
}

#include "tst_ApplicationStart.moc"
