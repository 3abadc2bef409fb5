// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/GenApplication.h"
#include "app/GenToolbox.h"
#include "hid/HidLink.h"
#include "settings/DataFolders.h"
#include "settings/GenSettings.h"
#include "tests/support/TestCase.h"

#include <QtTest>

namespace {

constexpr int kVoltageMode = 1;

void keepHistory(bool keep)
{
    genApp()->toolbox()->genSettings()->setValue(QStringLiteral("saveMultimeterHistoryToFile"), keep,
                                                 QStringLiteral("sysSettings"));
}

QJsonArray historyFile()
{
    QFile file(DataFolders::database() + QStringLiteral("/multimeter_history.json"));
    return file.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(file.readAll()).array() : QJsonArray();
}

} // namespace

class HidLinkMultimeterTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TestCase::init();
        QDir(DataFolders::database()).removeRecursively();
        keepHistory(false);
        newLink();
    }

    void packetsBecomePropertiesAndRows()
    {
        QSignalSpy changed(m_link.get(), &HidLink::multimeterChanged);
        QSignalSpy tableChanged(m_link.get(), &HidLink::multimeterCurrentTableChanged);
        receive(2, QStringLiteral("12.3mOhm"), 5);
        QCOMPARE(changed.count(), 5);
        QCOMPARE(tableChanged.count(), 1);
        QCOMPARE(m_link->property("multimeterMode").toInt(), 2);
        QCOMPARE(m_link->property("multimeterValue").toString(), QStringLiteral("12.3mΩ"));
        QCOMPARE(m_link->property("multimeterNumericValue").toString(), QStringLiteral("12.3"));
        QCOMPARE(m_link->property("multimeterUnit").toString(), QStringLiteral("mΩ"));
        const QVariantMap row = m_link->property("multimeterCurrentTable").toList().first().toMap();
        QCOMPARE(row.value(QStringLiteral("ResistanceValue")).toString(), QStringLiteral("12.3mΩ"));
        QCOMPARE(row.value(QStringLiteral("dateTime")).toString(),
                 QDateTime::fromMSecsSinceEpoch(m_now).toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")));

        receive(7, QStringLiteral("5X"), 6);
        QCOMPARE(m_link->multimeterMode(), 7);
        QCOMPARE(tableChanged.count(), 1);
    }

    void packetsOfAnyContent_data()
    {
        QTest::addColumn<QByteArray>("packet");
        QTest::newRow("short") << QByteArray("\x00\x04\x40\x01", 4);
        QTest::newRow("zeros") << QByteArray("\x00\x04\x40", 3) + QByteArray(61, '\0');
        QTest::newRow("bytes that are no text") << QByteArray("\x00\x04\x40\x01", 4) + QByteArray(60, '\xff');
        QTest::newRow("highest mode") << QByteArray("\x00\x04\x40\xff", 4) + QByteArray(60, '5');
    }

    void packetsOfAnyContent()
    {
        QFETCH(QByteArray, packet);
        for (int i = 0; i < 6; ++i)
            receivePacket(packet);
        QVERIFY(m_link->multimeterCurrentTable().size() <= 1);
    }

    void closingKeepsTheHistories()
    {
        receive(kVoltageMode, QStringLiteral("1.5V"), 5);
        m_link->closeDevice();
        QCOMPARE(m_link->multimeterMode(), 0);
        QCOMPARE(m_link->multimeterValue() + m_link->multimeterNumericValue() + m_link->multimeterUnit(),
                 QString());
        QCOMPARE(m_link->multimeterCurrentTable().size(), 0);
        QCOMPARE(m_link->multimeterSessionHistory().size(), 1);
        // A new connection counts and records anew.
        receive(kVoltageMode, QStringLiteral("1.5V"), 5);
        QCOMPARE(m_link->multimeterCurrentTable().size(), 1);
        QCOMPARE(m_link->multimeterSessionHistory().size(), 2);
    }

    void rowsAreRemovedAndCleared()
    {
        receive(kVoltageMode, QStringLiteral("1.5V"), 5);
        receive(kVoltageMode, QStringLiteral("2.5V"), 5);
        QSignalSpy tableChanged(m_link.get(), &HidLink::multimeterCurrentTableChanged);
        m_link->removeMultimeterCurrentTableRow(-1);
        m_link->removeMultimeterCurrentTableRow(2);
        QCOMPARE(tableChanged.count(), 0);
        m_link->removeMultimeterCurrentTableRow(1);
        QCOMPARE(tableChanged.count(), 1);
        QCOMPARE(m_link->multimeterCurrentTable().size(), 1);
        m_link->clearMultimeterCurrentTable();
        QCOMPARE(tableChanged.count(), 2);
        QCOMPARE(m_link->multimeterCurrentTable().size(), 0);
        QCOMPARE(m_link->multimeterSessionHistory().size(), 2);
        // The steady reading is not recorded again at once; another one is.
        receive(kVoltageMode, QStringLiteral("2.5V"), 5);
        QCOMPARE(m_link->multimeterCurrentTable().size(), 0);
        receive(kVoltageMode, QStringLiteral("1.5V"), 5);
        QCOMPARE(m_link->multimeterCurrentTable().size(), 1);
    }

    void withoutPersistenceTheFileIsLeftAlone()
    {
        QSignalSpy historyChanged(m_link.get(), &HidLink::multimeterHistoryChanged);
        receive(kVoltageMode, QStringLiteral("1.5V"), 5);
        QCOMPARE(m_link->multimeterHistory().size(), 0);
        QCOMPARE(historyChanged.count(), 0);
        m_link->clearMultimeterHistory();
        QCOMPARE(historyChanged.count(), 1);
        QCOMPARE(m_link->multimeterSessionHistory().size(), 0);
        QVERIFY(QDir(DataFolders::database()).isEmpty());
    }

    void historyComesBackAfterARestart()
    {
        keepHistory(true);
        receive(kVoltageMode, QStringLiteral("1.5V"), 5);
        receive(4, QStringLiteral("0.7V"), 5);
        const QVariantList rows = m_link->multimeterHistory();
        QCOMPARE(rows.size(), 2);
        QCOMPARE(historyFile().toVariantList(), rows);
        newLink();
        QCOMPARE(m_link->multimeterHistory(), rows);
        QCOMPARE(m_link->multimeterSessionHistory().size(), 0);
        m_link->clearMultimeterHistory();
        QCOMPARE(historyFile().size(), 0);
        QVERIFY(!QDir(DataFolders::database()).isEmpty());
    }

    void persistenceSwitchedOnWhileRunning()
    {
        receive(kVoltageMode, QStringLiteral("1.5V"), 5);
        keepHistory(true);
        receive(kVoltageMode, QStringLiteral("2.5V"), 5);
        QCOMPARE(historyFile().size(), 1);
        QCOMPARE(m_link->multimeterSessionHistory().size(), 2);
    }

    void folderThatVanishesAndReturns()
    {
        keepHistory(true);
        receive(kVoltageMode, QStringLiteral("1.5V"), 5);
        const QString folder = DataFolders::database();
        QVERIFY(QDir(folder).removeRecursively());
        QFile inPlaceOfTheFolder(folder);
        QVERIFY(inPlaceOfTheFolder.open(QIODevice::WriteOnly));
        receive(kVoltageMode, QStringLiteral("2.5V"), 5);
        QCOMPARE(m_link->multimeterHistory().size(), 2);
        QVERIFY(inPlaceOfTheFolder.remove());
        receive(kVoltageMode, QStringLiteral("3.5V"), 5);
        QCOMPARE(historyFile().size(), 3);
    }

private:
    void newLink()
    {
        m_link = std::make_unique<HidLink>(genApp(), genApp()->toolbox());
        m_link->setClock([this] { return m_now; });
    }

    void receivePacket(const QByteArray& packet)
    {
        QVERIFY(QMetaObject::invokeMethod(m_link.get(), "handleIncomingPacket", Q_ARG(QByteArray, packet)));
    }

    void receive(int mode, const QString& text, int count)
    {
        for (int i = 0; i < count; ++i) {
            m_now += 100;
            receivePacket(PacketCodec::encode(PacketCodec::MultimeterReading{mode, text}));
        }
    }

    qint64 m_now = 1700000000000;
    std::unique_ptr<HidLink> m_link;
};

QUORVEL_TEST_MAIN(HidLinkMultimeterTest, GenApplication)
#include "tst_HidLink_multimeter.moc"
