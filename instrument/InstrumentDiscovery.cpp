// SPDX-License-Identifier: GPL-3.0-or-later
#include "instrument/InstrumentDiscovery.h"

#include "instrument/PacketCodec.h"
#include "instrument/ReportDescriptor.h"
#include "platform/HidNode.h"

#include <QDebug>
#include <QFile>

#include <algorithm>
#include <array>

namespace {

constexpr int cProbeAttempts = 3;
constexpr int cProbeTimeoutMs = 100;
constexpr int cRefusalsBeforeWarning = 2;
constexpr size_t cDescriptorBufferSize = 4096;

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

InstrumentDiscovery::InstrumentDiscovery(Log log) : m_log(std::move(log)) {}

InstrumentDiscovery::~InstrumentDiscovery()
{
    if (m_hidInitialized)
        hid_exit();
}

void InstrumentDiscovery::log(const QString& line) const
{
    if (m_log)
        m_log(line);
}

bool InstrumentDiscovery::ensureHidInitialized()
{
    if (!m_hidInitialized) {
        m_hidInitialized = hid_init() == 0;
        if (!m_hidInitialized)
            log(QStringLiteral("hid_init failed."));
    }
    return m_hidInitialized;
}

InstrumentDiscovery::Found InstrumentDiscovery::find(bool askedFor)
{
    log(QStringLiteral("tryOpenDevice started. vid=0x%1 pid=0x%2").arg(hex4(cVendorId), hex4(cProductId)));
    m_accessAdvice.clear();
    Found found = search();
    if (found.device)
        m_accessAdvice.clear();
    adviseOnAccess(askedFor);
    if (!found.device) {
        log(QStringLiteral("tryOpenDevice failed: no HID handle opened."));
        return found;
    }
    log(QStringLiteral("HID opened successfully. selectedPath=%1 initialPacketSize=%2")
            .arg(found.path, QString::number(found.firstPacket.size())));
    std::array<unsigned char, cDescriptorBufferSize> descriptor{};
    log(QStringLiteral("HID report descriptor size=%1")
            .arg(hidReportDescriptor(found.device.get(), QFile::encodeName(found.path), descriptor.data(),
                                     descriptor.size())));
    return found;
}

std::vector<InstrumentDiscovery::Candidate> InstrumentDiscovery::candidates()
{
    std::vector<Candidate> found;
    if (!ensureHidInitialized())
        return found;
    const std::unique_ptr<hid_device_info, EnumerationCloser> list(hid_enumerate(cVendorId, cProductId));
    for (const hid_device_info* entry = list.get(); entry != nullptr; entry = entry->next) {
        if (entry->path == nullptr)
            continue;
        const QByteArray path(entry->path);
        found.push_back({QString::fromLocal8Bit(path), fromWide(entry->product_string),
                         fromWide(entry->serial_number), platform::hidAccessAdvice(path),
                         platform::hidNodeUsers(path)});
    }
    return found;
}

InstrumentDiscovery::Found InstrumentDiscovery::search()
{
    const std::unique_ptr<hid_device_info, EnumerationCloser> list(hid_enumerate(cVendorId, cProductId));
    const bool single = list && list->next == nullptr;
    QString firstPath;
    for (const hid_device_info* entry = list.get(); entry != nullptr; entry = entry->next) {
        log(describe(*entry));
        const QString path = QString::fromLocal8Bit(entry->path);
        if (firstPath.isEmpty())
            firstPath = path;
        if (entry->path == nullptr)
            continue;
        if (single) {
            log(QStringLiteral("Single HID candidate detected. Opening directly without synchronous probe. "
                               "path=%1")
                    .arg(path));
            if (HidHandle device = openPath(entry->path))
                return {std::move(device), path, {}};
        }
        HidHandle candidate = openPath(entry->path);
        if (!candidate)
            continue;
        const QByteArray packet = probe(candidate.get(), path);
        if (!packet.isEmpty())
            return {std::move(candidate), path, packet};
    }
    if (firstPath.isEmpty())
        return {};
    log(QStringLiteral("No HID candidate produced protocol data. Falling back to first path=%1")
            .arg(firstPath));
    return {openPath(QFile::encodeName(firstPath).constData()), firstPath, {}};
}

/// Opens \a path for blocking reads. Returns null on failure and stores the advice when access was refused.
HidHandle InstrumentDiscovery::openPath(const char* path)
{
    HidHandle device(hid_open_path(path));
    if (device)
        hid_set_nonblocking(device.get(), 0);
    else if (m_accessAdvice.isEmpty())
        m_accessAdvice = platform::hidAccessAdvice(path);
    return device;
}

/// Listens to a candidate for a short time. Returns the first valid packet, or nothing.
QByteArray InstrumentDiscovery::probe(hid_device* device, const QString& path) const
{
    for (int attempt = 0; attempt < cProbeAttempts; ++attempt) {
        QByteArray packet(protocol::cPacketSize, '\0');
        const int length = hid_read_timeout(device, reinterpret_cast<unsigned char*>(packet.data()),
                                            protocol::cPacketSize, cProbeTimeoutMs);
        if (length < 0) {
            log(QStringLiteral("HID probe read failed: path=%1").arg(path));
            return {};
        }
        if (length == 0)
            continue;
        packet.truncate(length);
        log(QStringLiteral("HID probe packet: path=%1 packet=%2").arg(path, protocol::formatPacket(packet)));
        if (protocol::isValidPacket(packet))
            return packet;
        log(QStringLiteral("HID probe packet rejected as invalid protocol packet: path=%1").arg(path));
    }
    return {};
}

void InstrumentDiscovery::adviseOnAccess(bool askedFor)
{
    if (m_accessAdvice.isEmpty()) {
        m_accessRefusals = 0;
        m_accessWarned = false;
        return;
    }
    log(m_accessAdvice);
    ++m_accessRefusals;
    if (!m_accessWarned && (askedFor || m_accessRefusals >= cRefusalsBeforeWarning)) {
        m_accessWarned = true;
        qWarning().noquote() << m_accessAdvice;
    }
}
