// SPDX-License-Identifier: GPL-3.0-or-later
#include "instrument/InstrumentPort.h"

#include "instrument/PacketCodec.h"

#include <QCoreApplication>
#include <QEvent>

#include <algorithm>
#include <array>
#include <iterator>
#include <system_error>

namespace {

/// A read returns after this time without a report, so that the reader sees a request to stop.
constexpr int cReadTimeoutMs = 25;
/// The report id that hidapi expects in front; 0 because the instrument's reports are not numbered.
constexpr size_t cReportIdSize = 1;
/// Sent by the reader: the inbox holds something.
constexpr QEvent::Type cInboxEvent = QEvent::User;

} // namespace

InstrumentPort::InstrumentPort(Log log, QObject* parent) : QObject(parent), m_log(std::move(log))
{
    // For queued connections.
    qRegisterMetaType<InstrumentPort::State>();
    qRegisterMetaType<InstrumentPacket>();
}

InstrumentPort::~InstrumentPort()
{
    stopReader();
}

bool InstrumentPort::open(HidHandle device, const QByteArray& firstPacket)
{
    if (!device || m_state == State::Open || m_state == State::Closing)
        return false;
    // Before the reader reads anything, so that the times are in order too.
    const InstrumentPacket first{firstPacket, std::chrono::steady_clock::now()};
    try {
        m_readerStops = false;
        m_reader = std::thread(&InstrumentPort::readLoop, this, device.get());
    } catch (const std::system_error& error) {
        device.reset();
        fail(QStringLiteral("HID read failed. %1").arg(QString::fromLocal8Bit(error.what())));
        return false;
    }
    m_device = std::move(device);
    m_failure.clear();
    // The reader's packets wait in the inbox, so this one comes first.
    if (!firstPacket.isEmpty())
        m_arrived.push_back(first);
    m_state = State::Open;
    Q_EMIT stateChanged(m_state);
    handOver();
    return isOpen();
}

bool InstrumentPort::close()
{
    if (m_state == State::Closed || m_state == State::Closing)
        return false;
    shutDown(State::Closed);
    return true;
}

bool InstrumentPort::write(const QByteArray& packet)
{
    if (!isOpen())
        return false;
    std::array<unsigned char, cReportIdSize + protocol::cPacketSize> report{};
    std::copy_n(packet.cbegin(), std::min(packet.size(), protocol::cPacketSize),
                report.begin() + cReportIdSize);
    int written = 0;
    {
        const std::lock_guard lock(m_errorTextMutex);
        written = hid_write(m_device.get(), report.data(), report.size());
    }
    if (written < 0)
        fail(QStringLiteral("HID write failed."));
    return written >= 0;
}

bool InstrumentPort::event(QEvent* event)
{
    if (event->type() != cInboxEvent)
        return QObject::event(event);
    takeInbox();
    handOver();
    handOverReadError();
    return true;
}

void InstrumentPort::takeInbox()
{
    const std::lock_guard lock(m_inboxMutex);
    std::move(m_inbox.begin(), m_inbox.end(), std::back_inserter(m_arrived));
    m_inbox.clear();
}

void InstrumentPort::handOver()
{
    // A receiver may close the port, which hands over the rest, and may open it again.
    while (!m_arrived.empty()) {
        const InstrumentPacket packet = std::move(m_arrived.front());
        m_arrived.pop_front();
        Q_EMIT packetReceived(packet);
    }
}

void InstrumentPort::handOverReadError()
{
    std::optional<QString> error;
    {
        const std::lock_guard lock(m_inboxMutex);
        // What was read before the error comes first; the event for it is under way.
        if (m_inbox.empty())
            error.swap(m_readError);
    }
    if (!error)
        return;
    const QString reason = QStringLiteral("HID read failed. %1").arg(*error);
    if (m_log)
        m_log(QStringLiteral("Read thread error: %1").arg(reason));
    fail(reason);
}

void InstrumentPort::fail(const QString& reason)
{
    m_failure = reason;
    shutDown(State::Failed);
}

void InstrumentPort::shutDown(State endState)
{
    stopReader();
    m_device.reset();
    m_state = State::Closing;
    takeInbox();
    m_readError.reset();
    handOver();
    m_state = endState;
    Q_EMIT stateChanged(m_state);
}

void InstrumentPort::stopReader()
{
    m_readerStops = true;
    if (m_reader.joinable())
        m_reader.join();
}

/// Runs on the reader thread. \a device stays open until this thread has been joined.
void InstrumentPort::readLoop(hid_device* device)
{
    std::array<unsigned char, protocol::cPacketSize> buffer{};
    while (!m_readerStops) {
        const int length = hid_read_timeout(device, buffer.data(), buffer.size(), cReadTimeoutMs);
        if (length == 0)
            continue;
        if (length < 0)
            return leaveReadError(device);
        InstrumentPacket packet{
            QByteArray(reinterpret_cast<const char*>(buffer.data()), std::min(length, protocol::cPacketSize)),
            std::chrono::steady_clock::now()};
        bool first = false;
        {
            const std::lock_guard lock(m_inboxMutex);
            m_inbox.push_back(std::move(packet));
            first = m_inbox.size() == 1;
        }
        // One event for all that waits.
        if (first)
            wakeOwner();
    }
}

/// Runs on the reader thread, which ends then.
void InstrumentPort::leaveReadError(hid_device* device)
{
    QString reason;
    {
        const std::lock_guard lock(m_errorTextMutex);
        const wchar_t* const text = hid_error(device);
        if (text != nullptr)
            reason = QString::fromWCharArray(text);
    }
    {
        const std::lock_guard lock(m_inboxMutex);
        m_readError = reason;
    }
    wakeOwner();
}

void InstrumentPort::wakeOwner()
{
    QCoreApplication::postEvent(this, new QEvent(cInboxEvent));
}
