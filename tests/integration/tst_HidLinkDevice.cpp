// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/GenApplication.h"
#include "app/GenToolbox.h"
#include "hid/HidLink.h"
#include "tests/integration/InstrumentControl.h"
#include "tests/support/TestCase.h"

#include <QDir>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QtTest>

#include <numeric>
#include <vector>

namespace {

/// Number of times that the instrument is unplugged. A search for rare faults sets a larger number.
constexpr char cReplugCountVariable[] = "QUORVEL_TEST_REPLUGS";
constexpr int cReplugs = 12;
constexpr int cBurst = 3000;
constexpr int cTimeoutMs = 20'000;

int entries(const char* folder)
{
    return QDir(QString::fromLatin1(folder))
        .entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::System)
        .size();
}

} // namespace

/// The link on the real hidapi and a device node, without a window.
class HidLinkDeviceTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY2(m_instrument.connectToInstrument(), "run this program under the virtual instrument");
        m_link = genApp()->toolbox()->hidLink();
    }

    void init()
    {
        TestCase::init();
        QTRY_VERIFY_WITH_TIMEOUT(m_link->openDevice(), cTimeoutMs);
        waitForReading();
    }

    void cleanup()
    {
        if (QTest::currentTestFailed()) {
            // A test that failed half-way may have left the instrument in any state.
            for (const char* command :
                 {"interfaces 1", "replug", "rate 20", "burst 1", "auto", "write-errors 0"})
                m_instrument.ask(QLatin1String(command));
        }
        TestCase::cleanup();
    }

    void findsTheInstrumentAndItsIdentity()
    {
        QTRY_COMPARE(m_link->deviceId(), QStringLiteral("VIRTUAL-QI1"));
        QCOMPARE(m_instrument.status("open"), QStringLiteral("1"));
        QVERIFY(m_link->mainInputVoltage() > 4);
    }

    void everyPacketArrivesInOrderAtTheFullRate()
    {
        const QString number = "typeCMah";
        QVERIFY(ok(QStringLiteral("set %1 0").arg(number)));
        QTRY_COMPARE(m_link->typeCMah(), 0.0F);
        std::vector<int> received;
        QObject scope; // ends the connection wherever this function is left
        connect(m_link, &HidLink::measurementChanged, &scope,
                [this, &received] { // clazy:exclude=lambda-in-connect
                    if (m_link->typeCMah() > 0)
                        received.push_back(static_cast<int>(m_link->typeCMah()));
                });
        QVERIFY(ok(QStringLiteral("burst %1 1000").arg(cBurst)));
        QVERIFY(ok("drain"));
        QTRY_COMPARE(m_link->typeCMah(), 0.0F);
        std::vector<int> expected(cBurst);
        std::iota(expected.begin(), expected.end(), 1);
        QCOMPARE(received.size(), expected.size());
        QVERIFY(received == expected);
        QVERIFY(ok("auto"));
    }

    void vanishesAtAnyMomentAtTheFullRate()
    {
        bool given = false;
        const int asked = qEnvironmentVariableIntValue(cReplugCountVariable, &given);
        const int replugs = given ? asked : cReplugs;
        QVERIFY(ok("burst 10000000 1000"));
        int files = 0;
        int threads = 0;
        int packets = 0;
        QObject scope; // ends the connection wherever this function is left
        connect(m_link, &HidLink::measurementChanged, &scope,
                [&packets, this] { packets += m_link->connected(); }); // clazy:exclude=lambda-in-connect
        for (int round = 0; round < replugs; ++round) {
            const int until = packets + static_cast<int>(QRandomGenerator::global()->bounded(60));
            QTRY_VERIFY_WITH_TIMEOUT(packets >= until, cTimeoutMs);
            QVERIFY(ok("unplug"));
            QTRY_VERIFY_WITH_TIMEOUT(!m_link->connected(), cTimeoutMs);
            QCOMPARE(m_link->mainInputVoltage(), 0.0F);
            if (round == 0) {
                // The libraries may keep memory for good after the first open and close.
                files = entries("/proc/self/fd");
                threads = entries("/proc/self/task");
            }
            QCOMPARE(entries("/proc/self/fd"), files);
            QCOMPARE(entries("/proc/self/task"), threads);
            QVERIFY(ok("replug"));
            QTRY_VERIFY_WITH_TIMEOUT(m_link->openDevice(), cTimeoutMs);
            waitForReading();
        }
        QVERIFY(ok("burst 1"));
    }

    void aCurveArrivesWhole()
    {
        const int before = m_instrument.status("host").toInt();
        constexpr int cPoints = 30;
        QVERIFY(m_link->sendCurveData(QVariantList(QVector<QVariant>(cPoints, 1.5).toList())));
        QTRY_COMPARE(m_instrument.status("host").toInt() - before, 3);
    }

    void aFailedWriteClosesTheLink()
    {
        QSignalSpy errors(m_link, &HidLink::errorOccurred);
        QVERIFY(ok("write-errors 1"));
        QVERIFY(!m_link->sendUiControlPacket(protocol::WaveScreen));
        QVERIFY(!m_link->connected());
        QCOMPARE(errors.count(), 1);
        QCOMPARE(errors.constFirst().constFirst().toString(), QStringLiteral("HID write failed."));
    }

    void aMuteInterfaceIsPassedOver()
    {
        QVERIFY(ok("interfaces 2"));
        QTRY_VERIFY(!m_link->connected());
        QTRY_VERIFY_WITH_TIMEOUT(m_link->openDevice(), cTimeoutMs);
        waitForReading();
        QVERIFY(ok("interfaces 1"));
        QTRY_VERIFY(!m_link->connected());
    }

private:
    bool ok(const QString& command) { return m_instrument.ask(command).startsWith("ok"); }

    void waitForReading()
    {
        QSignalSpy measurements(m_link, &HidLink::measurementChanged);
        QTRY_VERIFY_WITH_TIMEOUT(!measurements.isEmpty() && m_link->mainInputVoltage() > 0, cTimeoutMs);
    }

    InstrumentControl m_instrument;
    HidLink* m_link = nullptr;
};

QUORVEL_TEST_MAIN(HidLinkDeviceTest, GenApplication)
#include "tst_HidLinkDevice.moc"
