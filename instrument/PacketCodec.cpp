// SPDX-License-Identifier: GPL-3.0-or-later
#include "instrument/PacketCodec.h"

#include <QtEndian>

#include <algorithm>
#include <cstring>
#include <limits>

namespace protocol {

namespace {

constexpr char cFullLength = 0x40;
constexpr char cFullLengthWithoutReserved = 0x3F;

constexpr int cFloatSize = 4;
constexpr int cMeasurementValues = 14;
constexpr int cMeasurementSize = cPayloadOffset + cMeasurementValues * cFloatSize;

constexpr int cDeviceIdOffset = cPayloadOffset;
constexpr int cDeviceVersionOffset = cDeviceIdOffset + cIdentityTextSize;
constexpr int cDeviceInfoSize = cDeviceVersionOffset + cIdentityTextSize;

constexpr int cCurveCountOffset = cPayloadOffset;
constexpr int cCurveIndexOffset = cCurveCountOffset + 1;
constexpr int cCurvePointsOffset = cCurveIndexOffset + 1;

constexpr int cModeOffset = cPayloadOffset;
constexpr int cReadingTextOffset = cModeOffset + 1;
constexpr int cMultimeterSize = cReadingTextOffset + cReadingTextSize;

constexpr int cLogTextOffset = cPayloadOffset;
constexpr int cDeviceLogMinimumSize = cLogTextOffset + 1;

constexpr int cDirectionOffset = cPayloadOffset;
constexpr int cLayersOffset = cDirectionOffset + 1;
constexpr int cLayerCount = 4;
constexpr int cUiControlSize = cLayersOffset + cLayerCount;

static_assert(sizeof(float) == cFloatSize && std::numeric_limits<float>::is_iec559,
              "the wire carries IEEE 754 single-precision floats");

/// The members of Measurement in the order in which the packet carries them.
constexpr float Measurement::*cMeasurementOrder[cMeasurementValues] = {
    &Measurement::mainInputVoltage,  &Measurement::mainOutputCurrent,
    &Measurement::mainPower,         &Measurement::mainMah,
    &Measurement::mainTimeSec,       &Measurement::typeCInputVoltage,
    &Measurement::typeCInputCurrent, &Measurement::typeCInputPower,
    &Measurement::typeCDPlusVoltage, &Measurement::typeCDMinusVoltage,
    &Measurement::typeCCC1Voltage,   &Measurement::typeCCC2Voltage,
    &Measurement::typeCMah,          &Measurement::typeCTimeSec,
};

int byteAt(const QByteArray& packet, int offset)
{
    return static_cast<unsigned char>(packet.constData()[offset]);
}

float floatAt(const QByteArray& packet, int offset)
{
    const auto bits = qFromLittleEndian<quint32>(packet.constData() + offset);
    float value = 0;
    std::memcpy(&value, &bits, sizeof(value));
    return value;
}

void putByte(QByteArray& packet, int offset, int value)
{
    packet[offset] = static_cast<char>(static_cast<unsigned char>(value));
}

void putFloat(QByteArray& packet, int offset, float value)
{
    quint32 bits = 0;
    std::memcpy(&bits, &value, sizeof(bits));
    qToLittleEndian(bits, packet.data() + offset);
}

void putText(QByteArray& packet, int offset, int maxLength, const QByteArray& text)
{
    std::memcpy(packet.data() + offset, text.constData(), static_cast<size_t>(qMin(text.size(), maxLength)));
}

/// \a text in UTF-8, cut to \a maxLength bytes without splitting a character.
QByteArray utf8Cut(const QString& text, int maxLength)
{
    QByteArray bytes = text.toUtf8();
    if (bytes.size() <= maxLength)
        return bytes;
    constexpr int cContinuationMask = 0xC0;
    constexpr int cContinuation = 0x80;
    int end = maxLength;
    while (end > 0 && (byteAt(bytes, end) & cContinuationMask) == cContinuation)
        --end;
    bytes.truncate(end);
    return bytes;
}

QByteArray emptyPacket(Type type)
{
    QByteArray packet(cPacketSize, '\0');
    packet[cTypeOffset] = static_cast<char>(type);
    packet[cLengthOffset] = cFullLength;
    return packet;
}

} // namespace

int packetType(const QByteArray& packet)
{
    return packet.size() < cHeaderSize ? -1 : byteAt(packet, cTypeOffset);
}

bool isValidPacket(const QByteArray& packet)
{
    switch (packetType(packet)) {
    case static_cast<int>(Type::Measurement):
    case static_cast<int>(Type::DeviceInfo):
    case static_cast<int>(Type::Multimeter):
    case static_cast<int>(Type::DeviceLog):
    case static_cast<int>(Type::UiControl):
        break;
    default:
        return false;
    }
    const int length = byteAt(packet, cLengthOffset);
    return length == cFullLength || length == cFullLengthWithoutReserved || length == packet.size() ||
           length == packet.size() - 1;
}

QString formatPacket(const QByteArray& packet)
{
    return QLatin1String("len=") + QString::number(packet.size()) + QLatin1Char(' ') +
           QString::fromLatin1(packet.toHex(' ').toUpper());
}

QString extractText(const QByteArray& packet, int offset, int maxLength, TextEncoding encoding)
{
    if (offset < 0 || offset >= packet.size())
        return {};
    const int available = packet.size() - offset;
    const char* const begin = packet.constData() + offset;
    const char* const end = begin + (maxLength < 0 ? available : qMin(available, maxLength));
    const int length = static_cast<int>(std::find(begin, end, '\0') - begin);
    const QString text = encoding == TextEncoding::Utf8 ? QString::fromUtf8(begin, length)
                                                        : QString::fromLatin1(begin, length);
    return text.trimmed();
}

std::optional<Measurement> decodeMeasurement(const QByteArray& packet)
{
    if (packet.size() < cMeasurementSize)
        return std::nullopt;
    Measurement measurement;
    int offset = cPayloadOffset;
    for (float Measurement::*const member : cMeasurementOrder) {
        measurement.*member = floatAt(packet, offset);
        offset += cFloatSize;
    }
    return measurement;
}

std::optional<DeviceInfo> decodeDeviceInfo(const QByteArray& packet)
{
    if (packet.size() < cDeviceInfoSize)
        return std::nullopt;
    return DeviceInfo{extractText(packet, cDeviceIdOffset, cIdentityTextSize, TextEncoding::Latin1),
                      extractText(packet, cDeviceVersionOffset, cIdentityTextSize, TextEncoding::Latin1)};
}

std::optional<CurveData> decodeCurveData(const QByteArray& packet)
{
    if (packet.size() < cPacketSize)
        return std::nullopt;
    CurveData curve;
    curve.packetCount = byteAt(packet, cCurveCountOffset);
    curve.packetIndex = byteAt(packet, cCurveIndexOffset);
    int offset = cCurvePointsOffset;
    for (float& point : curve.points) {
        point = floatAt(packet, offset);
        offset += cFloatSize;
    }
    return curve;
}

std::optional<MultimeterReading> decodeMultimeter(const QByteArray& packet)
{
    if (packet.size() < cMultimeterSize)
        return std::nullopt;
    MultimeterReading reading;
    reading.mode = byteAt(packet, cModeOffset);
    reading.text = extractText(packet, cReadingTextOffset, cReadingTextSize, TextEncoding::Utf8);
    if (reading.text.isEmpty())
        reading.text = extractText(packet, cReadingTextOffset, cReadingTextSize, TextEncoding::Latin1);
    return reading;
}

std::optional<QString> decodeDeviceLog(const QByteArray& packet)
{
    if (packet.size() < cDeviceLogMinimumSize)
        return std::nullopt;
    return extractText(packet, cLogTextOffset, -1, TextEncoding::Utf8);
}

std::optional<UiControl> decodeUiControl(const QByteArray& packet)
{
    if (packet.size() < cUiControlSize)
        return std::nullopt;
    return UiControl{byteAt(packet, cDirectionOffset), byteAt(packet, cLayersOffset),
                     byteAt(packet, cLayersOffset + 1), byteAt(packet, cLayersOffset + 2),
                     byteAt(packet, cLayersOffset + 3)};
}

QByteArray encode(const Measurement& measurement)
{
    QByteArray packet = emptyPacket(Type::Measurement);
    int offset = cPayloadOffset;
    for (float Measurement::*const member : cMeasurementOrder) {
        putFloat(packet, offset, measurement.*member);
        offset += cFloatSize;
    }
    return packet;
}

QByteArray encode(const DeviceInfo& info)
{
    QByteArray packet = emptyPacket(Type::DeviceInfo);
    putText(packet, cDeviceIdOffset, cIdentityTextSize, info.deviceId.toLatin1());
    putText(packet, cDeviceVersionOffset, cIdentityTextSize, info.deviceVersion.toLatin1());
    return packet;
}

QByteArray encode(const CurveData& curve)
{
    QByteArray packet = emptyPacket(Type::CurveData);
    putByte(packet, cCurveCountOffset, curve.packetCount);
    putByte(packet, cCurveIndexOffset, curve.packetIndex);
    int offset = cCurvePointsOffset;
    for (const float point : curve.points) {
        putFloat(packet, offset, point);
        offset += cFloatSize;
    }
    return packet;
}

std::vector<QByteArray> encodeCurve(const std::vector<float>& points)
{
    constexpr size_t cPerPacket = cCurvePointsPerPacket;
    const size_t count = (points.size() + cPerPacket - 1) / cPerPacket;
    std::vector<QByteArray> packets;
    if (count > cMaxCurvePackets)
        return packets;
    for (size_t index = 0; index < count; ++index) {
        CurveData part{static_cast<int>(count), static_cast<int>(index), {}};
        const auto begin = points.cbegin() + static_cast<std::ptrdiff_t>(index * cPerPacket);
        std::copy_n(begin, std::min(cPerPacket, points.size() - index * cPerPacket), part.points.begin());
        packets.push_back(encode(part));
    }
    return packets;
}

QByteArray encode(const MultimeterReading& reading)
{
    QByteArray packet = emptyPacket(Type::Multimeter);
    putByte(packet, cModeOffset, reading.mode);
    putText(packet, cReadingTextOffset, cReadingTextSize, utf8Cut(reading.text, cReadingTextSize));
    return packet;
}

QByteArray encodeDeviceLog(const QString& message)
{
    constexpr int cLogTextSize = cPacketSize - cLogTextOffset;
    QByteArray packet = emptyPacket(Type::DeviceLog);
    putText(packet, cLogTextOffset, cLogTextSize, utf8Cut(message, cLogTextSize));
    return packet;
}

QByteArray encode(const UiControl& control)
{
    QByteArray packet = emptyPacket(Type::UiControl);
    putByte(packet, cDirectionOffset, control.direction);
    int offset = cLayersOffset;
    for (const int layer : {control.layer0, control.layer1, control.layer2, control.layer3})
        putByte(packet, offset++, layer);
    return packet;
}

} // namespace protocol
