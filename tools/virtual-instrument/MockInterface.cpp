// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/virtual-instrument/MockInterface.h"

#include "instrument/PacketCodec.h"

#include <umockdev.h>

#include <QMutex>
#include <QMutexLocker>
#include <QSocketNotifier>
#include <QtDebug>

#include <cerrno>
#include <cstring>
#include <deque>
#include <fcntl.h>
#include <linux/hidraw.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

namespace {

/// Size of the report id that the host writes before each report.
constexpr int cHostReportSize = protocol::cPacketSize + 1;
constexpr int cOpenCheckMs = 5;
constexpr mode_t cNodeGranted = 0666;
constexpr mode_t cNodeDenied = 0;

/// Vendor-defined usage page, one input and one output report of 64 bytes without number.
constexpr unsigned char cReportDescriptor[] = {
    0x06, 0x00,
    0xff,       // usage page (vendor defined)
    0x09, 0x01, // usage (1)
    0xa1, 0x01, // collection (application)
    0x09, 0x01, //   usage (1)
    0x15, 0x00, //   logical minimum (0)
    0x26, 0xff,
    0x00,                        //   logical maximum (255)
    0x75, 0x08,                  //   report size (8 bits)
    0x95, protocol::cPacketSize, //   report count
    0x81, 0x02,                  //   input (data, variable, absolute)
    0x09, 0x01,                  //   usage (1)
    0x75, 0x08,
    0x95, 0x40, //   report size and count
    0x91, 0x02, //   output (data, variable, absolute)
    0xc0,       // end collection
};

/// Errors of the kernel after a failed transfer.
constexpr int cTransferError = EIO;
/// The byte that represents a report in the terminal.
constexpr char cToken = '.';

QByteArray descriptorHex()
{
    return QByteArray(reinterpret_cast<const char*>(cReportDescriptor), sizeof cReportDescriptor).toHex();
}

/// Copies \a size bytes to the address in the ioctl argument of the program.
bool answer(UMockdevIoctlClient* client, const void* bytes, int size)
{
    GError* error = nullptr;
    UMockdevIoctlData* argument = umockdev_ioctl_client_get_arg(client);
    UMockdevIoctlData* target = umockdev_ioctl_data_resolve(argument, 0, static_cast<gsize>(size), &error);
    if (target == nullptr) {
        g_clear_error(&error);
        return false;
    }
    QByteArray copy(static_cast<const char*>(bytes), size);
    umockdev_ioctl_data_update(target, 0, reinterpret_cast<guint8*>(copy.data()), size);
    g_object_unref(target);
    umockdev_ioctl_client_complete(client, 0, 0);
    return true;
}

// The functions below run on umockdev's worker thread.

gboolean handleIoctl(UMockdevIoctlBase*, UMockdevIoctlClient* client, gpointer)
{
    switch (umockdev_ioctl_client_get_request(client)) {
    case HIDIOCGRDESCSIZE: {
        const int size = sizeof cReportDescriptor;
        return answer(client, &size, sizeof size);
    }
    case HIDIOCGRDESC: {
        hidraw_report_descriptor descriptor{};
        descriptor.size = sizeof cReportDescriptor;
        std::memcpy(descriptor.value, cReportDescriptor, sizeof cReportDescriptor);
        return answer(client, &descriptor, sizeof descriptor);
    }
    default:
        return FALSE;
    }
}

gboolean handleWrite(UMockdevIoctlBase*, UMockdevIoctlClient* client, gpointer failingWrites)
{
    auto* left = static_cast<std::atomic_int*>(failingWrites);
    int count = left->load();
    while (count > 0) {
        if (left->compare_exchange_weak(count, count - 1)) {
            umockdev_ioctl_client_complete(client, -1, cTransferError);
            return TRUE;
        }
    }
    return FALSE; // umockdev then does the real write
}

} // namespace

/// Shared by the main thread, which sends, and umockdev's worker thread, which answers the reads of the
/// program.
struct MockInterface::ReportQueue
{
    QMutex mutex;
    /// The mutex guards all members.
    std::deque<QByteArray> reports;
    /// Bytes that did not fit into the terminal yet.
    int owedTokens = 0;
    int master = -1; ///< -1 once the interface is gone
    QByteArray slaveName;

    /// Writes pending bytes, so that the node is readable for all reports.
    void payTokens()
    {
        while (owedTokens > 0 && ::write(master, &cToken, 1) == 1)
            --owedTokens;
    }

