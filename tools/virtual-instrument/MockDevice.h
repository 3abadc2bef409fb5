// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <atomic>
#include <memory>
#include <vector>

class MockInterface;
using UMockdevTestbed = struct _UMockdevTestbed;

/**
 * The instrument on a mock USB bus: device nodes, plugging, unplugging, and reports in both directions. Lives
 * on the main thread of a process that runs under umockdev's wrapper.
 *
 * As with a kernel, reports are lost while no program has the node open and in the first 50 ms after an open.
 * Any other report is kept until the program has read it.
 */
class MockDevice : public QObject
{
    Q_OBJECT

public:
    explicit MockDevice(QObject* parent = nullptr);
    ~MockDevice() override;

    /// Whether the bus exists; false in a process that does not run under the wrapper.
    bool isValid() const { return m_testbed != nullptr; }

    /// Plugs the instrument in under an unused node name and sends the udev events.
    void plug();
    /// Unplugs the instrument. Reads of a program that has it open then fail.
    void unplug();
    bool isPlugged() const { return !m_interfaces.empty(); }

    /// Whether a mute interface precedes the live one; takes effect at the next plug().
    void setInterfaceCount(int count) { m_interfaceCount = count; }
    /// Whether programs may open the nodes (the administrator always may).
    void setPermission(bool granted);
    /// Makes the next \a count writes of the host fail.
    void failWrites(int count) { m_failingWrites = count; }

    /// Plugs the controller in boot mode (1f3a:efe8) in or out.
    void setBootControllerPlugged(bool plugged);

    /// Sends a report of 1 to 64 bytes.
    void send(const QByteArray& report);

    /// Whether a program has the live interface open.
    bool isOpen() const;
    /// Whether the program has read all reports.
    bool isDrained() const;
    /// Number of unread reports, and its maximum so far.
    int backlog() const;
    int worstBacklog() const { return m_worstBacklog; }
    quint64 sentReports() const { return m_sentReports; }

    /// The device node that a program would open; empty while unplugged.
    QString nodeName() const;

Q_SIGNALS:
    void plugged(const QString& nodeName);
    void unplugged();
    void opened();
    void closed();
    /// A report of the host without its report id, usually 64 bytes.
    void reportReceived(const QByteArray& report);
    /// Emitted when all reports were read or no program can read them.
    void drained();

private:
    void onOpened();
    void checkDrained();

    UMockdevTestbed* m_testbed = nullptr;
    /// Ordered by number; the last one is live.
    std::vector<std::unique_ptr<MockInterface>> m_interfaces;
    int m_interfaceCount = 1;
    int m_nextNode = 0;
    bool m_permissionGranted = true;
    bool m_bootControllerPlugged = false;
    /// Decreased by umockdev's worker thread.
    std::atomic_int m_failingWrites{0};

    /// Runs while the program has reports to read.
    QTimer m_drainTimer;
    QElapsedTimer m_sinceOpen;
    int m_worstBacklog = 0;
    quint64 m_sentReports = 0;
};
