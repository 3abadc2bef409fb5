// SPDX-License-Identifier: GPL-3.0-or-later
#include "instrument/InstrumentDiscovery.h"
#include "tests/fakes/FakeBusTest.h"

namespace {

/// Adds a candidate of the discovery table; \a kind says what it does when it is opened and listened to.
void plugInCandidate(const QString& kind, const QByteArray& path)
{
    fakehid::Device device;
    device.path = kind == QLatin1String("nopath") ? QByteArray() : path;
    if (kind == QLatin1String("closed"))
        device.failingOpens = -1;
    if (kind == QLatin1String("closed once") || kind == QLatin1String("talks on the second opening"))
        device.failingOpens = 1;
    fakehid::plugIn(device);
    const int invalidPackets = kind == QLatin1String("talks third") ? 2
                               : kind == QLatin1String("garbage")   ? 3
                                                                    : 0;
    for (int i = 0; i < invalidPackets; ++i)
        fakehid::send(path, QByteArray(protocol::cPacketSize, '\x7F'));
    // "garbage" talks too, but too late.
    if (kind.startsWith(QLatin1String("talks")) || kind == QLatin1String("garbage"))
        fakehid::send(path, protocol::encode(protocol::DeviceInfo{QString::fromLatin1(path), {}}));
    if (kind == QLatin1String("readfail"))
        fakehid::failReads(path, "broken");
}

} // namespace

class InstrumentDiscoveryTest : public FakeBusTest
{
    Q_OBJECT

private:
    QStringList m_log;
    const InstrumentDiscovery::Log m_logSink{[this](const QString& line) { m_log.append(line); }};

private Q_SLOTS:
    void init()
    {
        FakeBusTest::init();
        m_log.clear();
    }

    void candidates_data()
    {
        const test::Table<QStringList, QString, QStringList, bool> table("candidates", "opened", "attempts",
                                                                         "probed");
        using List = QStringList;
        table.row("empty bus", List(), {}, List(), false);
        table.row("the only one is opened unheard", List{"mute"}, "/0", List{"/0"}, false);
        table.row("the only one refuses once, then talks", List{"talks on the second opening"}, "/0",
                  List{"/0", "/0"}, true);
        table.row("the only one refuses once, then is mute", List{"closed once"}, "/0",
                  List{"/0", "/0", "/0"}, false);
        table.row("the only one refuses", List{"closed"}, {}, List{"/0", "/0", "/0"}, false);
        table.row("the only one has no path", List{"nopath"}, {}, List(), false);
        table.row("the one that talks", List{"mute", "talks"}, "/1", List{"/0", "/1"}, true);
        table.row("the first that talks", List{"talks", "talks"}, "/0", List{"/0"}, true);
        table.row("valid in the third read", List{"talks third", "talks"}, "/0", List{"/0"}, true);
        table.row("three invalid packets are enough", List{"garbage", "talks"}, "/1", List{"/0", "/1"}, true);
        table.row("a failing read ends the attempts", List{"readfail", "talks"}, "/1", List{"/0", "/1"},
                  true);
        table.row("one that refuses is passed over", List{"closed", "talks"}, "/1", List{"/0", "/1"}, true);
        table.row("no path is passed over", List{"nopath", "talks"}, "/1", List{"/1"}, true);
        table.row("none talks: the first", List{"mute", "mute"}, "/0", List{"/0", "/1", "/0"}, false);
        table.row("none talks: the first with a path", List{"nopath", "mute"}, "/1", List{"/1", "/1"}, false);
        table.row("the fallback refuses too", List{"closed", "mute"}, {}, List{"/0", "/1", "/0"}, false);
    }

    void candidates()
    {
        QFETCH(QStringList, candidates);
        QFETCH(QString, opened);
        QFETCH(bool, probed);
        for (int i = 0; i < candidates.size(); ++i)
            plugInCandidate(candidates.at(i), '/' + QByteArray::number(i));
        const InstrumentDiscovery::Found found = InstrumentDiscovery().find(true);
        QCOMPARE(bool(found.device), !opened.isEmpty());
        QTEST(fakehid::record().openedPaths, "attempts");
        if (!opened.isEmpty())
            QCOMPARE(found.path, opened);
        // What was read while probing is not lost.
        const auto info = protocol::decodeDeviceInfo(found.firstPacket);
        QCOMPARE(info ? info->deviceId : QString(), probed ? opened : QString());
    }

