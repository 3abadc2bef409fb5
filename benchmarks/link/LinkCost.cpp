// SPDX-License-Identifier: GPL-3.0-or-later
// Processor time of the link at 1,000 packets per second through the real hidapi, against a bare read loop,
// and the time of a packet from the instrument to measurementChanged.
//
// Run it on the virtual instrument: virtual-instrument --control auto -- link_cost
#include "benchmarks/link/BareLink.h"
#include "benchmarks/services/Measure.h"

#include <hidapi.h>

#include <QCoreApplication>
#include <QEventLoop>
#include <QFile>
#include <QTimer>

#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

constexpr int cRuns = 7;
constexpr int cPackets = 5000;
constexpr int cPacketsPerSec = 1000;
constexpr int cReadTimeoutMs = 25;
constexpr int cGiveUpMs = 60'000;
constexpr int cAimMissed = 2;
constexpr double cCostAim = 2;
constexpr double cLatencyAimMs = 5;
/// The virtual instrument stamps the packets of a burst with the monotonic clock, modulo a minute.
constexpr double cStampPeriodSec = 60;

[[noreturn]] void fail(const char* reason)
{
    std::fprintf(stderr, "link_cost: %s\n", reason);
    std::exit(1);
}

/// Returns the value below which \a share (0 to 1) of \a values are.
double quantile(std::vector<double> values, double share)
{
    const auto at = values.begin() + std::ptrdiff_t(share * double(values.size() - 1));
    std::nth_element(values.begin(), at, values.end());
    return *at;
}

double nowSec()
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

/// Returns the processor time of this process in seconds: all threads, user and system.
double cpuSec()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    const auto seconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
    };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

/// The virtual instrument's command socket.
class Control
{
public:
    Control() : m_socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0))
    {
        const QByteArray path = qgetenv("VIRTUAL_INSTRUMENT_CONTROL");
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        if (path.isEmpty() || static_cast<size_t>(path.size()) >= sizeof address.sun_path)
            fail("run it as: virtual-instrument --control auto -- link_cost");
        std::memcpy(address.sun_path, path.constData(), static_cast<size_t>(path.size()));
        if (::connect(m_socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0)
            fail("the virtual instrument does not answer");
    }
    ~Control() { ::close(m_socket); }
    Q_DISABLE_COPY(Control)

    /// Makes the instrument send cPackets numbered measurements at cPacketsPerSec, and no other packets.
    void startBurst() const
    {
        command("rate 0");
        command("burst " + QByteArray::number(cPackets) + ' ' + QByteArray::number(cPacketsPerSec));
    }

private:
    /// Sends a command and waits for its answer.
    void command(const QByteArray& text) const
    {
        const QByteArray line = text + '\n';
        if (::write(m_socket, line.constData(), static_cast<size_t>(line.size())) != line.size())
            fail("the virtual instrument takes no command");
        QByteArray answer;
        char byte = 0;
        while (::read(m_socket, &byte, 1) == 1 && byte != '\n')
            answer += byte;
        if (!answer.startsWith("ok"))
            fail(answer.constData());
    }

    const int m_socket;
};

/// Measures the processor time between the first and the last packet of a burst.
class Burst
{
public:
    /// Counts the packet of a burst with the given number, starting with 1. Returns true for the last one.
    bool take(float number)
    {
        // Earlier packets of the instrument may still arrive.
        if (m_received == 0 && number != 1.0F)
            return false;
        if (number != static_cast<float>(++m_received))
            fail(qPrintable(
                QStringLiteral("packet %1 came as number %2").arg(m_received).arg(double(number))));
        if (m_received == 1)
            m_cpuAtFirstSec = cpuSec();
        if (m_received != cPackets)
            return false;
        m_costSec = cpuSec() - m_cpuAtFirstSec;
        return true;
    }
    bool started() const { return m_received > 0; }
    double microsecondsPerPacket() const { return m_costSec / (cPackets - 1) * 1e6; }

private:
    int m_received = 0;
    double m_cpuAtFirstSec = 0;
    double m_costSec = 0;
};

/// Returns the time since a packet with this stamp was sent, in milliseconds.
double ageMs(float stampSec)
{
    return std::fmod(nowSec() - static_cast<double>(stampSec), cStampPeriodSec) * 1e3;
}

