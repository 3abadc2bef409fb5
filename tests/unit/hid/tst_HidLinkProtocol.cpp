// SPDX-License-Identifier: GPL-3.0-or-later
#include "hid/HidLink.h"
#include "tests/fakes/FakeBusTest.h"

class HidLinkProtocolTest : public FakeBusTest
{
    Q_OBJECT

private Q_SLOTS:
    void interfaceForQml_data()
    {
        const test::Table<QByteArray, QByteArray> table("type", "notify");
        const auto rows = [&table](const char* type, const char* notify,
                                   std::initializer_list<const char*> names) {
            for (const char* name : names)
                table.row(name, type, notify);
        };
        rows("bool", "devicesStatusChanged", {"connected"});
        rows("QString", "deviceInfoChanged", {"deviceId", "deviceVersion"});
        rows("float", "measurementChanged",
             {"mainInputVoltage", "mainOutputCurrent", "mainPower", "mainMah", "mainTimeSec",
              "typeCInputVoltage", "typeCInputCurrent", "typeCInputPower", "typeCDPlusVoltage",
              "typeCDMinusVoltage", "typeCCC1Voltage", "typeCCC2Voltage", "typeCMah", "typeCTimeSec"});
        rows("int", "multimeterChanged", {"multimeterMode"});
        rows("QString", "multimeterChanged", {"multimeterValue", "multimeterNumericValue", "multimeterUnit"});
        rows("QVariantList", "multimeterCurrentTableChanged", {"multimeterCurrentTable"});
        rows("QVariantList", "multimeterSessionHistoryChanged", {"multimeterSessionHistory"});
        rows("QVariantList", "multimeterHistoryChanged", {"multimeterHistory"});
        rows("QString", "packetTraceChanged", {"lastRxPacket", "lastTxPacket"});
        rows("QString", "deviceLogChanged", {"lastDeviceLog"});
        rows("QVariantList", "deviceLogsChanged", {"deviceLogs"});
    }

    void interfaceForQml()
    {
        const QMetaObject& meta = HidLink::staticMetaObject;
        const int index = meta.indexOfProperty(QTest::currentDataTag());
        QVERIFY(index >= 0);
        const QMetaProperty property = meta.property(index);
        QTEST(QByteArray(property.typeName()), "type");
        QTEST(property.notifySignal().name(), "notify");
        QVERIFY(!property.isWritable());
    }

    void methodsForQml()
    {
        for (const char* slot : {"pollDevice()", "handleReadError(QString)"})
            QVERIFY(HidLink::staticMetaObject.indexOfSlot(slot) >= 0);
        QByteArray arguments;
        for (int count = 1; count <= 5; ++count) {
            arguments += count == 1 ? "int" : ",int";
            QVERIFY(HidLink::staticMetaObject.indexOfMethod("sendUiControlPacket(" + arguments + ')') >= 0);
        }
    }

    void valuesOfTheInstrument()
    {
        HidLink link(nullptr, nullptr);
        QSignalSpy changed(&link, &HidLink::measurementChanged);
        QSignalSpy infoChanged(&link, &HidLink::deviceInfoChanged);
        protocol::Measurement sent;
        sent.mainInputVoltage = 12.5F;
        sent.typeCMah = 33;
        sent.typeCTimeSec = 44;
        QByteArray packet = protocol::encode(sent);
        receive(link, packet.left(59));
        receive(link, packet);
        // A wrong length byte spoils the log line only.
        packet[2] = 0x20;
        receive(link, packet);
        QCOMPARE(changed.count(), 3);
        QCOMPARE(link.mainInputVoltage(), 12.5F);
        QCOMPARE(link.typeCTimeSec(), 44.0F);
        QCOMPARE(link.property("typeCMah").toFloat(), 33.0F);

        link.clearTypeCMahandSec();
        QCOMPARE(changed.count(), 4);
        QCOMPARE(link.typeCMah() + link.typeCTimeSec(), 0.0F);
        QCOMPARE(link.mainInputVoltage(), 12.5F);

        receive(link, protocol::encode(protocol::DeviceInfo{"ABC", "1.2.3"}));
        receive(link, protocol::encode(protocol::DeviceInfo{"ABC", "1.2.3"}));
        QCOMPARE(infoChanged.count(), 2);
        QCOMPARE(link.deviceId() + ' ' + link.deviceVersion(), QStringLiteral("ABC 1.2.3"));
    }

    void uiControl()
    {
        HidLink link(nullptr, nullptr);
        QSignalSpy requested(&link, &HidLink::uiControlRequested);
        receive(link, QByteArray::fromHex("00100802ff800003"));
        QCOMPARE(requested.count(), 1);
        QCOMPARE(requested.at(0), QVariantList({2, 255, 128, 0, 3}));
    }

