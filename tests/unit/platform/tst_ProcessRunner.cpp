// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ProcessRunner.h"
#include "tests/support/ScriptFolder.h"
#include "tests/support/TestCase.h"

#include <QtTest>

#include <atomic>
#include <thread>

using platform::ProcessOutcome;
using platform::ProcessRequest;

class ProcessRunnerTest : public TestCase
{
    Q_OBJECT

private:
    test::ScriptFolder m_scripts;

    ProcessOutcome run(const QByteArray& steps, int finishTimeoutMs = 10000) const
    {
        ProcessRequest request;
        request.program = m_scripts.add("program", steps);
        request.finishTimeoutMs = finishTimeoutMs;
        return platform::runProcess(request);
    }

private Q_SLOTS:
    void endsByItself_data()
    {
        const test::Table<QByteArray, int, QByteArray, QByteArray> table("steps", "exitCode", "output",
                                                                         "errors");
        table.row("success", "out out\\n\nerr err\\n", 0, "out\n", "err\n");
        table.row("failure", "err no\\n\nexit 5", 5, {}, "no\n");
        table.row("more than a pipe holds", "zeros 300000", 0, QByteArray(300000, '\0'), {});
        table.row("asks for input", "input", 0, "end", {});
    }

    void endsByItself()
    {
        QFETCH(QByteArray, steps);
        const ProcessOutcome outcome = run(steps);
        QCOMPARE(outcome.end, ProcessOutcome::End::Exited);
        QTEST(outcome.exitCode, "exitCode");
        QTEST(outcome.standardOutput, "output");
        QTEST(outcome.standardError, "errors");
    }

    void missingProgram()
    {
        ProcessRequest request;
        request.program = m_scripts.path("missing");
        const ProcessOutcome outcome = platform::runProcess(request);
        QCOMPARE(outcome.end, ProcessOutcome::End::NotStarted);
        QCOMPARE(outcome.exitCode, -1);
    }

    void crash() { QCOMPARE(run("crash").end, ProcessOutcome::End::Crashed); }

    void hangingProgramIsKilled()
    {
        const QString idFile = m_scripts.path("id");
        // The program ignores the request to end.
        const ProcessOutcome outcome = run("deaf\nid id\nhang", 300);
        QCOMPARE(outcome.end, ProcessOutcome::End::TimedOut);
        QCOMPARE(outcome.exitCode, -1);
        const qint64 id = test::processIdIn(idFile);
        QVERIFY(id > 0);
        QVERIFY(!test::processRuns(id));
    }

    void cancelledFromAnotherThread()
    {
        std::atomic_bool cancelled{false};
        const QString idFile = m_scripts.path("cancelled.id");
        ProcessRequest request;
        request.program = m_scripts.add("program", "id cancelled.id\nhang");
        request.finishTimeoutMs = 60000;
        request.cancelled = &cancelled;
        std::thread canceller([&cancelled, &idFile] {
            while (test::processIdIn(idFile) == 0)
                std::this_thread::yield();
            cancelled = true;
        });
        const ProcessOutcome outcome = platform::runProcess(request);
        canceller.join();
        QCOMPARE(outcome.end, ProcessOutcome::End::Cancelled);
        QVERIFY(!test::processRuns(test::processIdIn(idFile)));
        // No program starts after that.
        request.program = m_scripts.path("missing");
        QCOMPARE(platform::runProcess(request).end, ProcessOutcome::End::Cancelled);
    }
};

QUORVEL_TEST_MAIN(ProcessRunnerTest, QCoreApplication)
#include "tst_ProcessRunner.moc"
