// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ChildProcess.h"
#include "platform/ProcessRunner.h"
#include "tests/support/ScriptFolder.h"
#include "tests/support/TestCase.h"

#include <QSignalSpy>
#include <QtTest>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <linux/filter.h>
#include <linux/sched.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <thread>

namespace {

volatile std::sig_atomic_t killCalls = 0;

void onSigsys(int)
{
    killCalls = killCalls + 1;
}

template <std::size_t Size>
bool install(std::array<sock_filter, Size> filter)
{
    const sock_fprog program{static_cast<unsigned short>(filter.size()), filter.data()};
    return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
           prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) == 0;
}

/// Makes kill() only count its calls, as if every process hung in the kernel. Without this a fault would end
/// every process of the user who runs the test.
bool ignoreKills()
{
    return std::signal(SIGSYS, onSigsys) != SIG_ERR &&
           install<4>({{
               BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
               BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_kill, 0, 1),
               BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_TRAP),
               BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
           }});
}

/// Makes clone() with a process descriptor fail, as it does at the user's limit of processes.
bool refuseProcesses()
{
    return install<6>({{
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_clone, 0, 3),
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, args)),
        BPF_JUMP(BPF_JMP | BPF_JSET | BPF_K, CLONE_VM, 1, 0),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | EAGAIN),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
    }});
}

} // namespace

class RefusedProcessTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    static void initTestCase()
    {
        qRegisterMetaType<QProcess::ProcessError>();
        QVERIFY(ignoreKills());
    }

    /// The wait for a program that cannot be killed ends after the grace. The program is reaped when it ends.
    static void unkillable()
    {
        const test::ScriptFolder scripts;
        const QString id = scripts.path("id");
        platform::ProcessRequest request;
        request.program = scripts.add("program", "id id\nuntil go");
        request.finishTimeoutMs = 1000;
        request.killGraceMs = 1;
        // Like a pool thread, this thread has no event loop and ends before the program.
        std::thread([&request] { platform::runProcess(request); }).join();
        const QString process = "/proc/" + QString::number(test::processIdIn(id));
        QVERIFY(killCalls > 0);
        QVERIFY(test::processRuns(test::processIdIn(id)));
        QVERIFY(test::writeFile(scripts.path("go"), {}));
        QTRY_VERIFY(!QFile::exists(process));
        killCalls = 0;
    }

    static void runEndsAsNotStarted()
    {
        QVERIFY(refuseProcesses());
        platform::ProcessRequest request;
        request.program = QStringLiteral("true");
        const platform::ProcessOutcome outcome = platform::runProcess(request);
        QCOMPARE(outcome.end, platform::ProcessOutcome::End::NotStarted);
        QCOMPARE(outcome.exitCode, -1);
        QCOMPARE(int(killCalls), 0);
    }

    static void tellsOnceAndCanBeDeleted()
    {
        {
            platform::ChildProcess process;
            const QSignalSpy errors(&process, &QProcess::errorOccurred);
            process.start(QStringLiteral("true"), QStringList());
            QCOMPARE(errors.count(), 1);
            QCOMPARE(errors.first().first().value<QProcess::ProcessError>(), QProcess::FailedToStart);
            QCOMPARE(process.state(), QProcess::NotRunning);
        }
        QCOMPARE(int(killCalls), 0);
    }
};

QUORVEL_TEST_MAIN(RefusedProcessTest, QCoreApplication)
#include "tst_RefusedProcess.moc"
