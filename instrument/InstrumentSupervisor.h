// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "instrument/InstrumentDiscovery.h"
#include "instrument/InstrumentPort.h"

#include <QObject>
#include <QTimer>

#include <chrono>
#include <functional>

/**
 * Keeps the instrument open: looks for it, opens it, opens it again when it stays silent and looks for it
 * again when it was closed or lost. Lives on one thread with an event loop, as its port does.
 */
class InstrumentSupervisor : public QObject
{
    Q_OBJECT

public:
    /// The supervision starts this long after start(), the first attempt to open a device comes after that.
    static constexpr std::chrono::milliseconds cStartDelay{1500};
    static constexpr std::chrono::milliseconds cFirstOpenDelay{300};
    /// Time between two looks at the port.
    static constexpr std::chrono::milliseconds cPollInterval{500};
    /// Time between two attempts to open a device while none is open.
    static constexpr std::chrono::milliseconds cAttemptInterval{2500};
    /// A device that sends nothing for longer than this after it was opened is opened again.
    static constexpr std::chrono::milliseconds cSilenceBeforeReopening{10000};

    using Log = std::function<void(const QString& line)>;
    using Clock = std::function<std::chrono::steady_clock::time_point()>;

    /// \a log takes the lines of discovery, port and supervision; \a clock is replaced by tests.
    explicit InstrumentSupervisor(Log log = {}, Clock clock = &std::chrono::steady_clock::now);

    /// Starts the supervision after cStartDelay. Only the first attempt to open a device reports its failure.
    void start();

    /// Opens the instrument unless it is open. Returns true when it is open afterwards. When no device could
    /// be opened, emits openFailed() if \a reportFailure is true.
    bool tryOpenDevice(bool reportFailure);

    InstrumentDiscovery& discovery() { return m_discovery; }
    InstrumentPort& port() { return m_port; }
    const InstrumentPort& port() const { return m_port; }

public Q_SLOTS:
    /// Looks at the port once; called every cPollInterval.
    void poll();

Q_SIGNALS:
    /// No device could be opened; \a message is an English text for the user.
    void openFailed(const QString& message);

private:
    const Log m_log;
    const Clock m_clock;
    // The port goes before the discovery, which ends hidapi.
    InstrumentDiscovery m_discovery;
    InstrumentPort m_port;
    QTimer m_pollTimer;
    /// Looks at the port since the last attempt, while no device is open.
    int m_pollsWithoutDevice = 0;
    std::chrono::steady_clock::time_point m_openedAt;
    bool m_packetSinceOpen = false;
};
