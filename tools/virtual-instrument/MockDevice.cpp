// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/virtual-instrument/MockDevice.h"

#include "tools/virtual-instrument/MockInterface.h"

#include <umockdev.h>

#include <QtDebug>

namespace {

/// Time after an open during which a kernel discards reports.
constexpr int cOpenGapMs = 50;
constexpr int cDrainIntervalMs = 5;

const QString& usbPath()
{
    static const QString path = QStringLiteral("/devices/pci0000:00/0000:00:14.0/usb1/1-1");
    return path;
}

const QString& bootControllerPath()
{
    static const QString path = QStringLiteral("/devices/pci0000:00/0000:00:14.0/usb1/1-2");
    return path;
}

void addUsbDevice(UMockdevTestbed* testbed, const QString& path, const QString& vendor,
                  const QString& product, const QString& name, int number)
{
    const QString description = QStringLiteral("P: %1\nE: SUBSYSTEM=usb\nE: DEVTYPE=usb_device\n"
                                               "E: PRODUCT=%2/%3/200\nE: BUSNUM=001\nE: DEVNUM=%4\n"
                                               "A: busnum=1\\n\nA: devnum=%5\\n\n"
                                               "A: idVendor=%2\\n\nA: idProduct=%3\\n\nA: bcdDevice=0200\\n\n"
                                               "A: manufacturer=Quorvel\\n\nA: product=%6\\n\n"
                                               "A: serial=VIRTUAL1\\n\n\n")
                                    .arg(path, vendor, product)
                                    .arg(number, 3, 10, QLatin1Char('0'))
                                    .arg(number)
                                    .arg(name);
    GError* error = nullptr;
    if (!umockdev_testbed_add_from_string(testbed, description.toUtf8().constData(), &error)) {
        qCritical("The USB device description was refused: %s", error->message);
        g_clear_error(&error);
        return;
    }
    umockdev_testbed_uevent(testbed, (QStringLiteral("/sys") + path).toUtf8().constData(), "add");
}

void removeUsbDevice(UMockdevTestbed* testbed, const QString& path)
{
    const QByteArray sysPath = (QStringLiteral("/sys") + path).toUtf8();
    umockdev_testbed_uevent(testbed, sysPath.constData(), "remove");
    umockdev_testbed_remove_device(testbed, sysPath.constData());
}

} // namespace

MockDevice::MockDevice(QObject* parent) : QObject(parent)
{
    m_testbed = umockdev_testbed_new();
    // The answer is valid only after the test bed exists.
    if (umockdev_in_mock_environment() == FALSE) {
        g_clear_object(&m_testbed);
        return;
    }
    m_drainTimer.setInterval(cDrainIntervalMs);
    connect(&m_drainTimer, &QTimer::timeout, this, &MockDevice::checkDrained);
}

MockDevice::~MockDevice()
{
    if (!isValid())
        return;
    m_interfaces.clear();
    g_object_unref(m_testbed);
}

void MockDevice::plug()
{
    if (isPlugged())
        return;
    addUsbDevice(m_testbed, usbPath(), QStringLiteral("0483"), QStringLiteral("5750"),
                 QStringLiteral("Virtual instrument"), m_nextNode + 2);
    for (int number = 0; number < m_interfaceCount; ++number) {
        m_interfaces.push_back(
            std::make_unique<MockInterface>(m_testbed, usbPath(), number, m_nextNode++, &m_failingWrites));
        connect(m_interfaces.back().get(), &MockInterface::reportReceived, this, &MockDevice::reportReceived);
    }
    connect(m_interfaces.back().get(), &MockInterface::opened, this, &MockDevice::onOpened);
    connect(m_interfaces.back().get(), &MockInterface::closed, this, &MockDevice::closed);
    setPermission(m_permissionGranted);
    for (const auto& interface : m_interfaces)
        interface->announce();
    Q_EMIT plugged(nodeName());
}

void MockDevice::unplug()
{
    if (!isPlugged())
        return;
    m_drainTimer.stop();
    m_interfaces.clear();
    removeUsbDevice(m_testbed, usbPath());
    Q_EMIT unplugged();
    Q_EMIT drained();
}

void MockDevice::setPermission(bool granted)
{
    m_permissionGranted = granted;
    for (const auto& interface : m_interfaces)
        interface->setPermission(granted);
}

void MockDevice::setBootControllerPlugged(bool plugged)
{
    if (plugged == m_bootControllerPlugged)
        return;
    m_bootControllerPlugged = plugged;
    if (plugged)
        addUsbDevice(m_testbed, bootControllerPath(), QStringLiteral("1f3a"), QStringLiteral("efe8"),
                     QStringLiteral("Boot mode"), 1);
    else
        removeUsbDevice(m_testbed, bootControllerPath());
}

bool MockDevice::isOpen() const
{
    return isPlugged() && m_interfaces.back()->isOpen();
}

bool MockDevice::isDrained() const
{
    return !isOpen() || backlog() == 0;
}

QString MockDevice::nodeName() const
{
    return isPlugged() ? m_interfaces.back()->nodeName() : QString();
}

void MockDevice::onOpened()
{
    m_sinceOpen.start();
    Q_EMIT opened();
}

int MockDevice::backlog() const
{
    return isPlugged() ? m_interfaces.back()->unreadReports() : 0;
}

void MockDevice::send(const QByteArray& report)
{
    if (!isOpen() || !m_sinceOpen.hasExpired(cOpenGapMs))
        return;
    m_interfaces.back()->send(report);
    ++m_sentReports;
    m_worstBacklog = std::max(m_worstBacklog, backlog());
    if (!m_drainTimer.isActive())
        m_drainTimer.start();
}

void MockDevice::checkDrained()
{
    if (!isDrained())
        return;
    m_drainTimer.stop();
    Q_EMIT drained();
}
