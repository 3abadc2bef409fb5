// SPDX-License-Identifier: GPL-3.0-or-later
#include "instrument/InstrumentSupervisor.h"
#include "tests/fakes/FakeBusTest.h"

class InstrumentSupervisorTest : public FakeBusTest
{
    Q_OBJECT

private:
    static void poll(InstrumentSupervisor& supervisor, int times)
    {
        for (int i = 0; i < times; ++i)
            supervisor.poll();
    }

private Q_SLOTS:
    void everyFifthPollTriesToOpenSilently()
    {
        InstrumentSupervisor supervisor;
        const QSignalSpy failures(&supervisor, &InstrumentSupervisor::openFailed);
        poll(supervisor, 4);
        QCOMPARE(fakehid::record().enumerations, 0);
        poll(supervisor, 1);
        QCOMPARE(fakehid::record().enumerations, 1);
        poll(supervisor, 5);
        QCOMPARE(fakehid::record().enumerations, 2);
        QCOMPARE(failures.count(), 0);
        plugIn();
        poll(supervisor, 5);
        QVERIFY(supervisor.port().isOpen());
    }

    void silenceAfterOpeningReopens()
    {
        using namespace std::chrono_literals;
        plugIn();
        std::chrono::steady_clock::time_point now;
        QStringList log;
        InstrumentSupervisor supervisor([&log](const QString& line) { log.append(line); },
                                        [&now] { return now; });
        QVERIFY(supervisor.tryOpenDevice(true));
        const QSignalSpy states(&supervisor.port(), &InstrumentPort::stateChanged);
        now += 10s;
        poll(supervisor, 1);
        QCOMPARE(states.count(), 0);
        now += 1ms;
        poll(supervisor, 1);
        QCOMPARE(states.count(), 2);
        QVERIFY(supervisor.port().isOpen());
        QVERIFY(log.contains("No HID packet received within 10 seconds after open. Reopening device."));
        // One packet, valid or not, ends the rule for this opening.
        QSignalSpy packets(&supervisor.port(), &InstrumentPort::packetReceived);
        fakehid::send(cPath, QByteArray(1, '\x7F'));
        QVERIFY(packets.wait());
        now += 1min;
        poll(supervisor, 10);
        QCOMPARE(states.count(), 2);
    }
};

QUORVEL_TEST_MAIN(InstrumentSupervisorTest, QCoreApplication)
#include "tst_InstrumentSupervisor.moc"
