// SPDX-License-Identifier: GPL-3.0-or-later
#include "hid/HidLink.h"
#include "storage/DataFolders.h"
#include "storage/SettingsFile.h"
#include "storage/TimeText.h"
#include "tests/fakes/FakeBusTest.h"

namespace {

/// The lines of today's link log, each without its time once that was seen to be well-formed.
QStringList linkLog()
{
    const QString path =
        folders::logs() + timeText(QDateTime::currentDateTime(), "'/hid_link_'yyyyMMdd'.log'");
    QStringList lines = QString::fromUtf8(test::contentOf(path)).split(QLatin1Char('\n'));
    if (!lines.takeLast().isEmpty())
        return {"the last line has no end"};
    static const QRegularExpression form("^\\[\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d\\.\\d{3}\\] (.*)$");
    for (QString& line : lines)
        line = form.match(line).captured(1);
    return lines;
}

} // namespace

class HidLinkLogTest : public FakeBusTest
{
    Q_OBJECT

private:
    void setDebug(bool on) { m_settings->setValue(setting::usbDebugEnabled, on); }
    HidLink& link() { return *m_link; }

    /// The lines of the instrument's log file.
    static QStringList deviceLog()
    {
        const QByteArray text = test::contentOf(folders::logs() + "/device_log_20260301.txt");
        return QString::fromLocal8Bit(text).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    }

    const std::shared_ptr<SettingsFile> m_settings = std::make_shared<SettingsFile>();
    std::unique_ptr<HidLink> m_link;

private Q_SLOTS:
    void init()
    {
        FakeBusTest::init();
        QDir(folders::logs()).removeRecursively();
        m_link = std::make_unique<HidLink>(nullptr, nullptr, m_settings);
        m_link->setClock([] { return QDateTime(QDate(2026, 3, 1), QTime(14, 5, 9)).toMSecsSinceEpoch(); });
        setDebug(true);
        plugIn();
    }

    void cleanup()
    {
        m_link.reset();
        FakeBusTest::cleanup();
    }

    void switchedOffWritesNothing()
    {
        setDebug(false);
        QVERIFY(link().openDevice());
        QVERIFY(link().sendUiControlPacket(1));
        receive(link(), QByteArray(64, '\x7F'));
        link().closeDevice();
        QCOMPARE(QDir(folders::logs()).entryList({"hid_link_*"}), QStringList());
    }

    void traceOfBothDirections()
    {
        QVERIFY(link().openDevice());
        const int before = linkLog().size();
        QSignalSpy trace(&link(), &HidLink::packetTraceChanged);
        const QByteArray request = protocol::encode(protocol::UiControl{1, 2, 255, 255, 255});
        QTest::ignoreMessage(QtDebugMsg, qPrintable("[HID][TX] " + protocol::formatPacket(request)));
        QVERIFY(link().sendUiControlPacket(2));
        QTest::ignoreMessage(QtDebugMsg, "[HID][RX] len=8 00 10 08 02 04 03 02 01");
        QTest::ignoreMessage(QtDebugMsg,
                             "[HID][10H][RX] direction= 2 layer0= 4 layer1= 3 layer2= 2 layer3= 1");
        receive(link(), QByteArray::fromHex("0010080204030201"));
        QTest::ignoreMessage(QtDebugMsg, "[HID][RX] len=3 00 03 40");
        receive(link(), QByteArray::fromHex("000340"));
        QTest::ignoreMessage(QtDebugMsg, "[HID][04][Multimeter] mode= 2 value= 4.7kΩ");
        const QByteArray reading = protocol::encode(protocol::MultimeterReading{2, "4.7kOhm"});
        receive(link(), reading);
        QCOMPARE(trace.count(), 4);
        QCOMPARE(linkLog().mid(before),
                 QStringList({"HID TX: " + protocol::formatPacket(request),
                              "HID RX: len=8 00 10 08 02 04 03 02 01",
                              "UI control packet received. direction=2 layer0=4 layer1=3 layer2=2 layer3=1",
                              "HID RX: len=3 00 03 40", "Received invalid/unknown HID packet: len=3 00 03 40",
                              "HID RX: " + protocol::formatPacket(reading)}));
        // Switched at once, without a new link.
        setDebug(false);
        receive(link(), QByteArray::fromHex("000340"));
        QCOMPARE(linkLog().size(), before + 6);
        // What could not be sent is shown as well.
        setDebug(true);
        fakehid::failWrites(cPath, true);
        QVERIFY(!link().sendUiControlPacket(3));
        QVERIFY(linkLog().constLast().startsWith("HID TX: len=64 00 10 40 01 03 FF"));
    }

