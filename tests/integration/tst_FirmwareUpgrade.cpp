// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/GenApplication.h"
#include "app/GenToolbox.h"
#include "settings/GenSettings.h"
#include "system/SystemManager.h"
#include "tests/integration/InstrumentControl.h"
#include "tests/integration/LocalServerProcess.h"
#include "tests/support/TestCase.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

namespace {

constexpr int cTimeoutMs = 60'000;
const QString cType = QStringLiteral("F1C100s-V2");

struct FlashPlace
{
    const char* name;
    qint64 address;
};
constexpr FlashPlace cPlaces[] = {{"boot.bin", 0x0}, {"logo.bin", 0x6000}, {"f1c100s.bin", 0x50000}};

} // namespace

/// Whole upgrades of the application's own system manager: boot mode by uevent, files from the local server,
/// and the flash stand-in as the tool found on PATH.
class FirmwareUpgradeTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY2(m_instrument.connectToInstrument(), "run this program under the virtual instrument");
        qputenv("QUORVEL_FLASH_IMAGE", QFile::encodeName(m_folder.filePath(QStringLiteral("flash.img"))));
        qputenv("QUORVEL_FLASH_CONTROL", QFile::encodeName(controlPath()));
        QVERIFY(m_server.start());
        m_manager = genApp()->toolbox()->systemManager();
        m_manager->setApiPort(m_server.apiPort());
        QTRY_COMPARE_WITH_TIMEOUT(m_manager->mcuTypes().size(), 2, cTimeoutMs);
        QTRY_VERIFY_WITH_TIMEOUT(m_manager->serverConnected(), cTimeoutMs);
    }

    void init()
    {
        TestCase::init();
        playFlashTool("QUORVEL_FLASH_SPEED=0\n");
        QVERIFY(m_server.command(QStringLiteral("clear")));
        QFile::remove(m_folder.filePath(QStringLiteral("flash.img")));
        QVERIFY(m_instrument.ask(QStringLiteral("boot-controller plug")).startsWith(QLatin1String("ok")));
        QTRY_VERIFY_WITH_TIMEOUT(m_manager->felReady(), cTimeoutMs);
        m_finished = std::make_unique<QSignalSpy>(m_manager, &SystemManager::upgradeFinished);
        m_progress = std::make_unique<QSignalSpy>(m_manager, &SystemManager::progressChanged);
    }

    void cleanup()
    {
        m_instrument.ask(QStringLiteral("boot-controller unplug"));
        QTRY_VERIFY_WITH_TIMEOUT(!m_manager->usbConnected(), cTimeoutMs);
        TestCase::cleanup();
    }

    void everyByteArrives()
    {
        m_manager->startUpgrade(cType);
        QTRY_COMPARE_WITH_TIMEOUT(m_finished->count(), 1, cTimeoutMs);
        QVERIFY(m_finished->first().constFirst().toBool());
        QCOMPARE(m_progress->last().constFirst().toInt(), 100);
        const QByteArray flash = flashContent();
        for (const FlashPlace& place : cPlaces) {
            const QByteArray image = download(
                m_server.url(QStringLiteral("/firmware/%1/%2").arg(cType, QLatin1String(place.name))));
            QVERIFY(image.size() > 1000);
            QVERIFY2(flash.mid(int(place.address), image.size()) == image, place.name);
        }
    }

    void faults_data()
    {
        QTest::addColumn<QByteArray>("tool");
        QTest::addColumn<QString>("server");
        QTest::newRow("transfer fails in BOOT") << QByteArray("FAIL_AT=0\nADDRESS=0x0") << QString();
        QTest::newRow("transfer fails in LOGO") << QByteArray("FAIL_AT=50\nADDRESS=0x6000") << QString();
        QTest::newRow("transfer fails in EXEC") << QByteArray("FAIL_AT=99\nADDRESS=0x50000") << QString();
        QTest::newRow("unplugged in EXEC") << QByteArray("VANISH_AT=30\nADDRESS=0x50000") << QString();
        QTest::newRow("tool is killed") << QByteArray("CRASH_AT=30\nADDRESS=0x50000") << QString();
        for (const char* fault : {"truncated", "status:404", "redirect", "loop"})
            QTest::newRow(fault)
                << QByteArray()
                << QStringLiteral("fault /firmware/%1/logo.bin %2").arg(cType, QLatin1String(fault));
    }

    /// Each ends the run with one failure, and what the server did wrong never reaches the flash.
    void faults()
    {
        QFETCH(QByteArray, tool);
        QFETCH(QString, server);
        if (!tool.isEmpty())
            playFlashTool("QUORVEL_FLASH_SPEED=0\nQUORVEL_FLASH_" + tool.replace("\n", "\nQUORVEL_FLASH_") +
                          '\n');
        if (!server.isEmpty())
            QVERIFY(m_server.command(server));
        m_manager->startUpgrade(cType);
        QTRY_COMPARE_WITH_TIMEOUT(m_finished->count(), 1, cTimeoutMs);
        QVERIFY(!m_finished->first().constFirst().toBool());
        QVERIFY(m_progress->last().constFirst().toInt() < 100);
        if (!server.isEmpty())
            QVERIFY(flashContent().isEmpty());
    }

    /// On the bus, but not answering the tool.
    void deviceThatDoesNotAnswer_data()
    {
        QTest::addColumn<QByteArray>("fault");
        QTest::newRow("gone") << QByteArray("no-device");
        QTest::newRow("no permission") << QByteArray("no-permission");
    }

    void deviceThatDoesNotAnswer()
    {
        QFETCH(QByteArray, fault);
        playFlashTool("QUORVEL_FLASH_FAULT=" + fault + '\n');
        QSignalSpy messages(m_manager, &SystemManager::logMessage);
        m_manager->startUpgrade(cType);
        QVERIFY(!m_manager->felReady());
        QVERIFY(m_manager->usbConnected());
        QCOMPARE(messages.last().constFirst().toString(),
                 QStringLiteral("FEL device not detected. Connect USB and hold the FEL key."));
        QVERIFY(flashContent().isEmpty());
    }

private:
    QString controlPath() const { return m_folder.filePath(QStringLiteral("flash.conf")); }

    void playFlashTool(const QByteArray& variables)
    {
        QFile control(controlPath());
        QVERIFY(control.open(QIODevice::WriteOnly));
        control.write(variables);
    }

    QByteArray flashContent() const
    {
        QFile image(m_folder.filePath(QStringLiteral("flash.img")));
        return image.open(QIODevice::ReadOnly) ? image.readAll() : QByteArray();
    }

    QByteArray download(const QString& url)
    {
        QNetworkAccessManager network;
        const std::unique_ptr<QNetworkReply> reply(network.get(QNetworkRequest(QUrl(url))));
        QSignalSpy finished(reply.get(), &QNetworkReply::finished);
        finished.wait(cTimeoutMs);
        return reply->readAll();
    }

    QTemporaryDir m_folder;
    InstrumentControl m_instrument;
    LocalServerProcess m_server;
    SystemManager* m_manager = nullptr;
    std::unique_ptr<QSignalSpy> m_finished;
    std::unique_ptr<QSignalSpy> m_progress;
};

QUORVEL_TEST_MAIN(FirmwareUpgradeTest, GenApplication)
#include "tst_FirmwareUpgrade.moc"