    /// Opens the program side for a moment. The terminal hangs up when the program closes it.
    int openSlave() const
    {
        return ::open(slaveName.constData(), O_RDWR | O_NOCTTY | O_CLOEXEC | O_NONBLOCK);
    }

    /// Removes the byte of one report. Returns false when the node is not readable.
    bool takeToken() const
    {
        if (master < 0)
            return false;
        const int slave = openSlave();
        char token = 0;
        const bool taken = ::read(slave, &token, 1) == 1;
        ::close(slave);
        return taken;
    }

    static gboolean answerRead(UMockdevIoctlBase*, UMockdevIoctlClient* client, gpointer data)
    {
        auto* queue = static_cast<ReportQueue*>(data);
        UMockdevIoctlData* target = umockdev_ioctl_client_get_arg(client);
        const QMutexLocker lock(&queue->mutex);
        if (!queue->takeToken() || queue->reports.empty()) {
            umockdev_ioctl_client_complete(client, -1, EAGAIN);
            return TRUE;
        }
        queue->payTokens();
        // Bytes beyond the buffer of the program are lost, as with a real device node.
        QByteArray report = queue->reports.front().left(target->data_len);
        queue->reports.pop_front();
        umockdev_ioctl_data_update(target, 0, reinterpret_cast<guint8*>(report.data()), report.size());
        umockdev_ioctl_client_complete(client, report.size(), 0);
        return TRUE;
    }
};

MockInterface::MockInterface(UMockdevTestbed* testbed, const QString& usbPath, int number, int node,
                             std::atomic_int* failingWrites)
    : m_testbed(testbed), m_failingWrites(failingWrites)
{
    const QString usbName = usbPath.section(QLatin1Char('/'), -1);
    const QString hidName =
        QStringLiteral("0003:0483:5750.%1").arg(node + 1, 4, 16, QLatin1Char('0')).toUpper();
    const QString rawName = QStringLiteral("hidraw%1").arg(node);
    const QString interface = QStringLiteral("%1/%2:1.%3").arg(usbPath, usbName).arg(number);
    const QString hid = interface + QLatin1Char('/') + hidName;
    const QString raw = hid + QStringLiteral("/hidraw/") + rawName;
    m_nodeName = QStringLiteral("/dev/") + rawName;
    m_interfacePath = QStringLiteral("/sys") + interface;
    m_hidPath = QStringLiteral("/sys") + hid;
    m_rawPath = QStringLiteral("/sys") + raw;

    const QString description =
        QStringLiteral("P: %1\nE: SUBSYSTEM=usb\nE: DEVTYPE=usb_interface\n"
                       "A: bInterfaceNumber=%2\\n\n\n"
                       "P: %3\nE: SUBSYSTEM=hid\nE: HID_ID=0003:00000483:00005750\n"
                       "E: HID_NAME=Quorvel Virtual instrument\nE: HID_UNIQ=VIRTUAL1\n"
                       "E: HID_PHYS=usb-mock-1/input%4\nH: report_descriptor=%5\n\n"
                       "P: %6\nN: %7\nE: SUBSYSTEM=hidraw\nE: DEVNAME=%8\n"
                       "L: device=../../../%9\n\n")
            .arg(interface)
            .arg(number, 2, 10, QLatin1Char('0'))
            .arg(hid)
            .arg(number)
            .arg(QString::fromLatin1(descriptorHex()), raw, rawName, m_nodeName, hidName);
    GError* error = nullptr;
    if (!umockdev_testbed_add_from_string(testbed, description.toUtf8().constData(), &error)) {
        qCritical("The device description was refused: %s", error->message);
        g_clear_error(&error);
        return;
    }
    const QByteArray nodeBytes = m_nodeName.toLatin1();
    m_handler = umockdev_ioctl_base_new();
    g_signal_connect(m_handler, "handle-ioctl", G_CALLBACK(handleIoctl), nullptr);
    g_signal_connect(m_handler, "handle-write", G_CALLBACK(handleWrite), m_failingWrites);
    m_reports = std::make_shared<ReportQueue>();
    const auto release =
        +[](gpointer data, GClosure*) { delete static_cast<std::shared_ptr<ReportQueue>*>(data); };
    const auto answer = +[](UMockdevIoctlBase* base, UMockdevIoctlClient* client, gpointer data) {
        return ReportQueue::answerRead(base, client, static_cast<std::shared_ptr<ReportQueue>*>(data)->get());
    };
    g_signal_connect_data(m_handler, "handle-read", G_CALLBACK(answer),
                          new std::shared_ptr<ReportQueue>(m_reports), release, GConnectFlags{});
    if (!umockdev_testbed_attach_ioctl(testbed, nodeBytes.constData(), m_handler, &error)) {
        qCritical("The device node takes no ioctl handler: %s", error->message);
        g_clear_error(&error);
    }

    m_master = umockdev_testbed_get_dev_fd(testbed, nodeBytes.constData());
    // A copy in the program under test would keep the device alive after an unplug.
    fcntl(m_master, F_SETFD, FD_CLOEXEC);
    fcntl(m_master, F_SETFL, fcntl(m_master, F_GETFL) | O_NONBLOCK);
    char slaveName[64] = {};
    if (ptsname_r(m_master, slaveName, sizeof slaveName) != 0)
        qCritical("The device node has no other side: %s", strerror(errno));
    {
        const QMutexLocker lock(&m_reports->mutex);
        m_reports->master = m_master;
        m_reports->slaveName = slaveName;
    }
    m_notifier = std::make_unique<QSocketNotifier>(m_master, QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &MockInterface::readHost);
    m_notifier->setEnabled(false);
    connect(&m_openTimer, &QTimer::timeout, this, &MockInterface::checkOpen);
    m_openTimer.start(cOpenCheckMs);
}