    void aBatchIsLoggedAndReportedPacketByPacket()
    {
        constexpr int cPackets = 40;
        QVERIFY(link().openDevice());
        const int before = linkLog().size();
        const QSignalSpy trace(&link(), &HidLink::packetTraceChanged);
        const auto values = std::make_shared<QStringList>();
        const QObject listener;
        connect(&link(), &HidLink::measurementChanged, &listener,
                [this, values] { values->append(QString::number(double(link().mainInputVoltage()))); });
        QSignalSpy controls(&link(), &HidLink::uiControlRequested);
        QStringList expectedLines;
        QStringList expectedValues;
        for (int i = 1; i <= cPackets; ++i) {
            const QByteArray packet = measurement(static_cast<float>(i));
            expectedLines.append("HID RX: " + protocol::formatPacket(packet));
            expectedValues.append(QString::number(i));
            fakehid::send(cPath, packet);
        }
        const QByteArray last = QByteArray::fromHex("0010080204030201");
        expectedLines.append({"HID RX: " + protocol::formatPacket(last),
                              "UI control packet received. direction=2 layer0=4 layer1=3 layer2=2 layer3=1"});
        fakehid::send(cPath, last);
        // The reader reads all of it before the first packet is handed over.
        fakehid::failReads(cPath, "unplugged");
        QVERIFY(waitForReaders());
        QVERIFY(controls.wait());
        QTRY_VERIFY(!link().connected());
        expectedLines.append("Read thread error: HID read failed. unplugged");
        QCOMPARE(linkLog().mid(before), expectedLines);
        QCOMPARE(values->mid(0, cPackets), expectedValues);
        QCOMPARE(trace.count(), cPackets + 2); // closing empties the trace
    }

    void readErrorStandsBehindTheLastPacket()
    {
        QVERIFY(link().openDevice());
        QSignalSpy errors(&link(), &HidLink::errorOccurred);
        fakehid::send(cPath, QByteArray::fromHex("000503"));
        fakehid::failReads(cPath, "unplugged");
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
        for (int i = 1; i <= 501; ++i)
            receive(link(), protocol::encodeDeviceLog(QString::fromUtf8("Ereignis № %1").arg(i)));
        QCOMPARE(lastChanged.count(), 501);
        QCOMPARE(listChanged.count(), 501);
        const QString last = QString::fromUtf8("[2026-03-01 14:05:09] Ereignis № 501");
        QCOMPARE(link().lastDeviceLog(), last);
        QCOMPARE(link().deviceLogs().size(), 500);
        const QVariantMap newest{{"dateTime", "2026-03-01 14:05:09"},
                                 {"message", QString::fromUtf8("Ereignis № 501")}};
        QCOMPARE(link().deviceLogs().first().toMap(), newest);
        QCOMPARE(link().deviceLogs().last().toMap().value("message").toString(),
                 QString::fromUtf8("Ereignis № 2"));
        QCOMPARE(deviceLog().size(), 501);
        QCOMPARE(deviceLog().constLast(), last);

        link().closeDevice();
        QCOMPARE(link().lastDeviceLog(), QString());
        QCOMPARE(link().deviceLogs().size(), 500);
    }

    void whatWasReadBeforeClosingIsLogged_data()
    {
        const test::Table<bool> table("atExit");
        table.row("closed", false);
        table.row("deleted", true);
    }

    void whatWasReadBeforeClosingIsLogged()
    {
        QFETCH(bool, atExit);
        QVERIFY(link().openDevice());
        const QSignalSpy trace(&link(), &HidLink::packetTraceChanged);
        fakehid::send(cPath, measurement(5));
        fakehid::send(cPath, protocol::encodeDeviceLog("last words"));
        fakehid::failReads(cPath, "gone");
        QVERIFY(waitForReaders());
        if (atExit)
            m_link.reset();
        else
            link().closeDevice();
        QCOMPARE(deviceLog(), QStringList{"[2026-03-01 14:05:09] last words"});
        // Only the log: the link is shown as closed.
        QCOMPARE(trace.count(), 1);
    }

    void logFolderThatCannotBeWritten()
    {
        // A file where the folder should be: lines are lost, nothing else.
        QDir(folders::logs()).removeRecursively();
        QFile inTheWay(QFileInfo(folders::logs()).absolutePath() + QStringLiteral("/Logs"));
        QDir().rmdir(inTheWay.fileName());
        QVERIFY(inTheWay.open(QIODevice::WriteOnly));
        receive(link(), protocol::encodeDeviceLog("hello"));
        QCOMPARE(link().deviceLogs().size(), 1);
        QVERIFY(inTheWay.remove());
    }
};

QUORVEL_TEST_MAIN(HidLinkLogTest, QCoreApplication)
#include "tst_HidLinkLog.moc"
