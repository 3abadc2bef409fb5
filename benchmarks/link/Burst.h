// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <vector>

namespace bench {

/// The virtual instrument stamps the packets of a burst with the monotonic clock, modulo a minute.
constexpr double cStampPeriodSec = 60;

[[noreturn]] inline void fail(const char* reason)
{
    std::fprintf(stderr, "%s\n", reason);
    std::exit(1);
}

/// The value below which \a share (0 to 1) of \a values lie.
inline double quantile(std::vector<double> values, double share)
{
    const auto at = values.begin() + std::ptrdiff_t(share * double(values.size() - 1));
    std::nth_element(values.begin(), at, values.end());
    return *at;
}

inline double nowSec()
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

/// How long ago a packet with this stamp was sent, in milliseconds.
inline double ageMs(float stampSec)
{
    return std::fmod(nowSec() - static_cast<double>(stampSec), cStampPeriodSec) * 1e3;
}

} // namespace bench

/// The virtual instrument's command socket.
class BurstControl
{
public:
    BurstControl() : m_socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0))
    {
        const QByteArray path = qgetenv("VIRTUAL_INSTRUMENT_CONTROL");
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        if (path.isEmpty() || static_cast<size_t>(path.size()) >= sizeof address.sun_path)
            bench::fail("run it as: virtual-instrument --control auto -- PROGRAM");
        std::memcpy(address.sun_path, path.constData(), static_cast<size_t>(path.size()));
        if (::connect(m_socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0)
            bench::fail("the virtual instrument does not answer");
    }
    ~BurstControl() { ::close(m_socket); }
    Q_DISABLE_COPY(BurstControl)

    /// Has \a packets numbered measurements sent at \a perSec, and none besides. The number is in typeCMah,
    /// the time of sending in typeCTimeSec.
    void startBurst(int packets, int perSec) const
    {
        command("rate 0");
        command("burst " + QByteArray::number(packets) + ' ' + QByteArray::number(perSec));
    }

private:
    /// Sends a command and waits for its answer.
    void command(const QByteArray& text) const
    {
        const QByteArray line = text + '\n';
        if (::write(m_socket, line.constData(), static_cast<size_t>(line.size())) != line.size())
            bench::fail("the virtual instrument takes no command");
        QByteArray answer;
        char byte = 0;
        while (::read(m_socket, &byte, 1) == 1 && byte != '\n')
            answer += byte;
        if (!answer.startsWith("ok"))
            bench::fail(answer.constData());
    }

    const int m_socket;
};
