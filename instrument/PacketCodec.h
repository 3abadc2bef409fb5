// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "instrument/UiControl.h"

#include <QByteArray>
#include <QString>

#include <array>
#include <optional>
#include <vector>

/**
 * The packets exchanged with the instrument, as plain values: decoding and encoding of every packet type in
 * both directions. No state, no thread of its own; the frame is described in docs/protocol.md.
 *
 * Decoders take whatever arrived, of any length and content, and never read past its end. They look at the
 * length that their type needs and not at the type byte: route by type() first.
 */
namespace protocol {

/// Bytes in one HID report. Received packets may be shorter, sent ones never are.
constexpr int cPacketSize = 64;
/// Bytes before the payload: reserved, type, length. Nothing shorter is a packet.
constexpr int cHeaderSize = 3;
constexpr int cTypeOffset = 1;
constexpr int cLengthOffset = 2;
constexpr int cPayloadOffset = cHeaderSize;

/// Values of the type byte.
enum class Type : quint8 {
    Measurement = 0x01,
    DeviceInfo = 0x02,
    CurveData = 0x03,
    Multimeter = 0x04,
    DeviceLog = 0x05,
    UiControl = 0x10,
};

/// Floats in one curve packet.
constexpr int cCurvePointsPerPacket = 14;
/// The packet count and the index travel in one byte each.
constexpr int cMaxCurvePackets = 255;
/// Bytes of the reading text and of each identity text.
constexpr int cReadingTextSize = 20;
constexpr int cIdentityTextSize = 16;

/// One set of readings of the main supply and of the Type-C analyser, in packet order: volts, amperes,
/// watts, milliampere hours and seconds, as the instrument sends them (NaN and infinities included).
struct Measurement
{
    float mainInputVoltage = 0;
    float mainOutputCurrent = 0;
    float mainPower = 0;
    float mainMah = 0;
    float mainTimeSec = 0;
    float typeCInputVoltage = 0;
    float typeCInputCurrent = 0;
    float typeCInputPower = 0;
    float typeCDPlusVoltage = 0;
    float typeCDMinusVoltage = 0;
    float typeCCC1Voltage = 0;
    float typeCCC2Voltage = 0;
    float typeCMah = 0;
    float typeCTimeSec = 0;
};

struct DeviceInfo
{
    QString deviceId;
    QString deviceVersion;
};

/// One part of an uploaded curve.
struct CurveData
{
    int packetCount = 0; ///< 1 to 255, the same in every packet of one curve
    int packetIndex = 0; ///< 0 to packetCount - 1
    /// The points of this part. The packet does not say how many are used; the rest are 0.
    std::array<float, cCurvePointsPerPacket> points{};
};

struct MultimeterReading
{
    int mode = 0; ///< the multimeter function, 0 to 255
    QString text; ///< a value with its unit, or a word such as "OL"
};

/// "Show this screen" from the host, "I show this screen" from the instrument; every field 0 to 255.
struct UiControl
{
    int direction = HostRequest;
    int layer0 = cLayerNotGiven;
    int layer1 = cLayerNotGiven;
    int layer2 = cLayerNotGiven;
    int layer3 = cLayerNotGiven;
};

enum class TextEncoding { Utf8, Latin1 };

/// The type byte, or -1 when \a packet is shorter than a header.
int packetType(const QByteArray& packet);

/// Whether \a packet, received by the host, has a known type and a plausible length byte (0x3F, 0x40, its
/// own length or one less). Curve data is never valid there: only the host sends it.
bool isValidPacket(const QByteArray& packet);

/// "len=3 00 01 40": the length in decimal and every byte as two upper-case hexadecimal digits.
QString formatPacket(const QByteArray& packet);

/// The text at \a offset: at most \a maxLength bytes (all that follow when it is negative), up to the first
/// zero byte, decoded and trimmed. Empty when \a offset is outside the packet.
QString extractText(const QByteArray& packet, int offset, int maxLength, TextEncoding encoding);

// Decoders: nothing when the packet is too short for its type.

std::optional<Measurement> decodeMeasurement(const QByteArray& packet);
std::optional<DeviceInfo> decodeDeviceInfo(const QByteArray& packet);
std::optional<CurveData> decodeCurveData(const QByteArray& packet);
std::optional<MultimeterReading> decodeMultimeter(const QByteArray& packet);
/// The message of a device-log packet; it may be empty.
std::optional<QString> decodeDeviceLog(const QByteArray& packet);
std::optional<UiControl> decodeUiControl(const QByteArray& packet);

// Encoders: always a full report of 64 bytes, unused bytes 0. Numbers keep their low 8 bits; a text that does
// not fit is cut, between two characters where it is UTF-8.

QByteArray encode(const Measurement& measurement);
QByteArray encode(const DeviceInfo& info);
QByteArray encode(const CurveData& curve);
/// The packets of a whole curve, in order; none when \a points is empty or too long for cMaxCurvePackets.
std::vector<QByteArray> encodeCurve(const std::vector<float>& points);
QByteArray encode(const MultimeterReading& reading);
QByteArray encodeDeviceLog(const QString& message);
QByteArray encode(const UiControl& control);

} // namespace protocol
