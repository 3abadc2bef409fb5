// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/virtual-instrument/HostPacketText.h"

#include "instrument/PacketCodec.h"

#include <QStringList>

namespace {

QString textOf(const protocol::UiControl& control)
{
    return QStringLiteral("ui-control direction=%1 layer0=%2 layer1=%3 layer2=%4 layer3=%5")
        .arg(control.direction)
        .arg(control.layer0)
        .arg(control.layer1)
        .arg(control.layer2)
        .arg(control.layer3);
}

QString textOf(const protocol::CurveData& curve)
{
    QStringList points;
    for (const float point : curve.points)
        points.append(QString::number(point));
    return QStringLiteral("curve index=%1 count=%2 points=%3")
        .arg(curve.packetIndex)
        .arg(curve.packetCount)
        .arg(points.join(QLatin1Char(',')));
}

} // namespace

QString hostPacketText(const QByteArray& packet)
{
    switch (protocol::packetType(packet)) {
    case static_cast<int>(protocol::Type::UiControl):
        if (const auto control = protocol::decodeUiControl(packet))
            return textOf(*control);
        break;
    case static_cast<int>(protocol::Type::CurveData):
        if (const auto curve = protocol::decodeCurveData(packet))
            return textOf(*curve);
        break;
    default:
        break;
    }
    return protocol::formatPacket(packet);
}
