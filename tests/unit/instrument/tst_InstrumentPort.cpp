// SPDX-License-Identifier: GPL-3.0-or-later
#include "instrument/InstrumentPort.h"
#include "tests/fakes/FakeBusTest.h"

#include <array>
#include <cerrno>
#include <cstddef>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>

namespace {

HidHandle openHandle(const QByteArray& path)
{
    HidHandle handle(hid_open_path(path.constData()));
    hid_set_nonblocking(handle.get(), 0);
    return handle;
}

/// From now on this thread can make no other thread, as at a user's limit of processes.
bool refuseThreads()
{
    std::array<sock_filter, 5> filter{{
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_clone3, 1, 0),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_clone, 0, 1),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | EAGAIN),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
    }};
    const sock_fprog program{static_cast<unsigned short>(filter.size()), filter.data()};
    return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
           prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) == 0;
}

/// A port that writes down what it emits: "3" for a packet that carries a 3, "(3)" for one that came while
/// closing, and the states.
class TestPort : public InstrumentPort
{
public:
    TestPort()
    {
        connect(this, &InstrumentPort::packetReceived, this, [this](const InstrumentPacket& packet) {
            const auto values = protocol::decodeMeasurement(packet.bytes);
            const QString number = QString::number(values ? double(values->mainInputVoltage) : -1);
            events.append(state() == State::Closing ? '(' + number + ')' : number);
            readAt.push_back(packet.readAt);
        });
        connect(this, &InstrumentPort::stateChanged, this,
                [this](State state) { events.append(QVariant::fromValue(state).toString()); });
    }

    QStringList events;
    std::vector<std::chrono::steady_clock::time_point> readAt;
};

} // namespace

