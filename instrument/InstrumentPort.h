// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "instrument/HidHandle.h"

#include <QByteArray>
#include <QMetaType>
#include <QObject>
#include <QString>

#include <atomic>
#include <chrono>
#include <deque>
#include <functional>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

/// One report that was read from the instrument.
struct InstrumentPacket
{
    QByteArray bytes; ///< 1 to 64 bytes
    std::chrono::steady_clock::time_point readAt;
};
Q_DECLARE_METATYPE(InstrumentPacket)

/**
 * The open instrument: its HID handle and the thread that reads it. A port can be opened again after it was
 * closed, so receivers stay connected.
 *
 * Lives on the thread that made it, which must run an event loop: packets are handed over there. All
 * functions are called and all signals are emitted on that thread; queued connections may lead to others. The
 * reader does nothing but read. Packets that follow each other closely, or that arrive while the thread is
 * busy, are handed over together, as one batch. A batch that takes too long is interrupted, so that the
 * thread can paint and take input, and continued from the event loop; no packet is lost or overtaken.
 *
 * Do not delete the port in a slot that is connected to it; close it.
 */
class InstrumentPort : public QObject
{
    Q_OBJECT

public:
    enum class State {
        Closed,
        Open,
        /// The reader has ended and the device is closed. The packets that it had read are handed over now.
        Closing,
        /// The device failed and was closed; failure() says why.
        Failed,
    };
    Q_ENUM(State)
    /// Takes a line for the log of the link.
    using Log = std::function<void(const QString& line)>;

    explicit InstrumentPort(Log log = {}, QObject* parent = nullptr);
    /// Stops the reader, waits for its read to end (25 ms at most) and closes the device. Emits nothing.
    ~InstrumentPort() override;

    /**
     * Reads \a device from now on. \a firstPacket, which was read while probing, is handed over before this
     * function returns; empty for none.
     *
     * Returns true when the port is open afterwards: a receiver may have closed it again. When the system
     * refuses a thread, \a device is closed and the port ends in the state Failed.
     */
    bool open(HidHandle device, const QByteArray& firstPacket = {});

    /**
     * Stops the reader, waits for its read to end (25 ms at most) and closes the device. Hands over what was
     * read before, in the state Closing, then emits stateChanged(). Returns false when there was nothing to
     * close.
     */
    bool close();

    /**
     * Sends \a packet as one report of 64 bytes: longer packets are cut, shorter ones filled with 0.
     *
     * Returns false when the port is not open, and after a failed write, which ends in the state Failed.
     */
    bool write(const QByteArray& packet);

    State state() const { return m_state; }
    bool isOpen() const { return m_state == State::Open; }
    /// English text of the last failure, "HID read failed. <reason>"; empty since the last successful open().
    QString failure() const { return m_failure; }
    /// Packets that were read and are not handed over yet: 0 or a few when the thread keeps up.
    size_t waitingPackets() const;
    /// In a slot of packetReceived(): true when packets of the same batch follow.
    bool moreFollow() const { return !m_arrived.empty(); }

Q_SIGNALS:
    void stateChanged(InstrumentPort::State state);
    /// Emitted once for each packet that was read, in order. In the state Closing, \a packet was read before
    /// the device was closed.
    void packetReceived(const InstrumentPacket& packet);
    /// Emitted after the last packetReceived() of a batch, and before the change of state that follows it.
    /// What is done once for many packets is done here: one write, one transaction, one update of what is
    /// shown.
    void batchEnded();

protected:
    bool event(QEvent* event) override;

private:
    /// How long one batch may keep the thread.
    enum class Limit { FairShare, None };

    void readLoop(hid_device* device);
    void leaveInInbox(InstrumentPacket packet);
    void leaveReadError(hid_device* device);
    void wakeOwner();
    void takeInbox();
    void handOver(Limit limit);
    void handOverReadError();
    void shutDown(State endState);
    void fail(const QString& reason);
    void stopReader();

    const Log m_log;
    State m_state = State::Closed;
    QString m_failure;
    HidHandle m_device;
    // Not QMutex: the thread sanitizer does not see what it does inside Qt.
    /// Guards hidapi's error text of the device, which a read and a write may both set.
    std::mutex m_errorTextMutex;
    std::thread m_reader;
    std::atomic_bool m_readerStops{false};
    /// Packets taken from the inbox and not yet handed over.
    std::deque<InstrumentPacket> m_arrived;
    std::chrono::steady_clock::time_point m_lastBatchEndedAt;
    /// Guards what the reader leaves for the owner: m_inbox, m_readError and m_ownerWoken.
    mutable std::mutex m_inboxMutex;
    std::vector<InstrumentPacket> m_inbox;
    /// The event that takes the inbox is under way.
    bool m_ownerWoken = false;
    /// Why the reader ended, unless it was stopped.
    std::optional<QString> m_readError;
};
