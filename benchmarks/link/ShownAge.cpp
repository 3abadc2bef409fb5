// SPDX-License-Identifier: GPL-3.0-or-later
// How old the reading on the gauge page is when the next one replaces it on the screen, at 1,000 packets per
// second with the debug log on, and whether every packet was handled and logged.
//
// Run it on a slow processor: python3 slow_processor.py 0.1 shown_age
//
// The reports come from a thread of this program: the virtual instrument answers each read by messages to
// another process, which takes a slow processor far longer than the read of a real device.
#include "app/GenApplication.h"
#include "app/GenToolbox.h"
#include "benchmarks/link/Burst.h"
#include "hid/HidLink.h"
#include "instrument/PacketCodec.h"
#include "storage/DataFolders.h"
#include "storage/SettingsFile.h"
#include "tests/fakes/FakeHidApi.h"

#include <QDir>
#include <QFile>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTemporaryDir>
#include <QTimer>

#include <csignal>
#include <deque>
#include <optional>
#include <thread>

namespace {

constexpr int cPackets = 10'000;
constexpr int cSetUpMs = 5000;
constexpr int cGiveUpMs = 120'000;
constexpr double cAimMs = 500;
constexpr int cAimMissed = 2;

/// The first item of the tree that has a property of that name.
QQuickItem* itemWith(QQuickItem* root, const char* property)
{
    if (root->property(property).isValid())
        return root;
    const QList<QQuickItem*> children = root->childItems();
    for (QQuickItem* child : children) {
        if (QQuickItem* found = itemWith(child, property))
            return found;
    }
    return nullptr;
}

/// Sends numbered measurements: the number in typeCMah, the time at which it was due in typeCTimeSec.
class Sender
{
public:
    static void plugIn()
    {
        fakehid::Device device;
        device.path = cPath;
        fakehid::plugIn(device);
    }

    void start()
    {
        m_thread = std::thread([] {
            const auto begin = std::chrono::steady_clock::now();
            for (int number = 1; number <= cPackets; ++number) {
                const auto due = begin + std::chrono::milliseconds(number);
                std::this_thread::sleep_until(due);
                protocol::Measurement values;
                values.mainOutputCurrent = float(number % 1000) / 1000;
                values.mainTimeSec = float(number);
                values.typeCMah = float(number);
                values.typeCTimeSec = float(std::fmod(
                    std::chrono::duration<double>(due.time_since_epoch()).count(), bench::cStampPeriodSec));
                fakehid::send(cPath, protocol::encode(values));
            }
        });
    }
    ~Sender()
    {
        if (m_thread.joinable())
            m_thread.join();
    }

private:
    static constexpr const char* cPath = "/dev/hidraw0";
    std::thread m_thread;
};

/// Follows the readings of a burst from the link to the screen.
class ShownAge
{
public:
    ShownAge(QQuickWindow* window, HidLink* link) : m_link(link)
    {
        QObject::connect(link, &HidLink::measurementChanged, &m_context, [this] { take(); });
        QObject::connect(link, &HidLink::packetTraceChanged, &m_context, [this] { ++m_traced; });
        // While the drawing thread has the GUI thread wait, where there is one.
        QObject::connect(
            window, &QQuickWindow::afterSynchronizing, &m_context, [this, window] { look(window); },
            Qt::DirectConnection);
        QObject::connect(
            window, &QQuickWindow::frameSwapped, &m_context, [this] { swapped(); }, Qt::DirectConnection);
    }

    int received() const { return m_received; }
    int traced() const { return m_traced; }
    size_t mostWaiting() const { return m_mostWaiting; }
    const std::vector<double>& agesMs() const { return m_agesMs; }

private:
    void take()
    {
        const int number = int(m_link->typeCMah());
        // What the instrument sends before and after the burst.
        if ((m_received == 0 && number != 1) || m_received == cPackets)
            return;
        if (number != ++m_received)
            bench::fail(
                qPrintable(QStringLiteral("packet %1 came as number %2").arg(m_received).arg(number)));
        m_mostWaiting = std::max(m_mostWaiting, m_link->waitingPackets());
        m_taken.push_back({m_link->mainTimeSec(), m_link->typeCTimeSec()});
    }

