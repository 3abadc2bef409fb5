// SPDX-License-Identifier: GPL-3.0-or-later
// Packets per second that the link's receive entry handles with debugging off, against the rate of USB.
#include "benchmarks/link/BareLink.h"
#include "benchmarks/services/Measure.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QMetaMethod>

#include <cstdio>

namespace {

constexpr int cRuns = 9;
constexpr int cPackets = 500'000;
/// A full-speed interrupt endpoint delivers one report per millisecond.
constexpr double cUsbPacketsPerSec = 1000;
constexpr double cAim = 200;
constexpr int cAimMissed = 2;

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication app(argc, argv);
    const BareLink link;
    int notices = 0;
    QObject::connect(&*link, &HidLink::measurementChanged, &app, [&notices] { ++notices; });
    const QMetaObject& meta = HidLink::staticMetaObject;
    const QMetaMethod receive = meta.method(meta.indexOfSlot("handleIncomingPacket(QByteArray)"));

    std::vector<double> rates;
    for (int run = 0; run < cRuns; ++run) {
        protocol::Measurement values;
        QElapsedTimer timer;
        timer.start();
        for (int i = 0; i < cPackets; ++i) {
            values.mainInputVoltage = static_cast<float>(i);
            const QByteArray packet = protocol::encode(values);
            receive.invoke(&*link, Qt::DirectConnection, Q_ARG(QByteArray, packet));
        }
        rates.push_back(cPackets / (static_cast<double>(timer.nsecsElapsed()) / 1e9));
    }
    if (notices != cRuns * cPackets) {
        std::fprintf(stderr, "%d of %d packets arrived\n", notices, cRuns * cPackets);
        return 1;
    }
    const double rate = medianOf(rates);
    std::printf(
        "receive entry, packets per second  %9.0f      floor %9.0f      ratio %7.1fx (aim at least %.0fx)\n",
        rate, cUsbPacketsPerSec, rate / cUsbPacketsPerSec, cAim);
    return rate >= cAim * cUsbPacketsPerSec ? 0 : cAimMissed;
}
