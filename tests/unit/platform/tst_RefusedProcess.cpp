// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ChildProcess.h"
#include "platform/ProcessRunner.h"
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

namespace {

volatile std::sig_atomic_t killCalls = 0;

void onSigsys(int)
{
    killCalls = killCalls + 1;
}

/// From now on this process gets no child by clone() with a process descriptor, as at a user's limit of
/// processes; kill() only counts. Without the latter a fault would end every process of whoever runs the
/// test.
bool refuseProcesses()
{
    std::array<sock_filter, 8> filter{{
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_kill, 5, 0),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_clone, 0, 3),
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, args)),
        BPF_JUMP(BPF_JMP | BPF_JSET | BPF_K, CLONE_VM, 1, 0),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | EAGAIN),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_TRAP),
    }};
    const sock_fprog program{static_cast<unsigned short>(filter.size()), filter.data()};
    return std::signal(SIGSYS, onSigsys) != SIG_ERR && prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
           prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) == 0;
}

} // namespace

class RefusedProcessTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    static void initTestCase()
    {
        qRegisterMetaType<QProcess::ProcessError>();
        QVERIFY(refuseProcesses());
    }

    static void runEndsAsNotStarted()
    {
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