    void look(QQuickWindow* window)
    {
        if (m_page.isNull())
            m_page = itemWith(window->contentItem(), "_displayTimeSec");
        if (m_page.isNull())
            return;
        const auto shown = float(m_page->property("_displayTimeSec").toDouble());
        while (!m_taken.empty() && m_taken.front().instrumentSec != shown)
            m_taken.pop_front();
        m_drawn = m_taken.empty() ? std::nullopt : std::optional(m_taken.front().stampSec);
    }

    void swapped()
    {
        if (m_shown && m_drawn && *m_shown != *m_drawn)
            m_agesMs.push_back(bench::ageMs(*m_shown));
        m_shown = m_drawn;
    }

    struct Taken
    {
        float instrumentSec;
        float stampSec;
    };
    QObject m_context;
    HidLink* m_link;
    QPointer<QQuickItem> m_page;
    std::deque<Taken> m_taken;
    std::optional<float> m_drawn;
    std::optional<float> m_shown;
    std::vector<double> m_agesMs;
    int m_received = 0;
    int m_traced = 0;
    size_t m_mostWaiting = 0;
};

/// Received packets in the link's log.
qint64 loggedPackets()
{
    qint64 count = 0;
    const QDir folder(folders::logs());
    const QStringList names = folder.entryList({QStringLiteral("hid_link_*")});
    for (const QString& name : names) {
        QFile file(folder.filePath(name));
        if (file.open(QIODevice::ReadOnly))
            count += file.readAll().count("] HID RX: ");
    }
    return count;
}

} // namespace

int main(int argc, char** argv)
{
    const QTemporaryDir home;
    qputenv("HOME", QFile::encodeName(home.path()));
    Sender::plugIn();
    GenApplication app(argc, argv);
    SettingsFile().setValue(setting::usbDebugEnabled, true);
    app.registerQmlTypes();
    app.initQmlEngine();
    auto* window = qobject_cast<QQuickWindow*>(app.rootWindow());
    if (!window)
        return 1;
    HidLink* link = app.toolbox()->hidLink();
    ShownAge age(window, link);
    QTimer::singleShot(cGiveUpMs, &app, [] { bench::fail("the readings do not arrive"); });
    Sender sender;
    // The processor becomes slow when all is set up: what is measured is not the start.
    QTimer::singleShot(cSetUpMs, &app, [&] {
        if (!link->openDevice())
            bench::fail("the link finds no instrument");
        if (const int limiter = qEnvironmentVariableIntValue("SLOW_PROCESSOR"))
            ::kill(limiter, SIGUSR1);
        sender.start();
    });
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, &app, [&age] {
        if (age.received() == cPackets)
            QCoreApplication::quit();
    });
    poll.start(100);
    QCoreApplication::exec();
    const auto traced = age.traced();
    app.shutdown();

    const qint64 logged = loggedPackets();
    if (logged < traced) {
        std::fprintf(stderr, "%lld of %d packets are in the log\n", logged, traced);
        return 1;
    }
    const auto& ages = age.agesMs();
    if (ages.empty())
        bench::fail("nothing was shown");
    std::printf("age of the shown reading at 1,000 packets/s, debug log on, none lost   p50 %6.0f ms   p99 "
                "%6.0f ms   "
                "worst %6.0f ms   %zu frames, %zu packets waiting at most (aim at most %.0f ms)\n",
                bench::quantile(ages, 0.5), bench::quantile(ages, 0.99), bench::quantile(ages, 1),
                ages.size(), age.mostWaiting(), cAimMs);
    return bench::quantile(ages, 1) <= cAimMs ? 0 : cAimMissed;
}
