// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "cli/ExitCode.h"
#include "instrument/InstrumentSupervisor.h"

#include <QByteArray>

namespace cli {

/// The instrument as a command uses it. Lives on the main thread.
class InstrumentSession
{
public:
    InstrumentSession();

    /**
     * Opens the instrument and keeps it open from then on, over unplugging and plugging in. With \a wait, it
     * is no failure when there is none yet. Returns Success, or the exit code of a failure that was reported.
     */
    int open(bool wait);

    /// Opens the instrument, sends \a packets in order and closes it. Returns an exit code.
    int send(const std::vector<QByteArray>& packets);

    InstrumentPort& port() { return m_supervisor.port(); }

private:
    InstrumentSupervisor m_supervisor;
};

} // namespace cli
