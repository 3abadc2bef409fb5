// SPDX-License-Identifier: GPL-3.0-or-later
#include "hid/HidLink.h"
#include "instrument/ReportDescriptor.h"
#include "platform/HidNode.h"

#include <hidapi.h>

#include <QDebug>
#include <QFile>

#include <algorithm>
#include <array>

namespace {

constexpr int cProbeAttempts = 3;
constexpr int cProbeTimeoutMs = 100;
constexpr int cReadTimeoutMs = 25;
constexpr size_t cDescriptorBufferSize = 4096;
/// The report id that hidapi wants in front; 0 because the instrument's reports are not numbered.
constexpr size_t cReportIdSize = 1;
constexpr int cRefusalsBeforeWarning = 2;

using ReportBuffer = std::array<unsigned char, PacketCodec::cPacketSize>;

struct EnumerationCloser
{
    void operator()(hid_device_info* list) const { hid_free_enumeration(list); }
};

QString hex4(int number)
{
    return QStringLiteral("%1").arg(number, 4, 16, QLatin1Char('0'));
}

QString fromWide(const wchar_t* text)
{
    return text == nullptr ? QString() : QString::fromWCharArray(text);
}

QByteArray toPacket(const ReportBuffer& buffer, int length)
{
    return QByteArray(reinterpret_cast<const char*>(buffer.data()),
                      std::min(length, PacketCodec::cPacketSize));
}

QString describe(const hid_device_info& entry)
{
    return QStringLiteral("HID candidate: path=%1 iface=%2 usagePage=0x%3 usage=0x%4 release=0x%5 "
                          "manufacturer=%6 product=%7 serial=%8")
        .arg(QString::fromLocal8Bit(entry.path), QString::number(entry.interface_number),
             hex4(entry.usage_page), hex4(entry.usage), hex4(entry.release_number),
             fromWide(entry.manufacturer_string), fromWide(entry.product_string),
             fromWide(entry.serial_number));
}

} // namespace

void HidLink::DeviceCloser::operator()(hid_device_* device) const
{
    hid_close(device);
}

bool HidLink::ensureHidInitialized()
{
    if (m_hidInitialized)
        return true;
    if (m_shuttingDown)
        return false;
    m_hidInitialized = hid_init() == 0;
    if (!m_hidInitialized)
        logLine(QStringLiteral("hid_init failed."));
    return m_hidInitialized;
}

bool HidLink::ensureDeviceOpen()
{
    return m_device || openDevice();
}

bool HidLink::tryOpenDevice(bool reportFailure)
{
    if (m_shuttingDown || !ensureHidInitialized())
        return false;
    if (m_device)
        return true;
    logLine(
        QStringLiteral("tryOpenDevice started. vid=0x%1 pid=0x%2").arg(hex4(m_vendorId), hex4(m_productId)));
    Discovery discovery = discoverDevice();
    if (m_shuttingDown)
        return false;
    noteAccess(discovery.device ? QString() : discovery.accessAdvice, reportFailure);
    if (!discovery.device) {
        logLine(QStringLiteral("tryOpenDevice failed: no HID handle opened."));
        if (reportFailure) {
            Q_EMIT errorOccurred(QStringLiteral("Failed to open HID device: VID=0x%1 PID=0x%2")
                                     .arg(hex4(m_vendorId), hex4(m_productId)));
        }
        return false;
    }
    {
        const QMutexLocker lock(&m_deviceMutex);
        m_device = std::move(discovery.device);
    }
    logLine(QStringLiteral("HID opened successfully. selectedPath=%1 initialPacketSize=%2")
                .arg(discovery.selectedPath, QString::number(discovery.probePacket.size())));
    std::array<unsigned char, cDescriptorBufferSize> descriptor{};
    const int descriptorSize = hidReportDescriptor(m_device.get(), QFile::encodeName(discovery.selectedPath),
                                                   descriptor.data(), descriptor.size());
    logLine(QStringLiteral("HID report descriptor size=%1").arg(descriptorSize));

    ++m_linkNumber;
    m_openAttemptCounter = 0;
    m_openedAtMs = m_clock();
    m_packetSinceOpen = !discovery.probePacket.isEmpty();
    if (!m_connected) {
        m_connected = true;
        Q_EMIT devicesStatusChanged();
    }
    // A receiver may have sent something, failed and thereby closed the link again.
    if (!m_device)
        return false;
    startReadThread();
    if (!discovery.probePacket.isEmpty())
        handleIncomingPacket(discovery.probePacket);
    return true;
}

HidLink::Discovery HidLink::discoverDevice()
{
    Discovery discovery;
    const std::unique_ptr<hid_device_info, EnumerationCloser> list(
        hid_enumerate(static_cast<unsigned short>(m_vendorId), static_cast<unsigned short>(m_productId)));
    const bool single = list && list->next == nullptr;
    QString firstPath;
    for (const hid_device_info* entry = list.get(); entry != nullptr; entry = entry->next) {
        if (m_shuttingDown)
            return discovery;
        logLine(describe(*entry));
        const QString path = QString::fromLocal8Bit(entry->path);
        if (firstPath.isEmpty())
            firstPath = path;
        if (entry->path == nullptr)
            continue;
        if (single) {
            logLine(
                QStringLiteral("Single HID candidate detected. Opening directly without synchronous probe. "
                               "path=%1")
                    .arg(path));
            discovery.device = openPath(entry->path, discovery);
            if (discovery.device) {
                discovery.selectedPath = path;
                return discovery;
            }
        }
        DeviceHandle candidate = openPath(entry->path, discovery);
        if (!candidate)
            continue;
        discovery.probePacket = probe(candidate.get(), path);
        if (!discovery.probePacket.isEmpty()) {
            discovery.device = std::move(candidate);
            discovery.selectedPath = path;
            return discovery;
        }
    }
    if (!firstPath.isEmpty()) {
        logLine(QStringLiteral("No HID candidate produced protocol data. Falling back to first path=%1")
                    .arg(firstPath));
        discovery.device = openPath(QFile::encodeName(firstPath).constData(), discovery);
        if (discovery.device)
            discovery.selectedPath = firstPath;
    }
    return discovery;
}

