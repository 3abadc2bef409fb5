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
 * The instrument's place on a mock USB bus: its device nodes, plugging and unplugging, and the reports in
 * both directions. Lives on the main thread; needs a process that runs under umockdev's wrapper.
 *
 * As with a kernel, reports that nobody reads are lost: those sent while no program has the node open, and
 * those of the first 50 ms after an open. Any other report is kept until the program has read it.
 */
class MockDevice : public QObject
{
    Q_OBJECT

public:
    explicit MockDevice(QObject* parent = nullptr);
    ~MockDevice() override;

    /// Whether the bus could be made; false when the process does not run under the wrapper.
    bool isValid() const { return m_testbed != nullptr; }

    /// Puts the instrument on the bus under a node name not used before and tells udev's listeners.
    void plug();
    /// Takes it off the bus; reads of a program that has it open fail from now on.
    void unplug();
    bool isPlugged() const { return !m_interfaces.empty(); }

    /// One interface, or a mute one in front of the live one; from the next plug().
    void setInterfaceCount(int count) { m_interfaceCount = count; }
    /// Whether programs may open the nodes (the administrator always may).
    void setPermission(bool granted);
    /// Lets the host's next \a count writes fail.
    void failWrites(int count) { m_failingWrites = count; }

    /// Puts the controller in its boot mode (1f3a:efe8) on the bus, or takes it off.
    void setBootControllerPlugged(bool plugged);

    /// Sends one report of 1 to 64 bytes.
    void send(const QByteArray& report);

    /// Whether a program has the live interface open.
    bool isOpen() const;
    /// Whether every report sent was read.
    bool isDrained() const;
    /// Reports that the program has not read yet, and the most that there ever were.
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
    /// A report of the host without its leading report id, usually 64 bytes.
    void reportReceived(const QByteArray& report);
    /// Every report sent was read, or nobody is there to read.
    void drained();

private:
    void onOpened();
    void checkDrained();

    UMockdevTestbed* m_testbed = nullptr;
    /// In the order of their numbers; the last one is live.
    std::vector<std::unique_ptr<MockInterface>> m_interfaces;
    int m_interfaceCount = 1;
    int m_nextNode = 0;
    bool m_permissionGranted = true;
    bool m_bootControllerPlugged = false;
    /// Taken by umockdev's worker thread.
    std::atomic_int m_failingWrites{0};

    /// Runs while the program has reports to read.
    QTimer m_drainTimer;
    QElapsedTimer m_sinceOpen;
    int m_worstBacklog = 0;
    quint64 m_sentReports = 0;
};
