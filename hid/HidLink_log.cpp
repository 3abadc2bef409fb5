// SPDX-License-Identifier: GPL-3.0-or-later
#include "hid/HidLink.h"

#include "storage/SettingsFile.h"

#include <QDebug>

bool HidLink::usbDebugEnabled() const
{
    if (m_batch)
        return m_batch->usbDebugEnabled;
    return m_settings != nullptr && m_settings->value(setting::usbDebugEnabled);
}

void HidLink::logLine(const QString& message) const
{
    if (usbDebugEnabled())
        m_linkLog.append(message);
}

QString HidLink::lastRxPacket() const
{
    return m_lastRxPacket ? protocol::formatPacket(*m_lastRxPacket) : QString();
}

QString HidLink::lastTxPacket() const
{
    return m_lastTxPacket ? protocol::formatPacket(*m_lastTxPacket) : QString();
}

void HidLink::traceReceived(const QByteArray& packet)
{
    m_lastRxPacket = packet;
    Q_EMIT packetTraceChanged();
    if (!usbDebugEnabled())
        return;
    const QString text = protocol::formatPacket(packet);
    m_linkLog.append(QStringLiteral("HID RX: %1").arg(text));
    qDebug().noquote() << "[HID][RX]" << text;
    if (!protocol::isValidPacket(packet))
        m_linkLog.append(QStringLiteral("Received invalid/unknown HID packet: %1").arg(text));
}

void HidLink::traceSent(const QByteArray& packet)
{
    m_lastTxPacket = packet;
    Q_EMIT packetTraceChanged();
    if (!usbDebugEnabled())
        return;
    const QString text = protocol::formatPacket(packet);
    m_linkLog.append(QStringLiteral("HID TX: %1").arg(text));
    qDebug().noquote() << "[HID][TX]" << text;
}

void HidLink::appendDeviceLog(const QString& message)
{
    m_deviceLog.append(message, wallTime());
    Q_EMIT deviceLogChanged();
    Q_EMIT deviceLogsChanged();
}