    void failedInitialisationIsTriedAgain()
    {
        fakehid::failInit(1);
        {
            InstrumentDiscovery discovery(m_logSink);
            QVERIFY(!discovery.ensureHidInitialized());
            QCOMPARE(m_log, QStringList{"hid_init failed."});
            QVERIFY(discovery.ensureHidInitialized());
            QVERIFY(discovery.ensureHidInitialized());
            QCOMPARE(fakehid::record().initCalls, 2);
        }
        QCOMPARE(fakehid::record().exitCalls, 1);
    }

    void logOfTheOnlyCandidate()
    {
        fakehid::Device device;
        device.path = cPath;
        device.interfaceNumber = 2;
        device.releaseNumber = 0x1A;
        device.manufacturer = QString::fromUtf8("Mäker");
        device.product = QStringLiteral("Meter");
        fakehid::plugIn(device);
        InstrumentDiscovery(m_logSink).find(true);
        QCOMPARE(m_log,
                 QStringList({"tryOpenDevice started. vid=0x0483 pid=0x5750",
                              QString::fromUtf8("HID candidate: path=/dev/hidraw0 iface=2 usagePage=0xff00 "
                                                "usage=0x0001 release=0x001a manufacturer=Mäker "
                                                "product=Meter serial="),
                              "Single HID candidate detected. Opening directly without synchronous probe. "
                              "path=/dev/hidraw0",
                              "HID opened successfully. selectedPath=/dev/hidraw0 initialPacketSize=0",
                              "HID report descriptor size=34"}));
    }

    void logOfSeveralCandidates()
    {
        for (const char* path : {"/a", "/b", "/c"})
            plugIn(path);
        fakehid::failReads("/a", "broken");
        fakehid::send("/b", QByteArray::fromHex("7f7f7f"));
        fakehid::failReads("/b", "broken");
        fakehid::send("/c", QByteArray::fromHex("000503"));
        InstrumentDiscovery(m_logSink).find(true);
        QCOMPARE(
            m_log.filter(QRegularExpression(QStringLiteral("probe|selected"))),
            QStringList({"HID probe read failed: path=/a", "HID probe packet: path=/b packet=len=3 7F 7F 7F",
                         "HID probe packet rejected as invalid protocol packet: path=/b",
                         "HID probe read failed: path=/b", "HID probe packet: path=/c packet=len=3 00 05 03",
                         "HID opened successfully. selectedPath=/c initialPacketSize=3"}));
    }

    void refusedAccessIsSaidOncePerChange()
    {
        fakehid::Device device;
        device.path = cPath;
        device.failingOpens = -1;
        device.accessAdvice = QStringLiteral("not allowed, but there is a way out");
        static QStringList warnings;
        static QtMessageHandler next = nullptr;
        InstrumentDiscovery discovery(m_logSink);
        next = qInstallMessageHandler(
            [](QtMsgType type, const QMessageLogContext& context, const QString& text) {
                type == QtWarningMsg ? warnings.append(text) : next(type, context, text);
            });
        // Nothing there: nothing to say.
        discovery.find(true);
        QCOMPARE(warnings.size(), 0);
        // A silent attempt may have come before the system set the permissions of a new node.
        fakehid::plugIn(device);
        discovery.find(false);
        QCOMPARE(warnings.size(), 0);
        QCOMPARE(
            m_log.mid(m_log.size() - 3),
            QStringList({"No HID candidate produced protocol data. Falling back to first path=/dev/hidraw0",
                         device.accessAdvice, "tryOpenDevice failed: no HID handle opened."}));
        discovery.find(false);
        QCOMPARE(warnings, QStringList{device.accessAdvice});
        discovery.find(false);
        discovery.find(true);
        QCOMPARE(warnings.size(), 1);
        // Gone and back: a change.
        fakehid::unplug(cPath);
        discovery.find(false);
        fakehid::plugIn(device);
        discovery.find(true);
        QCOMPARE(warnings.size(), 2);
        qInstallMessageHandler(next);
    }
};

QUORVEL_TEST_MAIN(InstrumentDiscoveryTest, QCoreApplication)
#include "tst_InstrumentDiscovery.moc"