/// Opens \a path for blocking reads; null on failure, whose way out \a discovery keeps where there is one.
HidLink::DeviceHandle HidLink::openPath(const char* path, Discovery& discovery)
{
    DeviceHandle device(hid_open_path(path));
    if (device)
        hid_set_nonblocking(device.get(), 0);
    else if (discovery.accessAdvice.isEmpty())
        discovery.accessAdvice = platform::hidAccessAdvice(path);
    return device;
}

/// Listens on a candidate for a short while: the first valid packet, or nothing when none came.
QByteArray HidLink::probe(hid_device_* device, const QString& path)
{
    for (int attempt = 0; attempt < cProbeAttempts && !m_shuttingDown; ++attempt) {
        ReportBuffer buffer{};
        const int length = hid_read_timeout(device, buffer.data(), buffer.size(), cProbeTimeoutMs);
        if (length < 0) {
            logLine(QStringLiteral("HID probe read failed: path=%1").arg(path));
            return {};
        }
        if (length == 0)
            continue;
        const QByteArray packet = toPacket(buffer, length);
        logLine(QStringLiteral("HID probe packet: path=%1 packet=%2").arg(path, formatPacket(packet)));
        if (isValidPacket(packet))
            return packet;
        logLine(QStringLiteral("HID probe packet rejected as invalid protocol packet: path=%1").arg(path));
    }
    return {};
}

/// Tells "not allowed" from "not there": in the link log at every attempt, on the console once. A node that
/// was just plugged in refuses for a moment, until the system has set its permissions, so a silent attempt
/// alone does not warn.
void HidLink::noteAccess(const QString& advice, bool reportFailure)
{
    if (advice.isEmpty()) {
        m_accessRefusals = 0;
        m_accessWarned = false;
        return;
    }
    logLine(advice);
    ++m_accessRefusals;
    if (!m_accessWarned && (reportFailure || m_accessRefusals >= cRefusalsBeforeWarning)) {
        m_accessWarned = true;
        qWarning().noquote() << advice;
    }
}

void HidLink::startReadThread()
{
    if (!m_device || m_readThread)
        return;
    m_readRunning = true;
    m_readThread = std::make_unique<std::thread>(&HidLink::readLoop, this);
}

void HidLink::stopReadThread()
{
    if (!m_readThread)
        return;
    m_readRunning = false;
    m_readThread->join();
    m_readThread.reset();
}

void HidLink::readLoop()
{
    // Set before this thread starts and changed only after it ends.
    const int link = m_linkNumber;
    while (m_readRunning) {
        hid_device_* device = nullptr;
        {
            const QMutexLocker lock(&m_deviceMutex);
            device = m_device.get();
        }
        if (device == nullptr)
            return;
        ReportBuffer buffer{};
        const int length = hid_read_timeout(device, buffer.data(), buffer.size(), cReadTimeoutMs);
        if (!m_readRunning)
            return;
        if (length == 0)
            continue;
        if (length > 0) {
            QMetaObject::invokeMethod(
                this,
                [this, link, packet = toPacket(buffer, length)] {
                    if (!m_shuttingDown && m_device && link == m_linkNumber)
                        handleIncomingPacket(packet);
                },
                Qt::QueuedConnection);
            continue;
        }
        QString reason;
        {
            // A failing write stores its own text in the device.
            const QMutexLocker lock(&m_deviceMutex);
            reason = fromWide(hid_error(device));
        }
        const QString message = QStringLiteral("HID read failed. %1").arg(reason);
        // The line is written on the GUI thread: the log asks the settings store, which may be gone before
        // this thread has ended, and so it stands after the packets that came before the error.
        QMetaObject::invokeMethod(
            this,
            [this, link, message] {
                if (m_shuttingDown || !m_device || link != m_linkNumber)
                    return;
                logLine(QStringLiteral("Read thread error: %1").arg(message));
                handleReadError(message);
            },
            Qt::QueuedConnection);
        return;
    }
}

bool HidLink::writePacket(const QByteArray& packet)
{
    if (packet.isEmpty())
        return false;
    traceSent(packet);
    std::array<unsigned char, cReportIdSize + PacketCodec::cPacketSize> report{};
    std::copy_n(packet.cbegin(), std::min(packet.size(), PacketCodec::cPacketSize),
                report.begin() + cReportIdSize);
    {
        const QMutexLocker lock(&m_deviceMutex);
        if (!m_device)
            return false;
        m_lastWriteResult = hid_write(m_device.get(), report.data(), report.size());
    }
    if (m_lastWriteResult < 0) {
        Q_EMIT errorOccurred(QStringLiteral("HID write failed."));
        closeDevice();
        return false;
    }
    return true;
}