    void whatChangesNothing()
    {
        HidLink link(nullptr, nullptr);
        const QMetaObject& meta = HidLink::staticMetaObject;
        QSignalSpy trace(&link, &HidLink::packetTraceChanged);
        std::vector<std::unique_ptr<QSignalSpy>> others;
        for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
            if (meta.method(i).methodType() == QMetaMethod::Signal &&
                meta.method(i).name() != "packetTraceChanged")
                others.push_back(std::make_unique<QSignalSpy>(&link, meta.method(i)));
        }
        const QList<QByteArray> packets{{},
                                        QByteArray::fromHex("000103"),
                                        QByteArray(64, '\x7E'),
                                        protocol::encode(protocol::CurveData{1, 0, {}}),
                                        measurement(1).left(58),
                                        protocol::encode(protocol::DeviceInfo{"A", "1"}).left(34),
                                        QByteArray::fromHex("00100802ff8000"),
                                        protocol::encodeDeviceLog("   ")};
        for (const QByteArray& packet : packets) {
            receive(link, packet);
            QCOMPARE(link.lastRxPacket(), protocol::formatPacket(packet));
            for (const auto& spy : others)
                QVERIFY2(spy->isEmpty(), spy->signal() + link.lastRxPacket().toLatin1());
        }
        QCOMPARE(trace.count(), packets.size());
    }

    void screenRequest()
    {
        plugIn();
        HidLink link(nullptr, nullptr);
        // Opens the device by itself.
        QVERIFY(link.sendUiControlPacket(2));
        QVERIFY(link.sendUiControlPacket(4, 3, 0, 1, 2));
        const QList<QByteArray> reports = fakehid::written(cPath);
        QCOMPARE(reports.size(), 2);
        QCOMPARE(reports.at(0), QByteArray::fromHex("00 00104001 02ffffff") + QByteArray(56, '\0'));
        QCOMPARE(reports.at(1), QByteArray::fromHex("00 00104002 04030001") + QByteArray(56, '\0'));
        QCOMPARE(link.lastTxPacket(), protocol::formatPacket(reports.at(1).mid(1)));
    }

    void nothingIsSentWithoutADevice()
    {
        HidLink link(nullptr, nullptr);
        QSignalSpy errors(&link, &HidLink::errorOccurred);
        QVERIFY(!link.sendUiControlPacket(2));
        QVERIFY(!link.sendCurveData({}));
        QCOMPARE(errors.count(), 2);
        QCOMPARE(errors.at(0).at(0).toString(),
                 QStringLiteral("Failed to open HID device: VID=0x0483 PID=0x5750"));
        QCOMPARE(link.lastTxPacket(), QString());
    }

    void curve_data()
    {
        const test::Table<int, int> table("points", "packets");
        table.row("none", 0, 0);
        table.row("one", 1, 1);
        table.row("a packet full", 14, 1);
        table.row("one more", 15, 2);
        table.row("all that fits", 3570, 255);
        table.row("too many", 3571, -1);
    }

    void curve()
    {
        QFETCH(int, points);
        QFETCH(int, packets);
        plugIn();
        HidLink link(nullptr, nullptr);
        QSignalSpy errors(&link, &HidLink::errorOccurred);
        QVariantList values;
        for (int i = 0; i < points; ++i)
            values.append(i + 0.25);
        QCOMPARE(link.sendCurveData(values), packets >= 0);
        const QList<QByteArray> reports = fakehid::written(cPath);
        QCOMPARE(reports.size(), qMax(0, packets));
        QCOMPARE(errors.count(), packets < 0 ? 1 : 0);
        if (packets < 0) {
            QCOMPARE(errors.at(0).at(0).toString(),
                     QStringLiteral("Curve packet count exceeds protocol limit."));
            QVERIFY(link.connected());
        }
        for (int i = 0; i < reports.size(); ++i) {
            QCOMPARE(reports.at(i).size(), 65);
            QCOMPARE(reports.at(i).left(4), QByteArray::fromHex("00000340"));
            const auto part = protocol::decodeCurveData(reports.at(i).mid(1));
            QVERIFY(part.has_value());
            QCOMPARE(part->packetCount, packets);
            QCOMPARE(part->packetIndex, i);
            for (int j = 0; j < 14; ++j) {
                const int point = 14 * i + j;
                QCOMPARE(part->points[static_cast<size_t>(j)],
                         point < points ? static_cast<float>(point) + 0.25F : 0.0F);
            }
        }
    }

    void curveOfOddValues()
    {
        plugIn();
        HidLink link(nullptr, nullptr);
        QVERIFY(link.sendCurveData({"2.5", "volts", QVariant(), true}));
        const auto part = protocol::decodeCurveData(fakehid::written(cPath).at(0).mid(1));
        QCOMPARE(part->points[0], 2.5F);
        QCOMPARE(part->points[1], 0.0F);
        QCOMPARE(part->points[2], 0.0F);
        QCOMPARE(part->points[3], 1.0F);
    }

    void failedWriteStopsTheCurve()
    {
        int sent = 0;
        plugIn();
        HidLink link(nullptr, nullptr);
        QVERIFY(link.openDevice());
        connect(&link, &HidLink::packetTraceChanged, &link, [&sent] {
            if (++sent == 3)
                fakehid::failWrites(cPath, true);
        });
        QVariantList values;
        for (int i = 0; i < 140; ++i)
            values.append(i);
        QSignalSpy errors(&link, &HidLink::errorOccurred);
        QVERIFY(!link.sendCurveData(values));
        QCOMPARE(fakehid::written(cPath).size(), 2);
        QCOMPARE(errors.count(), 1);
        QVERIFY(!link.connected());
    }
};

QUORVEL_TEST_MAIN(HidLinkProtocolTest, QCoreApplication)
#include "tst_HidLinkProtocol.moc"
