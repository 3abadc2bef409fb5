// SPDX-License-Identifier: GPL-3.0-or-later
#include "hid/HidLink.h"

#include <QDebug>

#include <algorithm>

void HidLink::handleIncomingPacket(const QByteArray& packet)
{
    traceReceived(packet);
    // The validity test is for the log only; every handler checks what it needs.
    dispatchPacket(packet);
}

void HidLink::dispatchPacket(const QByteArray& packet)
{
    switch (protocol::packetType(packet)) {
    case static_cast<int>(protocol::Type::Measurement):
        return handleMeasurementPacket(packet);
    case static_cast<int>(protocol::Type::DeviceInfo):
        return handleDeviceInfoPacket(packet);
    case static_cast<int>(protocol::Type::Multimeter):
        return handleMultimeterPacket(packet);
    case static_cast<int>(protocol::Type::DeviceLog):
        return handleDeviceLogPacket(packet);
    case static_cast<int>(protocol::Type::UiControl):
        return handleUiControlPacket(packet);
    default:
        return;
    }
}

void HidLink::handleMeasurementPacket(const QByteArray& packet)
{
    if (const auto measurement = protocol::decodeMeasurement(packet)) {
        m_measurement = *measurement;
        Q_EMIT measurementChanged();
    }
}

void HidLink::handleDeviceInfoPacket(const QByteArray& packet)
{
    if (const auto info = protocol::decodeDeviceInfo(packet)) {
        m_deviceInfo = *info;
        Q_EMIT deviceInfoChanged();
    }
}

void HidLink::handleMultimeterPacket(const QByteArray& packet)
{
    if (const auto reading = protocol::decodeMultimeter(packet))
        handleMultimeterPacket(reading->mode, reading->text);
}

void HidLink::handleDeviceLogPacket(const QByteArray& packet)
{
    const auto message = protocol::decodeDeviceLog(packet);
    if (message && !message->isEmpty())
        appendDeviceLog(*message);
}

void HidLink::handleUiControlPacket(const QByteArray& packet)
{
    const auto control = protocol::decodeUiControl(packet);
    if (!control)
        return;
    if (usbDebugEnabled()) {
        logLine(
            QStringLiteral("UI control packet received. direction=%1 layer0=%2 layer1=%3 layer2=%4 layer3=%5")
                .arg(control->direction)
                .arg(control->layer0)
                .arg(control->layer1)
                .arg(control->layer2)
                .arg(control->layer3));
        qDebug() << "[HID][10H][RX]"
                 << "direction=" << control->direction << "layer0=" << control->layer0
                 << "layer1=" << control->layer1 << "layer2=" << control->layer2
                 << "layer3=" << control->layer3;
    }
    Q_EMIT uiControlRequested(control->direction, control->layer0, control->layer1, control->layer2,
                              control->layer3);
}

bool HidLink::sendUiControlPacket(int layer0, int layer1, int layer2, int layer3, int direction)
{
    if (!openDevice())
        return false;
    return writePacket(protocol::encode(protocol::UiControl{direction, layer0, layer1, layer2, layer3}));
}

bool HidLink::sendCurveData(const QVariantList& points)
{
    if (!openDevice())
        return false;
    constexpr int cPerPacket = protocol::cCurvePointsPerPacket;
    const int packetCount = (points.size() + cPerPacket - 1) / cPerPacket;
    if (packetCount > protocol::cMaxCurvePackets) {
        Q_EMIT errorOccurred(QStringLiteral("Curve packet count exceeds protocol limit."));
        return false;
    }
    for (int index = 0; index < packetCount; ++index) {
        protocol::CurveData part{packetCount, index, {}};
        const auto begin = points.cbegin() + index * cPerPacket;
        const int count = std::min(cPerPacket, points.size() - index * cPerPacket);
        std::transform(begin, begin + count, part.points.begin(),
                       [](const QVariant& point) { return point.toFloat(); });
        if (!writePacket(protocol::encode(part)))
            return false;
    }
    return true;
}

void HidLink::clearTypeCMahandSec()
{
    m_measurement.typeCMah = 0;
    m_measurement.typeCTimeSec = 0;
    Q_EMIT measurementChanged();
}
