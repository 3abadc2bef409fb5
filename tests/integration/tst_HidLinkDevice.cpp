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

#include <algorithm>
#include <numeric>
#include <vector>

namespace {

/// How often the instrument vanishes; a run that looks for rare faults sets more.
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
            // A test that failed half-way leaves the instrument as it was then.
            for (const char* command :
                 {"interfaces 1", "replug", "rate 20", "burst 1", "auto", "write-errors 0"})
                m_instrument.ask(QLatin1String(command));
        }
        TestCase::cleanup();
    }

    void findsTheInstrumentAndItsIdentity()
    {
        QTRY_COMPARE(m_link->deviceId(), QStringLiteral("VIRTUAL-QI1"));
        QCOMPARE(m_instrument.status(QStringLiteral("open")), QStringLiteral("1"));
        QVERIFY(m_link->mainInputVoltage() > 4);
    }

    void everyPacketArrivesInOrderAtTheFullRate()
    {
        const QString number = QStringLiteral("typeCMah");
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
        QVERIFY(ok(QStringLiteral("drain")));
        QTRY_COMPARE(m_link->typeCMah(), 0.0F);
        std::vector<int> expected(cBurst);
        std::iota(expected.begin(), expected.end(), 1);
        QCOMPARE(received.size(), expected.size());
        QVERIFY(received == expected);
        QVERIFY(ok(QStringLiteral("auto")));
    }

    void vanishesAtAnyMomentAtTheFullRate()
    {
        bool given = false;
        const int asked = qEnvironmentVariableIntValue(cReplugCountVariable, &given);
        const int replugs = given ? asked : cReplugs;
        QVERIFY(ok(QStringLiteral("burst 10000000 1000")));
        int files = 0;
        int threads = 0;
        int packets = 0;
        QObject scope; // ends the connection wherever this function is left
        connect(m_link, &HidLink::measurementChanged, &scope,
                [&packets, this] { packets += m_link->connected(); }); // clazy:exclude=lambda-in-connect
        for (int round = 0; round < replugs; ++round) {
            const int until = packets + static_cast<int>(QRandomGenerator::global()->bounded(60));
            QTRY_VERIFY_WITH_TIMEOUT(packets >= until, cTimeoutMs);
            QVERIFY(ok(QStringLiteral("unplug")));
            QTRY_VERIFY_WITH_TIMEOUT(!m_link->connected(), cTimeoutMs);
            QCOMPARE(m_link->mainInputVoltage(), 0.0F);
            if (round == 0) {
                // The first open and close may leave what a library keeps for good.
                files = entries("/proc/self/fd");
                threads = entries("/proc/self/task");
            }
            QCOMPARE(entries("/proc/self/fd"), files);
            QCOMPARE(entries("/proc/self/task"), threads);
            QVERIFY(ok(QStringLiteral("replug")));
            QTRY_VERIFY_WITH_TIMEOUT(m_link->openDevice(), cTimeoutMs);
            waitForReading();
        }
        QVERIFY(ok(QStringLiteral("burst 1")));
    }

    void comesBackByItself()
    {
        QSignalSpy status(m_link, &HidLink::devicesStatusChanged);
        QVERIFY(ok(QStringLiteral("unplug")));
        QTRY_VERIFY(!m_link->connected());
        QVERIFY(ok(QStringLiteral("replug")));
        QTRY_VERIFY_WITH_TIMEOUT(m_link->connected(), cTimeoutMs);
        waitForReading();
        QCOMPARE(status.count(), 2);
    }

    void screensAreKeptInStepBothWays()
    {
        QVERIFY(m_link->sendUiControlPacket(PacketCodec::MultimeterScreen, PacketCodec::CapacitanceFunction));
        QTRY_COMPARE(m_instrument.status(QStringLiteral("screen")), QStringLiteral("4"));
        QCOMPARE(m_instrument.status(QStringLiteral("function")), QStringLiteral("2"));
        QTRY_COMPARE(m_link->multimeterMode(), 3);

        QSignalSpy requests(m_link, &HidLink::uiControlRequested);
        QVERIFY(ok(QStringLiteral("screen 2")));
        QTRY_COMPARE(requests.count(), 1);
        QCOMPARE(requests.constFirst(), (QVariantList{2, 2, 255, 255, 255}));
    }

    void aCurveArrivesWhole()
    {
        const int before = m_instrument.status(QStringLiteral("host")).toInt();
        constexpr int cPoints = 30;
        QVERIFY(m_link->sendCurveData(QVariantList(QVector<QVariant>(cPoints, 1.5).toList())));
        QTRY_COMPARE(m_instrument.status(QStringLiteral("host")).toInt() - before, 3);
    }

    void brokenPacketsChangeNothing_data()
    {
        QTest::addColumn<QString>("command");
        QTest::newRow("garbage") << QStringLiteral("garbage 50");
        QTest::newRow("zero-filled") << QStringLiteral("zero 50");
        QTest::newRow("truncated") << QStringLiteral("truncated 20 58");
        QTest::newRow("hardly a header") << QStringLiteral("truncated 20 2");
    }

    void brokenPacketsChangeNothing()
    {
        QFETCH(QString, command);
        QVERIFY(ok(QStringLiteral("rate 0")));
        waitUntilHandled();
        QSignalSpy measurements(m_link, &HidLink::measurementChanged);
        QSignalSpy errors(m_link, &HidLink::errorOccurred);
        QVERIFY(ok(command));
        QVERIFY(ok(QStringLiteral("drain")));
        waitUntilHandled();
        QCOMPARE(measurements.count(), 0);
        QCOMPARE(errors.count(), 0);
        QVERIFY(m_link->connected());
        QVERIFY(ok(QStringLiteral("rate 20")));
    }

    void aFailedWriteClosesTheLink()
    {
        QSignalSpy errors(m_link, &HidLink::errorOccurred);
        QVERIFY(ok(QStringLiteral("write-errors 1")));
        QVERIFY(!m_link->sendUiControlPacket(PacketCodec::WaveScreen));
        QVERIFY(!m_link->connected());
        QCOMPARE(errors.count(), 1);
        QCOMPARE(errors.constFirst().constFirst().toString(), QStringLiteral("HID write failed."));
    }

    void aMuteInterfaceIsPassedOver()
    {
        QVERIFY(ok(QStringLiteral("interfaces 2")));
        QTRY_VERIFY(!m_link->connected());
        QTRY_VERIFY_WITH_TIMEOUT(m_link->openDevice(), cTimeoutMs);
        waitForReading();
        QVERIFY(ok(QStringLiteral("interfaces 1")));
        QTRY_VERIFY(!m_link->connected());
    }

private:
    bool ok(const QString& command) { return m_instrument.ask(command).startsWith(QStringLiteral("ok")); }

    /// Lets the instrument send a log line and waits for it: whatever was sent before has then been handled.
    void waitUntilHandled()
    {
        const QString line = QStringLiteral("mark %1").arg(++m_marks);
        const auto arrived = [this, &line] {
            const QVariantList logs = m_link->deviceLogs();
            return std::any_of(logs.cbegin(), logs.cend(), [&line](const QVariant& entry) {
                return entry.toMap().value(QStringLiteral("message")).toString() == line;
            });
        };
        QVERIFY(ok(QStringLiteral("log ") + line));
        QTRY_VERIFY_WITH_TIMEOUT(arrived(), cTimeoutMs);
    }

    void waitForReading()
    {
        QSignalSpy measurements(m_link, &HidLink::measurementChanged);
        QTRY_VERIFY_WITH_TIMEOUT(!measurements.isEmpty() && m_link->mainInputVoltage() > 0, cTimeoutMs);
    }

    InstrumentControl m_instrument;
    HidLink* m_link = nullptr;
    int m_marks = 0;
};

QUORVEL_TEST_MAIN(HidLinkDeviceTest, GenApplication)
#include "tst_HidLinkDevice.moc"