/// Runs a loop that only reads, and returns its microseconds of processor time per packet. \a latenciesMs
/// gets the times from sending to the end of the read.
double costOfBareLoop(const Control& control, std::vector<double>& latenciesMs)
{
    hid_device_info* const list =
        hid_enumerate(InstrumentDiscovery::cVendorId, InstrumentDiscovery::cProductId);
    hid_device* const device = list != nullptr ? hid_open_path(list->path) : nullptr;
    hid_free_enumeration(list);
    if (device == nullptr)
        fail("no instrument to open");
    Burst burst;
    unsigned char buffer[protocol::cPacketSize];
    const double giveUpSec = nowSec() + cGiveUpMs / 1e3;
    bool asked = false;
    for (bool done = false; !done;) {
        const int length = hid_read_timeout(device, buffer, sizeof buffer, cReadTimeoutMs);
        if (length < 0)
            fail("the bare loop cannot read");
        if (length == 0) {
            if (nowSec() > giveUpSec)
                fail("the burst does not arrive");
            continue;
        }
        // The instrument speaks once it has seen that it was opened, and discards what it had said before.
        if (!asked) {
            asked = true;
            control.startBurst();
        }
        if (buffer[1] != static_cast<unsigned char>(protocol::Type::Measurement))
            continue;
        // The last two floats, typeCMah and typeCTimeSec: the number and the stamp.
        float number = 0;
        float stampSec = 0;
        std::memcpy(&number, buffer + 51, sizeof number);
        std::memcpy(&stampSec, buffer + 55, sizeof stampSec);
        done = burst.take(number);
        if (burst.started())
            latenciesMs.push_back(ageMs(stampSec));
    }
    hid_close(device);
    return burst.microsecondsPerPacket();
}

/// Measures the same through the link. \a latenciesMs gets the times from sending to measurementChanged.
double costOfLink(const Control& control, std::vector<double>& latenciesMs)
{
    const BareLink link;
    Burst burst;
    QEventLoop loop;
    QObject::connect(&*link, &HidLink::measurementChanged, &loop, [&] {
        const double age = ageMs(link->typeCTimeSec());
        if (burst.take(link->typeCMah()))
            loop.quit();
        if (burst.started())
            latenciesMs.push_back(age);
    });
    QTimer::singleShot(cGiveUpMs, &loop, [] { fail("the burst does not arrive"); });
    if (!link->openDevice())
        fail("the link finds no instrument");
    // The instrument speaks once it has seen that it was opened, and discards what it had said before.
    const auto heard = std::make_shared<QMetaObject::Connection>();
    *heard = QObject::connect(&*link, &HidLink::packetTraceChanged, &loop, [&control, heard] {
        QObject::disconnect(*heard);
        control.startBurst();
    });
    loop.exec();
    QObject::disconnect(&*link, nullptr, &loop, nullptr);
    return burst.microsecondsPerPacket();
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication app(argc, argv);
    const Control control;
    std::vector<double> bare;
    std::vector<double> link;
    std::vector<double> bareLatenciesMs;
    std::vector<double> latenciesMs;
    for (int run = 0; run < cRuns; ++run) {
        bare.push_back(costOfBareLoop(control, bareLatenciesMs));
        link.push_back(costOfLink(control, latenciesMs));
    }
    std::printf(
        "link and dispatch at %d packets/s   %9.2f us   floor %9.2f us   ratio %7.2fx (aim at most %.0fx)\n",
        cPacketsPerSec, medianOf(link), medianOf(bare), medianOf(link) / medianOf(bare), cCostAim);
    const auto printLatency = [](const char* what, const std::vector<double>& values) {
        std::printf("%s p50 %8.3f ms   p99 %8.3f ms   worst %8.3f ms", what, quantile(values, 0.5),
                    quantile(values, 0.99), quantile(values, 1));
    };
    printLatency("instrument to measurementChanged  ", latenciesMs);
    std::printf(" (aim p99 at most %.0f ms)\n", cLatencyAimMs);
    // Share of the machine and of the mock device, which the link cannot change.
    printLatency("  the same for the bare loop      ", bareLatenciesMs);
    std::printf("\n");
    const bool met =
        medianOf(link) <= cCostAim * medianOf(bare) && quantile(latenciesMs, 0.99) <= cLatencyAimMs;
    return met ? 0 : cAimMissed;
}
