// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/GenApplication.h"
#include "app/GenToolbox.h"
#include "settings/GenSettings.h"
#include "storage/DataFolders.h"
#include "tests/unit/hid/LinkFixture.h"

#include <QDir>
#include <QFile>

namespace {

QString pathOf(const QString& pattern, const QDate& date)
{
    return DataFolders::logs() + QLatin1Char('/') + pattern.arg(date.toString("yyyyMMdd"));
}

/// The lines of today's link log, each without its time once that was seen to be well-formed.
QStringList linkLog()
{
    QFile file(pathOf("hid_link_%1.log", QDate::currentDate()));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QStringList lines = QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'));
    if (!lines.takeLast().isEmpty())
        return {"the last line has no end"};
    static const QRegularExpression form("^\\[\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d\\.\\d{3}\\] (.*)$");
    for (QString& line : lines)
        line = form.match(line).captured(1);
    return lines;
}

} // namespace

class HidLinkLogTest : public LinkTestCase
{
    Q_OBJECT

private:
    void setDebug(bool on) { m_toolbox->genSettings()->setValue("usbDebugEnabled", on, "sysSettings"); }
    HidLink& link() { return *m_toolbox->hidLink(); }

    std::unique_ptr<GenToolbox> m_toolbox;

private Q_SLOTS:
    void init()
    {
        LinkTestCase::init();
        QDir(DataFolders::logs()).removeRecursively();
        m_toolbox = std::make_unique<GenToolbox>(nullptr);
        setDebug(true);
    }

    void cleanup()
    {
        m_toolbox.reset();
        LinkTestCase::cleanup();
    }

    void switchedOffWritesNothing()
    {
        setDebug(false);
        plugInInstrument();
        QVERIFY(link().openDevice());
        QVERIFY(link().sendUiControlPacket(1));
        receive(link(), QByteArray(64, '\x7F'));
        link().closeDevice();
        QCOMPARE(QDir(DataFolders::logs()).entryList({"hid_link_*"}), QStringList());
    }

    void openingTheOnlyCandidate()
    {
        FakeHidApi::Device device;
        device.path = cPath;
        device.interfaceNumber = 2;
        device.releaseNumber = 0x1A;
        device.manufacturer = QString::fromUtf8("Mäker");
        device.product = QStringLiteral("Meter");
        FakeHidApi::plugIn(device);
        qint64 now = 1;
        link().setClock([&now] { return now; });
        QVERIFY(link().openDevice());
        QVERIFY(link().openDevice()); // says nothing
        QCOMPARE(
            linkLog(),
            QStringList({"tryOpenDevice started. vid=0x0483 pid=0x5750",
                         QString::fromUtf8("HID candidate: path=/dev/hidraw0 iface=2 usagePage=0xff00 "
                                           "usage=0x0001 release=0x001a manufacturer=Mäker product=Meter "
                                           "serial="),
                         "Single HID candidate detected. Opening directly without synchronous probe. "
                         "path=/dev/hidraw0",
                         "HID opened successfully. selectedPath=/dev/hidraw0 initialPacketSize=0",
                         "HID report descriptor size=34"}));
        now += 10001;
        poll(link(), 1);
        QVERIFY(linkLog().contains("No HID packet received within 10 seconds after open. Reopening device."));
    }

    void probingSeveralCandidates()
    {
        for (const char* path : {"/a", "/b", "/c"}) {
            FakeHidApi::Device device;
            device.path = path;
            FakeHidApi::plugIn(device);
        }
        FakeHidApi::failReads("/a", "broken");
        FakeHidApi::send("/b", QByteArray::fromHex("7f7f7f"));
        FakeHidApi::failReads("/b", "broken");
        FakeHidApi::send("/c", QByteArray::fromHex("000503"));
        QVERIFY(link().openDevice());
        const QStringList lines = linkLog().filter(QRegularExpression(QStringLiteral("probe|selected|RX")));
        QCOMPARE(
            lines,
            QStringList({"HID probe read failed: path=/a", "HID probe packet: path=/b packet=len=3 7F 7F 7F",
                         "HID probe packet rejected as invalid protocol packet: path=/b",
                         "HID probe read failed: path=/b", "HID probe packet: path=/c packet=len=3 00 05 03",
                         "HID opened successfully. selectedPath=/c initialPacketSize=3",
                         "HID RX: len=3 00 05 03"}));
    }

    void failingToOpen()
    {
        FakeHidApi::failInit(1);
        QVERIFY(!link().openDevice());
        FakeHidApi::Device device;
        device.path = cPath;
        device.failingOpens = -1;
        device.accessAdvice = QStringLiteral("no permission, see the udev rule");
        FakeHidApi::plugIn(device);
        expectWarning("no permission");
        QVERIFY(!link().openDevice());
        const QStringList lines = linkLog();
        QCOMPARE(lines.first(), QStringLiteral("hid_init failed."));
        QCOMPARE(
            lines.mid(lines.size() - 3),
            QStringList({"No HID candidate produced protocol data. Falling back to first path=/dev/hidraw0",
                         "no permission, see the udev rule", "tryOpenDevice failed: no HID handle opened."}));
    }