class InstrumentPortTest : public FakeBusTest
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        FakeBusTest::init();
        plugIn();
    }

    void packetsComeInOrderWithTheirTime()
    {
        QStringList expected{"Open"};
        for (int i = 1; i <= 50; ++i) {
            expected.append(QString::number(i));
            if (i > 1)
                fakehid::send(cPath, measurement(static_cast<float>(i)));
        }
        TestPort port;
        QVERIFY(port.open(openHandle(cPath), measurement(1)));
        QCOMPARE(port.events.mid(0, 2), expected.mid(0, 2));
        QTRY_COMPARE(port.events, expected);
        QVERIFY(std::is_sorted(port.readAt.cbegin(), port.readAt.cend()));
        QVERIFY(std::chrono::steady_clock::now() - port.readAt.front() < std::chrono::minutes(1));
    }

    void aReadErrorComesAfterThePackets_data()
    {
        const test::Table<QString> table("text");
        table.row("with a text", "poll error");
        table.row("without", {});
    }

    void aReadErrorComesAfterThePackets()
    {
        QFETCH(QString, text);
        TestPort port;
        QVERIFY(port.open(openHandle(cPath)));
        fakehid::send(cPath, measurement(1));
        fakehid::send(cPath, measurement(2));
        fakehid::failReads(cPath, text);
        QTRY_COMPARE(port.events, QStringList({"Open", "1", "2", "Failed"}));
        QCOMPARE(port.failure(), "HID read failed. " + text);
        QCOMPARE(fakehid::record().openHandles, 0);
        QVERIFY(!port.write(measurement(1)));
    }

    void aFailedWriteClosesThePort()
    {
        TestPort port;
        QVERIFY(port.open(openHandle(cPath)));
        fakehid::failWrites(cPath, true);
        QVERIFY(!port.write(measurement(1)));
        QCOMPARE(port.failure(), QStringLiteral("HID write failed."));
        QCOMPARE(fakehid::record().openHandles, 0);
        fakehid::failWrites(cPath, false);
        QVERIFY(port.open(openHandle(cPath)));
        QVERIFY(port.write("\x01"));
        QCOMPARE(fakehid::written(cPath).value(0), QByteArray("\0\x01", 2) + QByteArray(63, '\0'));
        QCOMPARE(port.events, QStringList({"Open", "Failed", "Open"}));
    }

    void closingHandsOverWhatWasRead()
    {
        TestPort port;
        QVERIFY(port.open(openHandle(cPath)));
        fakehid::send(cPath, measurement(1));
        fakehid::send(cPath, measurement(2));
        fakehid::failReads(cPath, "gone");
        QVERIFY(waitForReaders());
        QVERIFY(port.close());
        QVERIFY(!port.close());
        QCOMPARE(port.events, QStringList({"Open", "(1)", "(2)", "Closed"}));
        // Nothing of it reaches the next opening.
        fakehid::reset();
        plugIn();
        QVERIFY(port.open(openHandle(cPath)));
        fakehid::send(cPath, measurement(3));
        QTRY_COMPARE(port.events.mid(4), QStringList({"Open", "3"}));
        QVERIFY(port.failure().isEmpty());
    }

    void aReceiverMayCloseAndOpenThePort()
    {
        TestPort port;
        connect(&port, &InstrumentPort::packetReceived, &port, [&port] {
            if (port.events.size() == 2) {
                port.close();
                port.open(openHandle(cPath), measurement(7));
            }
        });
        QVERIFY(port.open(openHandle(cPath)));
        for (int i = 1; i <= 3; ++i)
            fakehid::send(cPath, measurement(static_cast<float>(i)));
        fakehid::failReads(cPath, "gone");
        QVERIFY(waitForReaders());
        QTRY_COMPARE(port.events, QStringList({"Open", "1", "(2)", "(3)", "Closed", "Open", "7", "Failed"}));
    }

    void aReceiverMayCloseThePortWhileItOpens()
    {
        TestPort port;
        connect(&port, &InstrumentPort::stateChanged, &port, &InstrumentPort::close);
        QVERIFY(!port.open(openHandle(cPath), measurement(1)));
        QCOMPARE(port.events, QStringList({"Open", "(1)", "Closed"}));
    }

    void aSlowReceiverLeavesTimeForOthers_data()
    {
        const test::Table<bool> table("closes");
        table.row("reads on", false);
        table.row("closes in the middle", true);
    }

    void aSlowReceiverLeavesTimeForOthers()
    {
        QFETCH(bool, closes);
        constexpr int cPackets = 300;
        constexpr int cLongestBatch = 101; // 100 ms, and the packet that exceeds them
        TestPort port;
        QVector<int> batches{0};
        connect(&port, &InstrumentPort::packetReceived, &port, [&batches] {
            ++batches.last();
            const QDeadlineTimer slow(1, Qt::PreciseTimer);
            while (!slow.hasExpired())
                QThread::yieldCurrentThread();
        });
        size_t mostWaiting = 0;
        connect(&port, &InstrumentPort::batchEnded, &port, [&] {
            mostWaiting = std::max(mostWaiting, port.waitingPackets());
            batches.append(0);
        });
        // Posted by the first interrupted batch, so it comes before the next one.
        if (closes)
            connect(&port, &InstrumentPort::batchEnded, &port, &InstrumentPort::close, Qt::QueuedConnection);
        QStringList expected;
        for (int i = 1; i <= cPackets; ++i) {
            expected.append(QString::number(i));
            fakehid::send(cPath, measurement(static_cast<float>(i)));
        }
        fakehid::failReads(cPath, "gone");
        QVERIFY(port.open(openHandle(cPath)));
        QVERIFY(waitForReaders());
        QCOMPARE(port.waitingPackets(), size_t(cPackets));
        QTRY_VERIFY(!port.isOpen());
        // Every packet came, in order, and the error after the last.
        const QString last = port.events.takeLast();
        QCOMPARE(last, QString(closes ? "Closed" : "Failed"));
        QStringList values = port.events.mid(1);
        values.replaceInStrings(QRegularExpression("[()]"), {});
        QCOMPARE(values, expected);
        QCOMPARE(port.events.contains("(300)"), closes);
        QVERIFY(!port.events.contains("(1)"));
        QCOMPARE(port.waitingPackets(), size_t(0));
        QVERIFY2(mostWaiting > 0 &&
                     (closes || *std::max_element(batches.cbegin(), batches.cend()) <= cLongestBatch),
                 qPrintable(QString::number(batches.size())));
    }

    void destructionDuringAPendingRead()
    {
        TestPort port;
        QVERIFY(port.open(openHandle(cPath)));
        QTRY_VERIFY(fakehid::readPending(cPath));
    }

    void vanishingTwoHundredTimesUnderFullLoad()
    {
        TestPort port;
        for (int cycle = 0; cycle < 200; ++cycle) {
            // A new node each time, as the kernel gives.
            const QByteArray path = "/dev/hidraw" + QByteArray::number(cycle + 1);
            plugIn(path);
            for (int i = 0; i < 63; ++i)
                fakehid::send(path, measurement(static_cast<float>(cycle)));
            port.events.clear();
            QVERIFY(port.open(openHandle(path)));
            // Vanish at different moments: with the first packet out, in the middle, when all are through.
            while (port.events.count(QString::number(cycle)) <= (cycle % 3) * 31)
                QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
            fakehid::unplug(path);
            if (cycle % 4 == 0)
                QVERIFY(!port.write(measurement(1))); // a write meets the empty port first
            while (port.isOpen())
                QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
            QCOMPARE(port.state(), InstrumentPort::State::Failed);
            QCOMPARE(fakehid::record().openHandles, 0);
        }
    }

    /// The last one: no thread can be made afterwards.
    void noThreadIsAFailure()
    {
        QVERIFY(refuseThreads());
        TestPort port;
        QVERIFY(!port.open(openHandle(cPath), measurement(1)));
        QCOMPARE(port.events, QStringList{"Failed"});
        QVERIFY(port.failure().startsWith("HID read failed. "));
    }
};

QUORVEL_TEST_MAIN(InstrumentPortTest, QCoreApplication)
#include "tst_InstrumentPort.moc"
