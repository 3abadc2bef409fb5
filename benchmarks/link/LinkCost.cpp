// SPDX-License-Identifier: GPL-3.0-or-later
// Processor time of the link at 1,000 packets per second through the real hidapi, against a bare read loop,
// and the time of a packet from the instrument to measurementChanged.
//
// Run it on the virtual instrument: virtual-instrument --control auto -- link_cost
#include "benchmarks/link/BareLink.h"
#include "benchmarks/link/Burst.h"
#include "benchmarks/services/Measure.h"

#include <hidapi.h>

#include <QCoreApplication>
#include <QEventLoop>
#include <QFile>
#include <QTimer>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <sys/resource.h>

namespace {

constexpr int cRuns = 7;
constexpr int cPackets = 5000;
constexpr int cPacketsPerSec = 1000;
constexpr int cReadTimeoutMs = 25;
constexpr int cGiveUpMs = 60'000;
constexpr int cAimMissed = 2;
constexpr double cCostAim = 1.25;
constexpr double cLatencyAimMs = 5;

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

/// Notes the processor time between the first and the last packet of a burst.
class BurstCost
{
public:
    /// Counts the packet of a burst with the given number, starting with 1. Returns true for the last one.
    bool take(float number)
    {
        // Earlier packets of the instrument may still arrive.
        if (m_received == 0 && number != 1.0F)
            return false;
        if (number != static_cast<float>(++m_received))
            bench::fail(qPrintable(
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

/// A loop that does nothing but read: microseconds of processor time per packet. \a latenciesMs gets the time
/// from sending to the end of the read.
double costOfBareLoop(const BurstControl& control, std::vector<double>& latenciesMs)
{
    hid_device_info* const list =
        hid_enumerate(InstrumentDiscovery::cVendorId, InstrumentDiscovery::cProductId);
    hid_device* const device = list != nullptr ? hid_open_path(list->path) : nullptr;
    hid_free_enumeration(list);
    if (device == nullptr)
        bench::fail("no instrument to open");
    BurstCost burst;
    unsigned char buffer[protocol::cPacketSize];
    const double giveUpSec = bench::nowSec() + cGiveUpMs / 1e3;
    bool asked = false;
    for (bool done = false; !done;) {
        const int length = hid_read_timeout(device, buffer, sizeof buffer, cReadTimeoutMs);
        if (length < 0)
            bench::fail("the bare loop cannot read");
        if (length == 0) {
            if (bench::nowSec() > giveUpSec)
                bench::fail("the burst does not arrive");
            continue;
        }
        // The instrument speaks once it has seen that it was opened, and discards what it had said before.
        if (!asked) {
            asked = true;
            control.startBurst(cPackets, cPacketsPerSec);
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
            latenciesMs.push_back(bench::ageMs(stampSec));
    }
    hid_close(device);
    return burst.microsecondsPerPacket();
}

/// The same through the link; \a latenciesMs gets the time from sending to measurementChanged.
double costOfLink(const BurstControl& control, std::vector<double>& latenciesMs)
{
    const BareLink link;
    BurstCost burst;
    QEventLoop loop;
    QObject::connect(&*link, &HidLink::measurementChanged, &loop, [&] {
        const double age = bench::ageMs(link->typeCTimeSec());
        if (burst.take(link->typeCMah()))
            loop.quit();
        if (burst.started())
            latenciesMs.push_back(age);
    });
    QTimer::singleShot(cGiveUpMs, &loop, [] { bench::fail("the burst does not arrive"); });
    if (!link->openDevice())
        bench::fail("the link finds no instrument");
    // The instrument speaks once it has seen that it was opened, and discards what it had said before.
    const auto heard = std::make_shared<QMetaObject::Connection>();
    *heard = QObject::connect(&*link, &HidLink::packetTraceChanged, &loop, [&control, heard] {
        QObject::disconnect(*heard);
        control.startBurst(cPackets, cPacketsPerSec);
    });
    loop.exec();
    QObject::disconnect(&*link, nullptr, &loop, nullptr);
    return burst.microsecondsPerPacket();
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication app(argc, argv);
    const BurstControl control;
    std::vector<double> bare;
    std::vector<double> link;
    std::vector<double> bareLatenciesMs;
    std::vector<double> latenciesMs;
    for (int run = 0; run < cRuns; ++run) {
        bare.push_back(costOfBareLoop(control, bareLatenciesMs));
        link.push_back(costOfLink(control, latenciesMs));
    }
    std::printf(
        "link and dispatch at %d packets/s   %9.2f us   floor %9.2f us   ratio %7.2fx (aim at most %.2fx)\n",
        cPacketsPerSec, medianOf(link), medianOf(bare), medianOf(link) / medianOf(bare), cCostAim);
    const auto printLatency = [](const char* what, const std::vector<double>& values) {
        std::printf("%s p50 %8.3f ms   p99 %8.3f ms   worst %8.3f ms", what, bench::quantile(values, 0.5),
                    bench::quantile(values, 0.99), bench::quantile(values, 1));
    };
    printLatency("instrument to measurementChanged  ", latenciesMs);
    std::printf(" (aim p99 at most %.0f ms)\n", cLatencyAimMs);
    // Share of the machine and of the mock device, which the link cannot change.
    printLatency("  the same for the bare loop      ", bareLatenciesMs);
    std::printf("\n");
    const bool met =
        medianOf(link) <= cCostAim * medianOf(bare) && bench::quantile(latenciesMs, 0.99) <= cLatencyAimMs;
    return met ? 0 : cAimMissed;
}
