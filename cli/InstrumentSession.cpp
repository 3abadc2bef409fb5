// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/InstrumentSession.h"

#include "cli/Console.h"

#include <algorithm>

namespace cli {

InstrumentSession::InstrumentSession() = default;

int InstrumentSession::open(bool wait)
{
    const std::vector<InstrumentDiscovery::Candidate> candidates = m_supervisor.discovery().candidates();
    const auto refused = std::find_if(candidates.cbegin(), candidates.cend(), [](const auto& candidate) {
        return !candidate.accessAdvice.isEmpty();
    });
    const bool allowed = candidates.empty() ||
                         std::any_of(candidates.cbegin(), candidates.cend(),
                                     [](const auto& candidate) { return candidate.accessAdvice.isEmpty(); });
    if (!allowed)
        return console::fail(Refused, refused->accessAdvice);
    const bool opened = m_supervisor.tryOpenDevice(false);
    if (!opened && !wait)
        return console::fail(
            NoInstrument,
            candidates.empty()
                ? QStringLiteral("no instrument is connected; --wait waits for one where it is offered")
                : QStringLiteral("the instrument could not be opened; plug it in again"));
    m_supervisor.start();
    return Success;
}

int InstrumentSession::send(const std::vector<QByteArray>& packets)
{
    const int code = open(false);
    if (code != Success)
        return code;
    const bool sent = std::all_of(packets.cbegin(), packets.cend(),
                                  [this](const QByteArray& packet) { return port().write(packet); });
    const QString failure = port().failure();
    port().close();
    return sent ? Success : console::fail(NoInstrument, failure);
}

} // namespace cli
