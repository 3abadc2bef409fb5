// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/unit/hid/LinkFixture.h"

#include <QCoreApplication>
#include <QDir>

namespace {

/// Adds a candidate of the discovery table; \a kind says what it does when it is opened and listened to.
void plugInCandidate(const QString& kind, const QByteArray& path)
{
    FakeHidApi::Device device;
    device.path = kind == QLatin1String("nopath") ? QByteArray() : path;
    if (kind == QLatin1String("closed"))
        device.failingOpens = -1;
    if (kind == QLatin1String("closed once") || kind == QLatin1String("talks on the second opening"))
        device.failingOpens = 1;
    FakeHidApi::plugIn(device);
    const int invalidPackets = kind == QLatin1String("talks third") ? 2
                               : kind == QLatin1String("garbage")   ? 3
                                                                    : 0;
    for (int i = 0; i < invalidPackets; ++i)
        FakeHidApi::send(path, QByteArray(PacketCodec::cPacketSize, '\x7F'));
    // "garbage" talks too, but too late.
    if (kind.startsWith(QLatin1String("talks")) || kind == QLatin1String("garbage"))
        FakeHidApi::send(path, PacketCodec::encode(PacketCodec::DeviceInfo{QString::fromLatin1(path), {}}));
    if (kind == QLatin1String("readfail"))
        FakeHidApi::failReads(path, "broken");
}

int threadCount()
{
    return QDir(QStringLiteral("/proc/self/task")).entryList(QDir::Dirs | QDir::NoDotAndDotDot).size();
}

} // namespace

