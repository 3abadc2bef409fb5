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
 * A terminal carries a stream of bytes; a device carries reports. One byte per report makes the terminal
 * readable, and the report itself answers the read of the program. A read of a node that is not readable
 * returns EAGAIN. Programs poll first, as hidapi does with a time-out.
 */
class MockInterface : public QObject
{
    Q_OBJECT

public:
    /**
     * Adds interface \a number (from 0) under \a usbPath with the node /dev/hidraw\a node.
     *
     * \a failingWrites is the number of host writes that fail; umockdev's worker thread decreases it.
     */
    MockInterface(UMockdevTestbed* testbed, const QString& usbPath, int number, int node,
                  std::atomic_int* failingWrites);
    /// Removes the interface. Reads then fail.
    ~MockInterface() override;

    /// Sends the udev event for the new interface. The node exists since construction.
    void announce();

    QString nodeName() const { return m_nodeName; }
    /// Whether a program has the node open.
    bool isOpen() const { return m_isOpen; }
    void setPermission(bool granted);

    /// Queues a report of 1 to 64 bytes for the program to read; each read gets one.
    void send(const QByteArray& report);
    /// Number of reports that the program has not read.
    int unreadReports() const;
    /// Discards the reports that the program has not read.
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
