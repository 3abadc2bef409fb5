// SPDX-License-Identifier: GPL-3.0-or-later
//
// A libhidapi.dll with one instrument on its bus, for the Windows program without hardware: put in front of
// the real one it plays the bench of the virtual instrument. The folder that QUORVEL_BENCH names steers it:
// while a file "unplugged" is there, the instrument is not. The number of packets that the program has
// written is in "written".
#include "instrument/ReportDescriptor.h"
#include "tests/fakes/FakeHidApi.h"
#include "tools/virtual-instrument/BenchModel.h"

#include <hidapi.h>

#include <QDir>
#include <QFile>
#include <QSaveFile>

#include <chrono>
#include <thread>

namespace {

constexpr std::chrono::milliseconds cTick(50);
constexpr int cTicksPerReading = 4;
constexpr int cTicksPerIdentity = 100;
const QByteArray cPath = QByteArrayLiteral("\\\\?\\hid#vid_0483&pid_5750#bench");

/// Plays until the process ends.
class BenchBus
{
public:
    [[noreturn]] void play()
    {
        const QDir folder(QString::fromLocal8Bit(qgetenv("QUORVEL_BENCH")));
        for (;;) {
            setPlugged(!folder.exists(QStringLiteral("unplugged")));
            if (m_plugged && fakehid::record().openHandles > 0)
                tick(folder);
            else
                m_ticks = 0;
            std::this_thread::sleep_for(cTick);
        }
    }

private:
    void setPlugged(bool plugged)
    {
        if (plugged == m_plugged)
            return;
        m_plugged = plugged;
        m_followed = 0;
        fakehid::Device device;
        device.path = cPath;
        device.manufacturer = QStringLiteral("Quorvel");
        device.product = QStringLiteral("Bench");
        plugged ? fakehid::plugIn(device) : fakehid::unplug(cPath);
    }

    void tick(const QDir& folder)
    {
        m_bench.advance(std::chrono::duration<double>(cTick).count());
        follow(folder);
        for (const QString& line : m_bench.takeLogLines())
            fakehid::send(cPath, protocol::encodeDeviceLog(line));
        if (m_ticks % cTicksPerIdentity == 0)
            fakehid::send(cPath, protocol::encode(m_identity));
        if (m_ticks % cTicksPerReading == 0)
            fakehid::send(cPath, protocol::encode(m_bench.multimeter().reading()));
        fakehid::send(cPath, protocol::encode(m_bench.measurement()));
        ++m_ticks;
    }

    /// Follows the packets that the program has written since the last tick.
    void follow(const QDir& folder)
    {
        const QList<QByteArray> written = fakehid::written(cPath);
        if (written.size() == m_followed)
            return;
        for (; m_followed < written.size(); ++m_followed) {
            // The first byte is the report's number.
            if (const auto request = protocol::decodeUiControl(written.at(m_followed).mid(1)))
                m_bench.followHost(*request);
        }
        QSaveFile file(folder.filePath(QStringLiteral("written")));
        if (file.open(QIODevice::WriteOnly)) {
            file.write(QByteArray::number(m_followed));
            file.commit();
        }
    }

    BenchModel m_bench;
    protocol::DeviceInfo m_identity{QStringLiteral("BENCH-0001"), QStringLiteral("1.2.3")};
    bool m_plugged = false;
    int m_followed = 0;
    int m_ticks = 0;
};

/// Starts with the library. The thread ends with the process.
struct Starter
{
    Starter()
    {
        std::thread([] { BenchBus().play(); }).detach();
    }
} starter;

} // namespace

int hid_get_report_descriptor(hid_device* device, unsigned char* buffer, size_t size)
{
    return hidReportDescriptor(device, cPath, buffer, size);
}
