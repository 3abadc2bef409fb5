// SPDX-License-Identifier: GPL-3.0-or-later
#include "hid/HidLink.h"
#include "tests/fakes/FakeBusTest.h"

class HidLinkTest : public FakeBusTest
{
    Q_OBJECT

private Q_SLOTS:
    void startsByItselfAndRetriesSilently()
    {
        HidLink link(nullptr, nullptr);
        QSignalSpy errors(&link, &HidLink::errorOccurred);
        QVERIFY(errors.wait());
        QCOMPARE(errors.count(), 1);
        plugIn();
        QSignalSpy status(&link, &HidLink::devicesStatusChanged);
        QVERIFY(status.wait());
        QVERIFY(link.connected());
        QCOMPARE(errors.count(), 1);
    }

    void readFailureClosesTheLink()
    {
        plugIn();
        QStringList events;
        HidLink link(nullptr, nullptr);
        QVERIFY(link.openDevice());
        connect(&link, &HidLink::errorOccurred, &link, [&](const QString& error) {
            events.append(error + (link.connected() ? " still connected" : ""));
        });
        connect(&link, &HidLink::devicesStatusChanged, &link,
                [&] { events.append(link.connected() ? "connected" : "disconnected"); });
        connect(&link, &HidLink::measurementChanged, &link,
                [&] { events.append(QString::number(double(link.mainInputVoltage()))); });
        fakehid::send(cPath, measurement(5));
        fakehid::send(cPath, measurement(9));
        fakehid::failReads(cPath, "unplugged");
        QTRY_COMPARE(events.size(), 5);
        QCOMPARE(events,
                 QStringList({"5", "9", "HID read failed. unplugged still connected", "disconnected", "0"}));
    }

    void writeFailureClosesTheLink()
    {
        plugIn();
        HidLink link(nullptr, nullptr);
        QVERIFY(link.openDevice());
        fakehid::failWrites(cPath, true);
        QSignalSpy errors(&link, &HidLink::errorOccurred);
        QVERIFY(!link.sendUiControlPacket(2));
        QCOMPARE(errors.count(), 1);
        QCOMPARE(errors.value(0), QVariantList{"HID write failed."});
        QVERIFY(!link.connected());
        fakehid::failWrites(cPath, false);
        QVERIFY(link.sendUiControlPacket(2));
        QVERIFY(link.connected());
    }

    void closingEmptiesTheLiveValuesInOrder()
    {
        QStringList events;
        plugIn();
        HidLink link(nullptr, nullptr);
        QVERIFY(link.openDevice());
        receive(link, measurement(5));
        receive(link, protocol::encode(protocol::DeviceInfo{"id", "version"}));
        receive(link, protocol::encode(protocol::MultimeterReading{1, "1.5 V"}));
        receive(link, protocol::encodeDeviceLog("hello"));
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
};

QUORVEL_TEST_MAIN(HidLinkTest, QCoreApplication)
#include "tst_HidLink.moc"