    void traceOfBothDirections()
    {
        plugInInstrument();
        QVERIFY(link().openDevice());
        const int before = linkLog().size();
        QSignalSpy trace(&link(), &HidLink::packetTraceChanged);
        const QByteArray request = PacketCodec::encode(PacketCodec::UiControl{1, 2, 255, 255, 255});
        QTest::ignoreMessage(QtDebugMsg, qPrintable("[HID][TX] " + PacketCodec::formatPacket(request)));
        QVERIFY(link().sendUiControlPacket(2));
        QTest::ignoreMessage(QtDebugMsg, "[HID][RX] len=8 00 10 08 02 04 03 02 01");
        QTest::ignoreMessage(QtDebugMsg,
                             "[HID][10H][RX] direction= 2 layer0= 4 layer1= 3 layer2= 2 layer3= 1");
        receive(link(), QByteArray::fromHex("0010080204030201"));
        QTest::ignoreMessage(QtDebugMsg, "[HID][RX] len=3 00 03 40");
        receive(link(), QByteArray::fromHex("000340"));
        QTest::ignoreMessage(QtDebugMsg, "[HID][04][Multimeter] mode= 2 value= 4.7kΩ");
        const QByteArray reading = PacketCodec::encode(PacketCodec::MultimeterReading{2, "4.7kOhm"});
        receive(link(), reading);
        QCOMPARE(trace.count(), 4);
        QCOMPARE(linkLog().mid(before),
                 QStringList({"HID TX: " + PacketCodec::formatPacket(request),
                              "HID RX: len=8 00 10 08 02 04 03 02 01",
                              "UI control packet received. direction=2 layer0=4 layer1=3 layer2=2 layer3=1",
                              "HID RX: len=3 00 03 40", "Received invalid/unknown HID packet: len=3 00 03 40",
                              "HID RX: " + PacketCodec::formatPacket(reading)}));
        // Switched at once, without a new link.
        setDebug(false);
        receive(link(), QByteArray::fromHex("000340"));
        QCOMPARE(linkLog().size(), before + 6);
        // What could not be sent is shown as well.
        setDebug(true);
        FakeHidApi::failWrites(cPath, true);
        QVERIFY(!link().sendUiControlPacket(3));
        QVERIFY(linkLog().constLast().startsWith("HID TX: len=64 00 10 40 01 03 FF"));
    }

    void readErrorStandsBehindTheLastPacket()
    {
        plugInInstrument();
        QVERIFY(link().openDevice());
        QSignalSpy errors(&link(), &HidLink::errorOccurred);
        FakeHidApi::send(cPath, QByteArray::fromHex("000503"));
        FakeHidApi::failReads(cPath, "unplugged");
        QVERIFY(errors.wait());
        const QStringList lines = linkLog();
        QCOMPARE(lines.mid(lines.size() - 2),
                 QStringList({"HID RX: len=3 00 05 03", "Read thread error: HID read failed. unplugged"}));
    }

    void deviceLogsAreKeptAndWrittenAlways()
    {
        setDebug(false);
        QSignalSpy lastChanged(&link(), &HidLink::deviceLogChanged);
        QSignalSpy listChanged(&link(), &HidLink::deviceLogsChanged);
        const QDate day = QDate::currentDate();
        for (int i = 1; i <= 501; ++i)
            receive(link(), PacketCodec::encodeDeviceLog(QString::fromUtf8("Ereignis № %1").arg(i)));
        QCOMPARE(lastChanged.count(), 501);
        QCOMPARE(listChanged.count(), 501);
        QCOMPARE(link().deviceLogs().size(), 500);
        const QVariantMap newest = link().deviceLogs().first().toMap();
        QCOMPARE(newest.value("message").toString(), QString::fromUtf8("Ereignis № 501"));
        QCOMPARE(newest.keys(), QStringList({"dateTime", "message"}));
        QVERIFY(QDateTime::fromString(newest.value("dateTime").toString(), "yyyy-MM-dd HH:mm:ss").isValid());
        QCOMPARE(link().lastDeviceLog(),
                 '[' + newest.value("dateTime").toString() + QString::fromUtf8("] Ereignis № 501"));
        QCOMPARE(link().deviceLogs().last().toMap().value("message").toString(),
                 QString::fromUtf8("Ereignis № 2"));

        if (day != QDate::currentDate())
            QSKIP("midnight came in between");
        QFile file(pathOf("device_log_%1.txt", day));
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QStringList lines = QString::fromLocal8Bit(file.readAll()).split(QLatin1Char('\n'));
        QCOMPARE(lines.size(), 502);
        QCOMPARE(lines.at(500), link().lastDeviceLog());

        link().closeDevice();
        QCOMPARE(link().lastDeviceLog(), QString());
        QCOMPARE(link().deviceLogs().size(), 500);
    }

    void logFolderThatCannotBeWritten()
    {
        // A file where the folder should be: lines are lost, nothing else.
        QDir(DataFolders::logs()).removeRecursively();
        QFile inTheWay(QFileInfo(DataFolders::logs()).absolutePath() + QStringLiteral("/Logs"));
        QDir().rmdir(inTheWay.fileName());
        QVERIFY(inTheWay.open(QIODevice::WriteOnly));
        receive(link(), PacketCodec::encodeDeviceLog("hello"));
        QCOMPARE(link().deviceLogs().size(), 1);
        QVERIFY(inTheWay.remove());
    }

    void goingDownWithTheToolboxLogsNothing()
    {
        // The settings store goes before the link: the reader's last words must not ask it.
        plugInInstrument();
        QVERIFY(link().openDevice());
        QTRY_VERIFY(FakeHidApi::readPending(cPath));
        FakeHidApi::failReads(cPath, "gone");
        m_toolbox.reset();
        QCOMPARE(FakeHidApi::openHandles(), 0);
    }
};

QUORVEL_TEST_MAIN(HidLinkLogTest, GenApplication)
#include "tst_HidLinkLog.moc"
