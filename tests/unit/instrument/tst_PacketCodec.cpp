// SPDX-License-Identifier: GPL-3.0-or-later
#include "instrument/PacketCodec.h"
#include "tests/support/TestCase.h"

#include <QCoreApplication>
#include <QtTest>

#include <cmath>
#include <limits>

using namespace protocol;

namespace {

/// A packet of \a size bytes with the given type and length byte and zeros after them.
QByteArray packetOf(int size, int type, int lengthByte)
{
    QByteArray packet(size, '\0');
    if (size > 1)
        packet[1] = static_cast<char>(type);
    if (size > 2)
        packet[2] = static_cast<char>(lengthByte);
    return packet;
}

bool decodes(int type, const QByteArray& packet)
{
    switch (type) {
    case 0x01:
        return decodeMeasurement(packet).has_value();
    case 0x02:
        return decodeDeviceInfo(packet).has_value();
    case 0x03:
        return decodeCurveData(packet).has_value();
    case 0x04:
        return decodeMultimeter(packet).has_value();
    case 0x05:
        return decodeDeviceLog(packet).has_value();
    default:
        return decodeUiControl(packet).has_value();
    }
}

struct TypeSize
{
    int type;
    int minimumSize;
};
constexpr TypeSize cMinimumSizes[] = {{0x01, 59}, {0x02, 35}, {0x03, 64}, {0x04, 24}, {0x05, 4}, {0x10, 8}};

} // namespace

class PacketCodecTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void validity_data()
    {
        const test::Table<QByteArray, bool> table("packet", "valid");
        table.row("nothing", {}, false);
        table.row("no length byte", packetOf(2, 0x01, 0), false);
        for (const int type : {0x01, 0x02, 0x04, 0x05, 0x10})
            table.row(qPrintable(QString::asprintf("type %02x", type)), packetOf(64, type, 0x40), true);
        for (const int type : {0x00, 0x03, 0x06, 0x0F, 0x11, 0x81, 0xFF})
            table.row(qPrintable(QString::asprintf("type %02x", type)), packetOf(64, type, 0x40), false);
        table.row("length 63 of 64", packetOf(64, 0x01, 0x3F), true);
        table.row("length 62 of 64", packetOf(64, 0x01, 0x3E), false);
        table.row("length 0x20 of 64", packetOf(64, 0x01, 0x20), false);
        table.row("own length", packetOf(10, 0x05, 10), true);
        table.row("own length less one", packetOf(10, 0x05, 9), true);
        table.row("own length less two", packetOf(10, 0x05, 8), false);
        table.row("full length in a short one", packetOf(10, 0x05, 0x40), true);
        table.row("header only", packetOf(3, 0x05, 3), true);
        table.row("a length byte above 127", packetOf(200, 0x05, 200), true);
    }

    void validity()
    {
        QFETCH(QByteArray, packet);
        QTEST(isValidPacket(packet), "valid");
    }

    void textForm_data()
    {
        const test::Table<QByteArray, QString> table("packet", "text");
        table.row("three bytes", QByteArray("\x00\x01\x40", 3), "len=3 00 01 40");
        table.row("high bits", QByteArray("\xAB\xFF", 2), "len=2 AB FF");
        table.row("one", QByteArray("\x0A", 1), "len=1 0A");
        table.row("none", {}, "len=0 ");
    }

    void textForm()
    {
        QFETCH(QByteArray, packet);
        QTEST(formatPacket(packet), "text");
    }

    void text_data()
    {
        const test::Table<QByteArray, int, int, bool, QString> table("packet", "offset", "maxLength", "utf8",
                                                                     "text");
        const QByteArray abc("..ABC\0DE", 8);
        table.row("to the zero byte", abc, 2, -1, true, "ABC");
        table.row("to the maximum", abc, 2, 2, true, "AB");
        table.row("to the end", abc, 6, 40, true, "DE");
        table.row("outside", abc, 8, 4, true, {});
        table.row("before", abc, -1, 4, true, {});
        table.row("no room", abc, 2, 0, true, {});
        table.row("spaces", "    ", 0, -1, true, {});
        table.row("trimmed", "\t 1.5 V \r\n", 0, -1, true, "1.5 V");
        table.row("UTF-8", "4.7 k\xCE\xA9", 0, -1, true, "4.7 kΩ");
        table.row("Latin-1", "20 \xB0\x43", 0, -1, false, "20 °C");
    }

    void text()
    {
        QFETCH(QByteArray, packet);
        QFETCH(int, offset);
        QFETCH(int, maxLength);
        QFETCH(bool, utf8);
        QTEST(extractText(packet, offset, maxLength, utf8 ? TextEncoding::Utf8 : TextEncoding::Latin1),
              "text");
    }

    void everyTypeNeedsItsMinimumSize()
    {
        for (const TypeSize& expected : cMinimumSizes) {
            for (int size = 0; size <= 2 * cPacketSize; ++size) {
                QVERIFY2(decodes(expected.type, packetOf(size, expected.type, 0x40)) ==
                             (size >= expected.minimumSize),
                         qPrintable(QStringLiteral("type %1 size %2").arg(expected.type).arg(size)));
            }
        }
    }

    void measurementFieldsInPacketOrder()
    {
        // 1.0f to 14.0f, written out by hand: little-endian, unaligned, from byte 3 on.
        const QByteArray packet = QByteArray::fromHex("000140"
                                                      "0000803f 00000040 00004040 00008040 0000a040 0000c040 "
                                                      "0000e040 00000041 00001041 00002041 00003041 00004041 "
                                                      "00005041 00006041");
        QCOMPARE(packet.size(), 59);
        const auto decoded = decodeMeasurement(packet);
        QVERIFY(decoded.has_value());
        const Measurement& m = *decoded;
        const float values[] = {
            m.mainInputVoltage,  m.mainOutputCurrent,  m.mainPower,         m.mainMah,
            m.mainTimeSec,       m.typeCInputVoltage,  m.typeCInputCurrent, m.typeCInputPower,
            m.typeCDPlusVoltage, m.typeCDMinusVoltage, m.typeCCC1Voltage,   m.typeCCC2Voltage,
            m.typeCMah,          m.typeCTimeSec};
        for (int i = 0; i < 14; ++i)
            QCOMPARE(values[i], static_cast<float>(i + 1));
        QCOMPARE(encode(m), packet + QByteArray(5, '\0'));
    }

    void measurementKeepsEveryFloat()
    {
        Measurement sent;
        sent.mainInputVoltage = std::numeric_limits<float>::quiet_NaN();
        sent.mainOutputCurrent = -std::numeric_limits<float>::infinity();
        sent.mainPower = -0.0F;
        sent.mainMah = std::numeric_limits<float>::denorm_min();
        const auto received = decodeMeasurement(encode(sent));
        QVERIFY(received.has_value());
        QVERIFY(std::isnan(received->mainInputVoltage));
        QVERIFY(std::isinf(received->mainOutputCurrent) && received->mainOutputCurrent < 0);
        QVERIFY(received->mainPower == 0 && std::signbit(received->mainPower));
        QCOMPARE(received->mainMah, sent.mainMah);
    }

    void deviceInfo_data()
    {
        const test::Table<QByteArray, QByteArray, QString, QString> table("idField", "versionField", "id",
                                                                          "version");
        table.row("short texts", "ABC", "1.0", "ABC", "1.0");
        table.row("full fields", "0123456789abcdef", "ghijklmnopqrstuv", "0123456789abcdef",
                  "ghijklmnopqrstuv");
        table.row("spaces", QByteArray(16, ' '), " v2 ", {}, "v2");
        table.row("not UTF-8", "\xC4\xE9", {}, "Äé", {});
    }

    void deviceInfo()
    {
        QFETCH(QByteArray, idField);
        QFETCH(QByteArray, versionField);
        QFETCH(QString, id);
        QFETCH(QString, version);
        QByteArray packet = packetOf(64, 0x02, 0x40);
        packet.replace(3, idField.size(), idField);
        packet.replace(19, versionField.size(), versionField);
        const auto info = decodeDeviceInfo(packet);
        QVERIFY(info.has_value());
        QCOMPARE(info->deviceId, id);
        QCOMPARE(info->deviceVersion, version);
        QCOMPARE(decodeDeviceInfo(encode(*info))->deviceId, id);
        QCOMPARE(decodeDeviceInfo(encode(*info))->deviceVersion, version);
    }

    void multimeter_data()
    {
        const test::Table<QByteArray, QString> table("field", "text");
        table.row("reading", "1.234V", "1.234V");
        table.row("ohm sign", "12 \xCE\xA9", "12 Ω");
        table.row("full field", "12345678901234567890", "12345678901234567890");
        // A byte-order mark alone decodes to nothing in UTF-8.
        table.row("nothing in UTF-8", "\xEF\xBB\xBF", "ï»¿");
        table.row("empty", {}, {});
    }

    void multimeter()
    {
        QFETCH(QByteArray, field);
        QByteArray packet = packetOf(64, 0x04, 0x40);
        packet[3] = static_cast<char>(0xF0);
        packet.replace(4, field.size(), field);
        packet[24] = 'x'; // behind the reading text
        const auto reading = decodeMultimeter(packet);
        QVERIFY(reading.has_value());
        QCOMPARE(reading->mode, 0xF0);
        QTEST(reading->text, "text");
    }

    void textsAreCutBetweenCharacters()
    {
        // 19 bytes and an ohm sign of two: the sign does not fit into 20.
        const QString digits(19, QLatin1Char('1'));
        const QString ohm = QString::fromUtf8("Ω");
        QCOMPARE(decodeMultimeter(encode(protocol::MultimeterReading{2, digits + ohm}))->text, digits);
        const QString exact = digits.left(18) + ohm;
        QCOMPARE(decodeMultimeter(encode(protocol::MultimeterReading{2, exact}))->text, exact);
        const QString longLog = QString(60, QLatin1Char('a')) + ohm;
        QCOMPARE(encodeDeviceLog(longLog).size(), cPacketSize);
        QCOMPARE(decodeDeviceLog(encodeDeviceLog(longLog)).value(), longLog.left(60));
        QCOMPARE(decodeDeviceLog(encodeDeviceLog(longLog.left(59) + ohm)).value(), longLog.left(59) + ohm);
    }

    void uiControl()
    {
        const QByteArray packet = encode(UiControl{1, 4, 2, 0, 255});
        QCOMPARE(packet.size(), cPacketSize);
        QCOMPARE(packet.left(8), QByteArray::fromHex("00104001040200ff"));
        QCOMPARE(packet.mid(8), QByteArray(56, '\0'));
        // Low 8 bits each.
        QCOMPARE(encode(UiControl{257, -1, 256, 511, -256}).mid(3, 5), QByteArray::fromHex("01ff00ff00"));
        const auto decoded = decodeUiControl(QByteArray::fromHex("00104002ff80007f"));
        QVERIFY(decoded.has_value());
        QCOMPARE(decoded->direction, 2);
        QCOMPARE(decoded->layer0, 255);
        QCOMPARE(decoded->layer1, 128);
        QCOMPARE(decoded->layer2, 0);
        QCOMPARE(decoded->layer3, 127);
    }

    void curveData()
    {
        CurveData sent{255, 254, {}};
        for (size_t i = 0; i < sent.points.size(); ++i)
            sent.points[i] = static_cast<float>(i) - 0.5F;
        const QByteArray packet = encode(sent);
        QCOMPARE(packet.left(9), QByteArray::fromHex("000340fffe000000bf"));
        QCOMPARE(packet.mid(61), QByteArray(3, '\0'));
        const auto received = decodeCurveData(packet);
        QVERIFY(received.has_value());
        QCOMPARE(received->packetCount, 255);
        QCOMPARE(received->packetIndex, 254);
        QVERIFY(received->points == sent.points);
    }
};

QUORVEL_TEST_MAIN(PacketCodecTest, QCoreApplication)
#include "tst_PacketCodec.moc"