class HidLinkTest : public LinkTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void discovery_data()
    {
        const test::Table<QStringList, QString, QStringList, bool> table("candidates", "opened", "attempts",
                                                                         "probed");
        using List = QStringList;
        table.row("empty bus", List(), {}, List(), false);
        table.row("the only one is opened unheard", List{"mute"}, "/0", List{"/0"}, false);
        table.row("the only one refuses once, then talks", List{"talks on the second opening"}, "/0",
                  List{"/0", "/0"}, true);
        table.row("the only one refuses once, then is mute", List{"closed once"}, "/0",
                  List{"/0", "/0", "/0"}, false);
        table.row("the only one refuses", List{"closed"}, {}, List{"/0", "/0", "/0"}, false);
        table.row("the only one has no path", List{"nopath"}, {}, List(), false);
        table.row("the one that talks", List{"mute", "talks"}, "/1", List{"/0", "/1"}, true);
        table.row("the first that talks", List{"talks", "talks"}, "/0", List{"/0"}, true);
        table.row("valid in the third read", List{"talks third", "talks"}, "/0", List{"/0"}, true);
        table.row("three invalid packets are enough", List{"garbage", "talks"}, "/1", List{"/0", "/1"}, true);
        table.row("a failing read ends the attempts", List{"readfail", "talks"}, "/1", List{"/0", "/1"},
                  true);
        table.row("one that refuses is passed over", List{"closed", "talks"}, "/1", List{"/0", "/1"}, true);
        table.row("no path is passed over", List{"nopath", "talks"}, "/1", List{"/1"}, true);
        table.row("none talks: the first", List{"mute", "mute"}, "/0", List{"/0", "/1", "/0"}, false);
        table.row("none talks: the first with a path", List{"nopath", "mute"}, "/1", List{"/1", "/1"}, false);
        table.row("the fallback refuses too", List{"closed", "mute"}, {}, List{"/0", "/1", "/0"}, false);
    }

    void discovery()
    {
        QFETCH(QStringList, candidates);
        QFETCH(QString, opened);
        QFETCH(bool, probed);
        for (int i = 0; i < candidates.size(); ++i)
            plugInCandidate(candidates.at(i), '/' + QByteArray::number(i));
        HidLink link(nullptr, nullptr);
        QSignalSpy errors(&link, &HidLink::errorOccurred);
        QSignalSpy status(&link, &HidLink::devicesStatusChanged);

        QCOMPARE(link.openDevice(), !opened.isEmpty());
        QTEST(FakeHidApi::openedPaths(), "attempts");
        QCOMPARE(link.connected(), !opened.isEmpty());
        QCOMPARE(status.count(), opened.isEmpty() ? 0 : 1);
        QCOMPARE(FakeHidApi::openHandles(), opened.isEmpty() ? 0 : 1);
        // What was read while probing is not lost.
        QCOMPARE(link.deviceId(), probed ? opened : QString());
        if (opened.isEmpty()) {
            QCOMPARE(errors.count(), 1);
            QCOMPARE(errors.at(0).at(0).toString(),
                     QStringLiteral("Failed to open HID device: VID=0x0483 PID=0x5750"));
        } else {
            QCOMPARE(errors.count(), 0);
            QVERIFY(link.sendUiControlPacket(1));
            QCOMPARE(FakeHidApi::written(opened.toLatin1()).size(), 1);
        }
    }

    void probedPacketComesFirst()
    {
        plugInCandidate("mute", "/0");
        plugInCandidate("mute", "/1");
        for (int i = 1; i <= 50; ++i)
            FakeHidApi::send("/1", measurement(static_cast<float>(i)));
        QList<float> seen;
        HidLink link(nullptr, nullptr);
        connect(&link, &HidLink::measurementChanged, &link, [&] { seen.append(link.mainInputVoltage()); });
        QVERIFY(link.openDevice());
        QTRY_COMPARE(seen.size(), 50);
        for (int i = 0; i < 50; ++i)
            QCOMPARE(seen.at(i), static_cast<float>(i + 1));
    }

    void startsByItselfAndRetriesSilently()
    {
        HidLink link(nullptr, nullptr);
        QSignalSpy errors(&link, &HidLink::errorOccurred);
        QVERIFY(errors.wait());
        QCOMPARE(errors.count(), 1);
        plugInInstrument();
        QSignalSpy status(&link, &HidLink::devicesStatusChanged);
        QVERIFY(status.wait());
        QVERIFY(link.connected());
        QCOMPARE(errors.count(), 1);
    }

    void everyFifthTickTriesToOpen()
    {
        HidLink link(nullptr, nullptr);
        QSignalSpy errors(&link, &HidLink::errorOccurred);
        poll(link, 4);
        QCOMPARE(FakeHidApi::enumerations(), 0);
        poll(link, 1);
        QCOMPARE(FakeHidApi::enumerations(), 1);
        poll(link, 5);
        QCOMPARE(FakeHidApi::enumerations(), 2);
        QCOMPARE(errors.count(), 0);
    }

    void failedInitialisationIsTriedAgain()
    {
        plugInInstrument();
        FakeHidApi::failInit(2);
        {
            HidLink link(nullptr, nullptr);
            QVERIFY(!link.openDevice());
            QVERIFY(!link.sendUiControlPacket(1));
            QVERIFY(link.openDevice());
            QVERIFY(link.openDevice());
            QCOMPARE(FakeHidApi::initCalls(), 3);
            QCOMPARE(FakeHidApi::openedPaths().size(), 1);
        }
        QCOMPARE(FakeHidApi::exitCalls(), 1);
    }

    void silenceAfterOpeningReopens()
    {
        plugInInstrument();
        qint64 now = 1000;
        HidLink link(nullptr, nullptr);
        link.setClock([&now] { return now; });
        QVERIFY(link.openDevice());
        QSignalSpy status(&link, &HidLink::devicesStatusChanged);
        now += 10000;
        poll(link, 1);
        QCOMPARE(status.count(), 0);
        now += 1;
        poll(link, 1);
        QCOMPARE(status.count(), 2);
        QCOMPARE(FakeHidApi::openedPaths().size(), 2);
        // One packet, valid or not, ends the rule for this opening.
        FakeHidApi::send(cPath, QByteArray(1, '\x7F'));
        QSignalSpy trace(&link, &HidLink::packetTraceChanged);
        QVERIFY(trace.wait());
        now += 60000;
        poll(link, 10);
        QCOMPARE(status.count(), 2);
    }

    void readFailureClosesTheLink_data()
    {
        const test::Table<QString> table("text");
        table.row("with a text", "poll error");
        table.row("without", {});
    }

    void readFailureClosesTheLink()
    {
        QFETCH(QString, text);
        QStringList events;
        OpenLink link;
        connect(&link, &HidLink::errorOccurred, &link, [&](const QString& error) { events.append(error); });
        connect(&link, &HidLink::devicesStatusChanged, &link,
                [&] { events.append(link.connected() ? "connected" : "disconnected"); });
        connect(&link, &HidLink::measurementChanged, &link,
                [&] { events.append(QString::number(link.mainInputVoltage())); });
        FakeHidApi::send(cPath, measurement(5));
        FakeHidApi::send(cPath, measurement(9));
        FakeHidApi::failReads(cPath, text);
        QTRY_COMPARE(events.size(), 5);
        QCOMPARE(events, QStringList({"5", "9", "HID read failed. " + text, "disconnected", "0"}));
        QCOMPARE(FakeHidApi::openHandles(), 0);
    }

    void writeFailureClosesTheLink()
    {
        OpenLink link;
        FakeHidApi::failWrites(cPath, true);
        QSignalSpy errors(&link, &HidLink::errorOccurred);
        QVERIFY(!link.sendUiControlPacket(2));
        QCOMPARE(errors.count(), 1);
        QCOMPARE(errors.at(0).at(0).toString(), QStringLiteral("HID write failed."));
        QVERIFY(!link.connected());
        QCOMPARE(FakeHidApi::openHandles(), 0);
        FakeHidApi::failWrites(cPath, false);
        QVERIFY(link.sendUiControlPacket(2));
        QVERIFY(link.connected());
    }

    void slowWritesLoseNoPacket()
    {
        FakeHidApi::slowWrites(cPath, 60);
        OpenLink link;
        QSignalSpy measurements(&link, &HidLink::measurementChanged);
        for (int i = 0; i < 3; ++i) {
            FakeHidApi::send(cPath, measurement(1));
            QVERIFY(link.sendUiControlPacket(1));
        }
        QTRY_COMPARE(measurements.count(), 3);
        QCOMPARE(FakeHidApi::written(cPath).size(), 3);
    }

    void closingEmptiesTheLiveValuesInOrder()
    {
        QStringList events;
        OpenLink link;
        receive(link, measurement(5));
        receive(link, PacketCodec::encode(PacketCodec::DeviceInfo{"id", "version"}));
        receive(link, PacketCodec::encode(PacketCodec::MultimeterReading{1, "1.5 V"}));
        receive(link, PacketCodec::encodeDeviceLog("hello"));
        QVERIFY(link.sendUiControlPacket(1));
        QVERIFY(!link.lastRxPacket().isEmpty() && !link.lastTxPacket().isEmpty());
        const QVariantList logs = link.deviceLogs();
        QCOMPARE(logs.size(), 1);

        const QMetaObject* const meta = link.metaObject();
        // Every signal of the class, so that one too many is seen as well.
        connect(&link, &HidLink::devicesStatusChanged, &link, [&] { events.append("status"); });
        connect(&link, &HidLink::deviceInfoChanged, &link, [&] { events.append("info"); });
        connect(&link, &HidLink::measurementChanged, &link, [&] { events.append("measurement"); });
        connect(&link, &HidLink::multimeterChanged, &link, [&] { events.append("multimeter"); });
        connect(&link, &HidLink::multimeterCurrentTableChanged, &link, [&] { events.append("table"); });
        connect(&link, &HidLink::multimeterSessionHistoryChanged, &link, [&] { events.append("session"); });
        connect(&link, &HidLink::multimeterHistoryChanged, &link, [&] { events.append("history"); });
        connect(&link, &HidLink::deviceLogChanged, &link, [&] { events.append("log"); });
        connect(&link, &HidLink::deviceLogsChanged, &link, [&] { events.append("logs"); });
        connect(&link, &HidLink::packetTraceChanged, &link, [&] { events.append("trace"); });
        connect(&link, &HidLink::errorOccurred, &link, [&](const QString& text) { events.append(text); });
        const QStringList always{"info", "measurement", "multimeter", "table", "log", "trace"};
        link.closeDevice();
        QCOMPARE(events, QStringList{"status"} + always);
        events.clear();
        link.closeDevice();
        QCOMPARE(events, always);

        for (const char* name : {"deviceId", "deviceVersion", "multimeterValue", "multimeterNumericValue",
                                 "multimeterUnit", "lastDeviceLog", "lastRxPacket", "lastTxPacket"})
            QVERIFY2(link.property(name).toString().isEmpty(), name);
        for (int i = 0; i < meta->propertyCount(); ++i) {
            if (meta->property(i).userType() == QMetaType::Float)
                QCOMPARE(meta->property(i).read(&link).toFloat(), 0.0F);
        }
        QCOMPARE(link.multimeterMode(), 0);
        QCOMPARE(link.deviceLogs(), logs);
    }

    void whatAFormerLinkLeftIsDropped()
    {
        const int threads = threadCount();
        OpenLink link;
        FakeHidApi::send(cPath, measurement(5));
        FakeHidApi::failReads(cPath, "gone");
        // Without running the event loop: once the reader has ended, both wait in the event queue.
        const QDeadlineTimer deadline(5000);
        while (threadCount() > threads && !deadline.hasExpired())
            QThread::msleep(1);
        QCOMPARE(threadCount(), threads);
        QSignalSpy errors(&link, &HidLink::errorOccurred);
        QSignalSpy measurements(&link, &HidLink::measurementChanged);
        link.closeDevice();
        FakeHidApi::reset();
        plugInInstrument();
        QVERIFY(link.openDevice());
        measurements.clear();
        FakeHidApi::send(cPath, measurement(7));
        QVERIFY(measurements.wait());
        QCOMPARE(measurements.count(), 1);
        QCOMPARE(link.mainInputVoltage(), 7.0F);
        QVERIFY(link.connected());
        QCOMPARE(errors.count(), 0);
    }

    void aReceiverMayCloseTheLinkWhileItOpens()
    {
        plugInCandidate("mute", "/0");
        plugInCandidate("talks", "/1");
        HidLink link(nullptr, nullptr);
        connect(&link, &HidLink::devicesStatusChanged, &link, [&link] {
            if (link.connected())
                link.closeDevice();
        });
        QVERIFY(!link.openDevice());
        QVERIFY(!link.connected());
        QCOMPARE(link.deviceId(), QString());
        QCOMPARE(FakeHidApi::openHandles(), 0);
    }

    void destructionDuringAPendingRead()
    {
        plugInInstrument();
        QStringList errors;
        const int threads = threadCount();
        {
            HidLink link(nullptr, nullptr);
            connect(&link, &HidLink::errorOccurred, QCoreApplication::instance(),
                    [&errors](const QString& text) { errors.append(text); });
            QVERIFY(link.openDevice());
            QTRY_VERIFY(FakeHidApi::readPending(cPath));
        }
        QCoreApplication::processEvents();
        QCOMPARE(errors, QStringList());
        QCOMPARE(FakeHidApi::openHandles(), 0);
        QCOMPARE(FakeHidApi::exitCalls(), 1);
        QCOMPARE(threadCount(), threads);
    }

    void vanishingTwoHundredTimesUnderFullLoad()
    {
        HidLink link(nullptr, nullptr);
        QSignalSpy measurements(&link, &HidLink::measurementChanged);
        QSignalSpy status(&link, &HidLink::devicesStatusChanged);
        const int threads = threadCount();
        for (int cycle = 0; cycle < 200; ++cycle) {
            // A new node each time, as the kernel gives.
            const QByteArray path = "/dev/hidraw" + QByteArray::number(cycle);
            FakeHidApi::Device device;
            device.path = path;
            FakeHidApi::plugIn(device);
            for (int i = 0; i < 63; ++i)
                FakeHidApi::send(path, measurement(static_cast<float>(cycle + 1)));
            poll(link, 5);
            QVERIFY(link.connected());
            // Vanish at different moments: with the first packet out, in the middle, when all are through.
            measurements.clear();
            while (measurements.count() < (cycle % 3) * 31 + 1)
                QVERIFY(measurements.wait());
            QCOMPARE(link.mainInputVoltage(), static_cast<float>(cycle + 1));
            FakeHidApi::unplug(path);
            if (cycle % 4 == 0)
                QVERIFY(!link.sendUiControlPacket(1)); // a write meets the empty port first
            while (link.connected())
                QVERIFY(status.wait());
            QCOMPARE(link.mainInputVoltage(), 0.0F);
            QCOMPARE(FakeHidApi::openHandles(), 0);
        }
        QCOMPARE(threadCount(), threads);
    }

    void noPermissionIsSaidOncePerChange()
    {
        FakeHidApi::Device device;
        device.path = cPath;
        device.failingOpens = -1;
        device.accessAdvice = QStringLiteral("not allowed, but there is a way out");
        static QStringList warnings;
        static QtMessageHandler next = nullptr;
        HidLink link(nullptr, nullptr);
        next = qInstallMessageHandler(
            [](QtMsgType type, const QMessageLogContext& context, const QString& text) {
                type == QtWarningMsg ? warnings.append(text) : next(type, context, text);
            });
        // Nothing there: nothing to say.
        QVERIFY(!link.openDevice());
        QCOMPARE(warnings.size(), 0);
        // A silent attempt may have come before the system set the permissions of a new node.
        FakeHidApi::plugIn(device);
        poll(link, 5);
        QCOMPARE(warnings.size(), 0);
        poll(link, 5);
        QCOMPARE(warnings, QStringList{device.accessAdvice});
        poll(link, 20);
        QVERIFY(!link.openDevice());
        QCOMPARE(warnings.size(), 1);
        // Gone and back: a change.
        FakeHidApi::unplug(cPath);
        poll(link, 5);
        FakeHidApi::plugIn(device);
        QVERIFY(!link.openDevice());
        QCOMPARE(warnings.size(), 2);
        qInstallMessageHandler(next);
    }
};

QUORVEL_TEST_MAIN(HidLinkTest, QCoreApplication)
#include "tst_HidLink.moc"
