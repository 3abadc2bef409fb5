// SPDX-License-Identifier: GPL-3.0-or-later
#include "hid/HidLink.h"
#include "storage/DataFolders.h"
#include "storage/SettingsFile.h"
#include "storage/TimeText.h"
#include "tests/support/TestCase.h"

#include <QtTest>

namespace {

constexpr int cVoltageMode = ::MultimeterReading::Voltage;

QJsonArray historyFile()
{
    return QJsonDocument::fromJson(test::contentOf(folders::database() + "/multimeter_history.json")).array();
}

} // namespace

class HidLinkMultimeterTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TestCase::init();
        QDir(folders::database()).removeRecursively();
        keepHistory(false);
        newLink();
    }

    void packetsBecomePropertiesAndRows()
    {
        QSignalSpy changed(m_link.get(), &HidLink::multimeterChanged);
        QSignalSpy tableChanged(m_link.get(), &HidLink::multimeterCurrentTableChanged);
        receive(2, "12.3mOhm", 5);
        QCOMPARE(changed.count(), 5);
        QCOMPARE(tableChanged.count(), 1);
        QCOMPARE(m_link->property("multimeterMode").toInt(), 2);
        QCOMPARE(m_link->property("multimeterValue").toString(), QStringLiteral("12.3mΩ"));
        QCOMPARE(m_link->property("multimeterNumericValue").toString(), QStringLiteral("12.3"));
        QCOMPARE(m_link->property("multimeterUnit").toString(), QStringLiteral("mΩ"));
        const QVariantMap row = m_link->property("multimeterCurrentTable").toList().first().toMap();
        QCOMPARE(row.value("ResistanceValue").toString(), QStringLiteral("12.3mΩ"));
        QCOMPARE(row.value("dateTime").toString(), timeText(QDateTime::fromMSecsSinceEpoch(m_now)));

        receive(7, "5X", 6);
        QCOMPARE(m_link->multimeterMode(), 7);
        QCOMPARE(tableChanged.count(), 1);
    }

    void closingKeepsTheHistories()
    {
        receive(cVoltageMode, "1.5V", 5);
        m_link->closeDevice();
        QCOMPARE(m_link->multimeterMode(), 0);
        QCOMPARE(m_link->multimeterValue() + m_link->multimeterNumericValue() + m_link->multimeterUnit(),
                 QString());
        QCOMPARE(m_link->multimeterCurrentTable().size(), 0);
        QCOMPARE(m_link->multimeterSessionHistory().size(), 1);
        // A new connection counts and records anew.
        receive(cVoltageMode, "1.5V", 5);
        QCOMPARE(m_link->multimeterCurrentTable().size(), 1);
        QCOMPARE(m_link->multimeterSessionHistory().size(), 2);
    }

    void rowsAreRemovedAndCleared()
    {
        receive(cVoltageMode, "1.5V", 5);
        receive(cVoltageMode, "2.5V", 5);
        QSignalSpy tableChanged(m_link.get(), &HidLink::multimeterCurrentTableChanged);
        m_link->removeMultimeterCurrentTableRow(-1);
        m_link->removeMultimeterCurrentTableRow(2);
        QCOMPARE(tableChanged.count(), 0);
        m_link->removeMultimeterCurrentTableRow(1);
        QCOMPARE(tableChanged.count(), 1);
        QCOMPARE(m_link->multimeterCurrentTable().size(), 1);
        QCOMPARE(m_link->multimeterCurrentTable().first().toMap().value("VoltageValue"), QVariant("2.5V"));
        m_link->clearMultimeterCurrentTable();
        QCOMPARE(tableChanged.count(), 2);
        QCOMPARE(m_link->multimeterCurrentTable().size(), 0);
        QCOMPARE(m_link->multimeterSessionHistory().size(), 2);
        // The steady reading is not recorded again at once; another one is.
        receive(cVoltageMode, "2.5V", 5);
        QCOMPARE(m_link->multimeterCurrentTable().size(), 0);
        receive(cVoltageMode, "1.5V", 5);
        QCOMPARE(m_link->multimeterCurrentTable().size(), 1);
    }

    void withoutPersistenceTheFileIsLeftAlone()
    {
        QSignalSpy historyChanged(m_link.get(), &HidLink::multimeterHistoryChanged);
        receive(cVoltageMode, "1.5V", 5);
        QCOMPARE(m_link->multimeterHistory().size(), 0);
        QCOMPARE(historyChanged.count(), 0);
        m_link->clearMultimeterHistory();
        QCOMPARE(historyChanged.count(), 1);
        QCOMPARE(m_link->multimeterSessionHistory().size(), 0);
        QVERIFY(QDir(folders::database()).isEmpty());
    }

    void historyComesBackAfterARestart()
    {
        keepHistory(true);
        receive(cVoltageMode, "1.5V", 5);
        receive(4, "0.7V", 5);
        const QVariantList rows = m_link->multimeterHistory();
        QCOMPARE(rows.size(), 2);
        QCOMPARE(historyFile().toVariantList(), rows);
        newLink();
        QCOMPARE(m_link->multimeterHistory(), rows);
        QCOMPARE(m_link->multimeterSessionHistory().size(), 0);
        m_link->clearMultimeterHistory();
        QCOMPARE(historyFile().size(), 0);
        QVERIFY(!QDir(folders::database()).isEmpty());
    }

    void persistenceSwitchedOnWhileRunning()
    {
        receive(cVoltageMode, "1.5V", 5);
        keepHistory(true);
        receive(cVoltageMode, "2.5V", 5);
        QCOMPARE(historyFile().size(), 1);
        QCOMPARE(m_link->multimeterSessionHistory().size(), 2);
    }

    void aHistoryThatCouldNotBeSavedIsSavedAtTheEnd()
    {
        keepHistory(true);
        receive(cVoltageMode, "1.5V", 5);
        const QString folder = folders::database();
        QVERIFY(QDir(folder).removeRecursively());
        QFile inPlaceOfTheFolder(folder);
        QVERIFY(inPlaceOfTheFolder.open(QIODevice::WriteOnly));
        receive(cVoltageMode, "2.5V", 5);
        QCOMPARE(m_link->multimeterHistory().size(), 2);
        QVERIFY(inPlaceOfTheFolder.remove());
        m_link.reset();
        QCOMPARE(historyFile().size(), 2);
    }

private:
    void keepHistory(bool keep) { m_settings->setValue(setting::saveMultimeterHistoryToFile, keep); }

    void newLink()
    {
        m_link = std::make_unique<HidLink>(nullptr, nullptr, m_settings);
        m_link->setClock([this] { return m_now; });
    }

    void receive(int mode, const QString& text, int count)
    {
        for (int i = 0; i < count; ++i) {
            m_now += 100;
            const QByteArray packet = protocol::encode(protocol::MultimeterReading{mode, text});
            QVERIFY(
                QMetaObject::invokeMethod(m_link.get(), "handleIncomingPacket", Q_ARG(QByteArray, packet)));
        }
    }

    qint64 m_now = 1700000000000;
    const std::shared_ptr<SettingsFile> m_settings = std::make_shared<SettingsFile>();
    std::unique_ptr<HidLink> m_link;
};

QUORVEL_TEST_MAIN(HidLinkMultimeterTest, QCoreApplication)
#include "tst_HidLinkMultimeter.moc"