MockInterface::~MockInterface()
{
    umockdev_testbed_uevent(m_testbed, m_rawPath.toUtf8().constData(), "remove");
    m_notifier.reset();
    {
        const QMutexLocker lock(&m_reports->mutex);
        m_reports->master = -1;
        m_reports->owedTokens = 0;
    }
    umockdev_testbed_detach_ioctl(m_testbed, m_nodeName.toLatin1().constData(), nullptr);
    g_clear_object(&m_handler);
    for (const QString& path : {m_rawPath, m_hidPath, m_interfacePath})
        umockdev_testbed_remove_device(m_testbed, path.toUtf8().constData());
    if (m_master >= 0)
        ::close(m_master);
}

void MockInterface::checkOpen()
{
    // The kernel reports a hang-up of the terminal while no program has the other side open.
    pollfd master{m_master, POLLIN, 0};
    const bool open = ::poll(&master, 1, 0) >= 0 && (master.revents & POLLHUP) == 0;
    // A program may have opened the node, written and closed it since the last look.
    if ((master.revents & POLLIN) != 0)
        readHost();
    if (open == m_isOpen)
        return;
    m_isOpen = open;
    // A terminal with a hang-up stays readable.
    m_notifier->setEnabled(open);
    if (open)
        discardUnread();
    else
        m_received.clear();
    if (open)
        Q_EMIT opened();
    else
        Q_EMIT closed();
}

void MockInterface::announce()
{
    umockdev_testbed_uevent(m_testbed, m_rawPath.toUtf8().constData(), "add");
}

void MockInterface::setPermission(bool granted)
{
    const QMutexLocker lock(&m_reports->mutex);
    ::chmod(m_reports->slaveName.constData(), granted ? cNodeGranted : cNodeDenied);
}

void MockInterface::send(const QByteArray& report)
{
    const QMutexLocker lock(&m_reports->mutex);
    m_reports->reports.push_back(report);
    ++m_reports->owedTokens;
    m_reports->payTokens();
}

int MockInterface::unreadReports() const
{
    const QMutexLocker lock(&m_reports->mutex);
    return static_cast<int>(m_reports->reports.size());
}

void MockInterface::discardUnread()
{
    const QMutexLocker lock(&m_reports->mutex);
    m_reports->reports.clear();
    m_reports->owedTokens = 0;
    const int slave = m_reports->openSlave();
    tcflush(slave, TCIFLUSH);
    ::close(slave);
}

void MockInterface::readHost()
{
    char buffer[4096];
    const ssize_t size = ::read(m_master, buffer, sizeof buffer);
    if (size <= 0)
        return;
    m_received.append(buffer, static_cast<int>(size));
    while (m_received.size() >= cHostReportSize) {
        const QByteArray report = m_received.mid(1, protocol::cPacketSize);
        m_received.remove(0, cHostReportSize);
        Q_EMIT reportReceived(report);
    }
}
