// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>
#include <QTimer>

#include <atomic>
#include <memory>

class QSocketNotifier;
using UMockdevTestbed = struct _UMockdevTestbed;
using UMockdevIoctlBase = struct _UMockdevIoctlBase;

/**
 * One HID interface of the mock instrument: its sysfs chain below the USB device, its device node, and the
 * two ends of the pseudo terminal that stands for it. Lives on the main thread.
 *
 * A terminal is a stream of bytes, a device a row of reports. So the terminal carries one byte per report,
 * which makes the node readable, and the report itself answers the program's read. A read before the node is
 * readable finds nothing (EAGAIN); programs poll first, as hidapi does with a time-out.
 */
class MockInterface : public QObject
{
    Q_OBJECT

public:
    /**
     * Adds interface \a number (from 0) under \a usbPath with the node /dev/hidraw\a node.
     *
     * \a failingWrites counts the host's writes that are to fail; umockdev's worker thread takes from it.
     */
    MockInterface(UMockdevTestbed* testbed, const QString& usbPath, int number, int node,
                  std::atomic_int* failingWrites);
    /// Removes the interface: readers fail from now on.
    ~MockInterface() override;

    /// Tells udev's listeners that the interface is there. The node exists from the construction on.
    void announce();

    QString nodeName() const { return m_nodeName; }
    /// Whether a program has the node open.
    bool isOpen() const { return m_isOpen; }
    void setPermission(bool granted);

    /// Queues a report of 1 to 64 bytes for the program to read; each read gets one.
    void send(const QByteArray& report);
    /// Reports that the program has not read yet.
    int unreadReports() const;
    /// Throws away what the program has not read yet.
    void discardUnread();

Q_SIGNALS:
    void opened();
    void closed();
    void reportReceived(const QByteArray& report);

private:
    struct ReportQueue;

    void checkOpen();
    void readHost();

    UMockdevTestbed* m_testbed;
    std::atomic_int* m_failingWrites;
    UMockdevIoctlBase* m_handler = nullptr;
    std::shared_ptr<ReportQueue> m_reports;
    QString m_interfacePath;
    QString m_hidPath;
    QString m_rawPath;
    QString m_nodeName;
    int m_master = -1;
    bool m_isOpen = false;
    QTimer m_openTimer;
    QByteArray m_received;
    std::unique_ptr<QSocketNotifier> m_notifier;
};
