// SPDX-License-Identifier: GPL-3.0-or-later
// Passes a series of arbitrary packets through the codec and the link's receive entry.
#include "hid/HidLink.h"
#include "instrument/PacketCodec.h"

#include <QCoreApplication>

#include <algorithm>
#include <cstdlib>

namespace {

/// Stops the fuzzer when an invariant is violated.
void check(bool holds)
{
    if (!holds)
        std::abort();
}

void throughTheCodec(const QByteArray& packet)
{
    using namespace protocol;
    check(formatPacket(packet).count(QLatin1Char(' ')) == std::max(1, packet.size()));
    check(!isValidPacket(packet) || packetType(packet) > 0);
    if (const auto measurement = decodeMeasurement(packet))
        check(encode(*measurement).mid(cPayloadOffset, 56) == packet.mid(cPayloadOffset, 56));
    if (const auto info = decodeDeviceInfo(packet)) {
        check(info->deviceId.size() <= cIdentityTextSize && info->deviceVersion.size() <= cIdentityTextSize);
        check(decodeDeviceInfo(encode(*info))->deviceId == info->deviceId);
    }
    if (const auto curve = decodeCurveData(packet))
        check(encode(*curve).mid(cPayloadOffset, 58) == packet.mid(cPayloadOffset, 58));
    if (const auto reading = decodeMultimeter(packet)) {
        check(reading->text.size() <= cReadingTextSize);
        check(encode(*reading).size() == cPacketSize);
    }
    if (const auto message = decodeDeviceLog(packet))
        check(encodeDeviceLog(*message).size() == cPacketSize);
    if (const auto control = decodeUiControl(packet))
        check(encode(*control).mid(cPayloadOffset, 5) == packet.mid(cPayloadOffset, 5));
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    // Without a home folder the lines of the device log are not written, so the disk does not fill up.
    qputenv("HOME", "/dev/null");
    static QCoreApplication app(*argc, *argv);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static HidLink link(nullptr, nullptr);
    // Each packet is a length byte followed by that many bytes, or by the remaining ones.
    while (size > 0) {
        const size_t length = std::min<size_t>(data[0] % (protocol::cPacketSize + 1), size - 1);
        const QByteArray packet(reinterpret_cast<const char*>(data + 1), static_cast<int>(length));
        data += 1 + length;
        size -= 1 + length;
        throughTheCodec(packet);
        QMetaObject::invokeMethod(&link, "handleIncomingPacket", Q_ARG(QByteArray, packet));
        check(link.lastRxPacket() == protocol::formatPacket(packet));
    }
    link.closeDevice();
    check(link.mainInputVoltage() == 0 && link.multimeterMode() == 0 && link.lastRxPacket().isEmpty());
    return 0;
}
