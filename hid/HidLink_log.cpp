// SPDX-License-Identifier: GPL-3.0-or-later
#include "hid/HidLink.h"

#include "storage/SettingsFile.h"

#include <QDebug>

namespace {

constexpr int cMaxDeviceLogs = 500;

} // namespace

bool HidLink::systemSwitch(const QString& key) const
{
    static const QString group = QLatin1String(setting::usbDebugEnabled.group);
    return m_settings != nullptr && m_settings->value(group, key, false).toBool();
}

bool HidLink::usbDebugEnabled() const
{
    return systemSwitch(QLatin1String(setting::usbDebugEnabled.key));
}

void HidLink::logLine(const QString& message) const
{
    if (usbDebugEnabled())
        m_linkLog.append(message);
}

QString HidLink::formatPacket(const QByteArray& packet)
{
    return PacketCodec::formatPacket(packet);
}

QString HidLink::lastRxPacket() const
{
    return m_lastRxPacket ? formatPacket(*m_lastRxPacket) : QString();
}

QString HidLink::lastTxPacket() const
{
    return m_lastTxPacket ? formatPacket(*m_lastTxPacket) : QString();
}

void HidLink::traceReceived(const QByteArray& packet)
{
    m_lastRxPacket = packet;
    Q_EMIT packetTraceChanged();
    if (!usbDebugEnabled())
        return;
    const QString text = formatPacket(packet);
    m_linkLog.append(QStringLiteral("HID RX: %1").arg(text));
    qDebug().noquote() << "[HID][RX]" << text;
    if (!isValidPacket(packet))
        m_linkLog.append(QStringLiteral("Received invalid/unknown HID packet: %1").arg(text));
}

void HidLink::traceSent(const QByteArray& packet)
{
    m_lastTxPacket = packet;
    Q_EMIT packetTraceChanged();
    if (!usbDebugEnabled())
        return;
    const QString text = formatPacket(packet);
    m_linkLog.append(QStringLiteral("HID TX: %1").arg(text));
    qDebug().noquote() << "[HID][TX]" << text;
}

void HidLink::appendDeviceLog(const QString& message)
{
    const QDateTime now = QDateTime::currentDateTime();
    const QString dateTime = now.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    m_lastDeviceLog = QLatin1Char('[') + dateTime + QLatin1String("] ") + message;
    m_deviceLogs.prepend(
        QVariantMap{{QStringLiteral("dateTime"), dateTime}, {QStringLiteral("message"), message}});
    while (m_deviceLogs.size() > cMaxDeviceLogs)
        m_deviceLogs.removeLast();
    m_deviceLogFile.appendLine(m_lastDeviceLog, now);
    Q_EMIT deviceLogChanged();
    Q_EMIT deviceLogsChanged();
}
