// SPDX-License-Identifier: GPL-3.0-or-later
#include "instrument/InstrumentPort.h"

#include "instrument/PacketCodec.h"

#include <QCoreApplication>
#include <QEvent>

#include <algorithm>
#include <array>
#include <iterator>
#include <system_error>
#include <utility>

namespace {

/// A read returns after this time without a report, so that the reader sees a request to stop.
constexpr std::chrono::milliseconds cReadTimeout{25};
/// The owner is woken at most once in this time: at 1,000 reports a second, a wake for each one costs more
/// than the report. A report that comes after a longer silence is announced at once.
constexpr std::chrono::milliseconds cWakeInterval{3};
/// A batch may keep the thread for as long as the thread had for everything else since the last batch, within
/// these limits. Where painting is slow, a fixed time would leave the packets too small a share, and they
/// would fall behind without end.
constexpr std::chrono::milliseconds cShortestTurn{8};
constexpr std::chrono::milliseconds cLongestTurn{100};
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
    handOver(Limit::None);
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

size_t InstrumentPort::waitingPackets() const
{
    const std::lock_guard lock(m_inboxMutex);
    return m_arrived.size() + m_inbox.size();
}

bool InstrumentPort::event(QEvent* event)
{
    if (event->type() != cInboxEvent)
        return QObject::event(event);
    takeInbox();
    handOver(Limit::FairShare);
    handOverReadError();
    return true;
}

void InstrumentPort::takeInbox()
{
    const std::lock_guard lock(m_inboxMutex);
    std::move(m_inbox.begin(), m_inbox.end(), std::back_inserter(m_arrived));
    m_inbox.clear();
    m_ownerWoken = false;
}

void InstrumentPort::handOver(Limit limit)
{
    if (m_arrived.empty())
        return;
    const auto start = std::chrono::steady_clock::now();
    const auto turn = std::clamp<std::chrono::steady_clock::duration>(start - m_lastBatchEndedAt,
                                                                      cShortestTurn, cLongestTurn);
    auto now = start;
    // A receiver may close the port, which hands over the rest, and may open it again.
    while (!m_arrived.empty()) {
        if (limit == Limit::FairShare && now - start > turn) {
            // Events that are posted now come after painting and input.
            wakeOwner();
            break;
        }
        const InstrumentPacket packet = std::move(m_arrived.front());
        m_arrived.pop_front();
        Q_EMIT packetReceived(packet);
        now = std::chrono::steady_clock::now();
    }
    m_lastBatchEndedAt = now;
    Q_EMIT batchEnded();
}

void InstrumentPort::handOverReadError()
{
    std::optional<QString> error;
    {
        const std::lock_guard lock(m_inboxMutex);
        // What was read before the error comes first; the event for it is under way.
        if (m_inbox.empty() && m_arrived.empty())
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
    handOver(Limit::None);
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
    using std::chrono::milliseconds;
    std::array<unsigned char, protocol::cPacketSize> buffer{};
    std::chrono::steady_clock::time_point wokenAt{};
    bool unannounced = false;
    while (!m_readerStops) {
        const milliseconds timeout = unannounced ? cWakeInterval : cReadTimeout;
        const int length = hid_read_timeout(device, buffer.data(), buffer.size(), int(timeout.count()));
        if (length < 0)
            return leaveReadError(device);
        const auto now = std::chrono::steady_clock::now();
        if (length > 0) {
            leaveInInbox({QByteArray(reinterpret_cast<const char*>(buffer.data()),
                                     std::min(length, protocol::cPacketSize)),
                          now});
            unannounced = true;
        }
        if (unannounced && (length == 0 || now - wokenAt >= cWakeInterval)) {
            unannounced = false;
            wokenAt = now;
            wakeOwner();
        }
    }
}

void InstrumentPort::leaveInInbox(InstrumentPacket packet)
{
    const std::lock_guard lock(m_inboxMutex);
    m_inbox.push_back(std::move(packet));
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

/// Has what waits handed over by an event; one event for all of it.
void InstrumentPort::wakeOwner()
{
    {
        const std::lock_guard lock(m_inboxMutex);
        if (std::exchange(m_ownerWoken, true))
            return;
    }
    QCoreApplication::postEvent(this, new QEvent(cInboxEvent));
}
