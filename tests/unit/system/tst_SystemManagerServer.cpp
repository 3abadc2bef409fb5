// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/GenSettings.h"
#include "tests/support/TestCase.h"
#include "tests/unit/system/ManagerFixture.h"

#include <QApplication>
#include <QtTest>

#include <optional>

using Reply = HttpFaultServer::Reply;

namespace {

const QByteArray cListPath("/api/mcu/firmware_list");

} // namespace

class SystemManagerServerTest : public TestCase
{
    Q_OBJECT

private:
    std::optional<ManagerFixture> m_fixture;

    void answerWith(const Reply& reply) { m_fixture->server.setReply(cListPath, reply); }

    /// Status checks that have ended so far, by their log lines.
    QStringList checks() const
    {
        return m_fixture->log().filter(QStringLiteral("requestServerStatus finished."));
    }

private Q_SLOTS:
    void init()
    {
        TestCase::init();
        m_fixture.emplace();
    }

    void cleanup()
    {
        m_fixture.reset();
        TestCase::cleanup();
    }

    void status_data()
    {
        QTest::addColumn<int>("status");
        QTest::addColumn<QByteArray>("headers");
        QTest::addColumn<bool>("connected");
        QTest::newRow("200") << 200 << QByteArray() << true;
        QTest::newRow("204") << 204 << QByteArray() << true;
        QTest::newRow("304") << 304 << QByteArray() << true;
        QTest::newRow("404") << 404 << QByteArray() << false;
        QTest::newRow("503") << 503 << QByteArray() << false;
        QTest::newRow("redirect to a page") << 302 << QByteArray("Location: /page\r\n") << true;
        QTest::newRow("redirect to nothing") << 302 << QByteArray("Location: /missing\r\n") << false;
        QTest::newRow("redirect loop") << 302 << QByteArray("Location: /api/mcu/firmware_list\r\n") << false;
    }

    void status()
    {
        QFETCH(int, status);
        QFETCH(QByteArray, headers);
        QFETCH(bool, connected);
        Reply reply;
        reply.status = status;
        reply.headers = headers;
        if (status == 200)
            reply.body = catalogueOf(QStringLiteral("F1"), {}, {});
        answerWith(reply);
        m_fixture->server.setReply("/page", Reply());
        SystemManager& manager = m_fixture->start();
        const QSignalSpy changes(&manager, &SystemManager::serverConnectedChanged);
        QVERIFY(!manager.serverConnected());
        QTRY_COMPARE(checks().size(), 1);
        QCOMPARE(manager.serverConnected(), connected);
        QCOMPARE(changes.count(), int(connected));
        const auto& requests = m_fixture->server.requests();
        const bool signedRequest =
            std::any_of(requests.cbegin(), requests.cend(), [](const HttpFaultServer::Request& request) {
                return request.method == "GET" && request.headers.value("user-agent") == "Quorvel";
            });
        QVERIFY(signedRequest);
    }

    /// A server that is slow, lies or never answers: each check ends in time, and the state follows.
    void faults_data()
    {
        QTest::addColumn<QString>("fault");
        for (const char* fault : {"mute", "stalled", "endless", "drip", "truncated", "garbage", "closed"})
            QTest::newRow(fault) << QString::fromLatin1(fault);
    }

    void faults()
    {
        QFETCH(QString, fault);
        m_fixture->timings.statusPeriodMs = 400;
        m_fixture->timings.statusTimeoutMs = 300;
        m_fixture->timings.catalogueStallMs = 300;
        m_fixture->timings.catalogueTimeoutMs = 600;
        Reply good;
        good.body = catalogueOf(QStringLiteral("F1"), {}, {});
        answerWith(good);
        SystemManager& manager = m_fixture->start();
        QTRY_VERIFY(manager.serverConnected());
        QTRY_COMPARE(manager.mcuTypes(), QStringList{"F1"});

        Reply bad = good;
        if (fault == QLatin1String("mute")) {
            bad.mute = true;
        } else if (fault == QLatin1String("stalled")) {
            bad.sendBytes = 10;
            bad.after = Reply::After::Stall;
        } else if (fault == QLatin1String("endless")) {
            bad.body = QByteArray(40 * 1024 * 1024, ' ');
            bad.length = Reply::NoLength;
        } else if (fault == QLatin1String("drip")) {
            bad.pieceBytes = 1;
            bad.pauseMs = 20;
        } else if (fault == QLatin1String("truncated")) {
            bad.sendBytes = 10;
        } else if (fault == QLatin1String("garbage")) {
            bad.raw = "no HTTP at all\r\n\r\n";
        } else {
            bad.raw = "\r\n";
        }
        answerWith(bad);
        QTRY_VERIFY(!manager.serverConnected());
        const QSignalSpy lists(&manager, &SystemManager::mcuTypesChanged);
        manager.requestMcuTypes(QString());
        QTRY_COMPARE(lists.count(), 1);
        QCOMPARE(manager.mcuTypes(), QStringList());

        // Back again: the state within one period, and the list that failed meanwhile comes along.
        answerWith(good);
        QTRY_VERIFY(manager.serverConnected());
        QTRY_COMPARE(manager.mcuTypes(), QStringList{"F1"});
    }

    void deadServer()
    {
        m_fixture->server.close();
        SystemManager& manager = m_fixture->start();
        const QSignalSpy lists(&manager, &SystemManager::mcuTypesChanged);
        QTRY_COMPARE(checks().size(), 1);
        QTRY_COMPARE(lists.count(), 1);
        QVERIFY(!manager.serverConnected());
    }

    void catalogue()
    {
        Reply reply;
        reply.body = R"({"firmware":[{"type":"A"},{"type":"B"},{"type":"A"}]})";
        answerWith(reply);
        SystemManager& manager = m_fixture->start();
        QTRY_COMPARE(manager.mcuTypes(), (QStringList{"A", "B", "A"}));
        QSignalSpy lists(&manager, &SystemManager::mcuTypesChanged);

        // An address of its own; a redirect is the answer itself; a page of an error is none.
        Reply other;
        other.body = catalogueOf(QStringLiteral("C"), {}, {});
        m_fixture->server.setReply("/other", other);
        manager.requestMcuTypes(m_fixture->server.url(QStringLiteral("/other")));
        QTRY_COMPARE(manager.mcuTypes(), QStringList{"C"});
        Reply moved;
        moved.status = 302;
        moved.headers = "Location: /other\r\n";
        answerWith(moved);
        manager.requestMcuTypes(QString());
        QTRY_COMPARE(lists.count(), 2);
        QCOMPARE(manager.mcuTypes(), QStringList());
        other.status = 500;
        m_fixture->server.setReply("/other", other);
        manager.requestMcuTypes(m_fixture->server.url(QStringLiteral("/other")));
        QTRY_COMPARE(lists.count(), 3);
        QCOMPARE(manager.mcuTypes(), QStringList());
    }

    void settersStoreTellAndAsk()
    {
        answerWith(Reply());
        SystemManager& manager = m_fixture->start();
        QTRY_COMPARE(m_fixture->server.requestCount(cListPath), 2);
        const QSignalSpy hosts(&manager, &SystemManager::serverHostChanged);
        const QSignalSpy apis(&manager, &SystemManager::apiPortChanged);
        const QSignalSpy docs(&manager, &SystemManager::docsPortChanged);

        manager.setServerHost(QStringLiteral(" http://127.0.0.1/ "));
        manager.setApiPort(m_fixture->server.port());
        manager.setDocsPort(0);
        QCOMPARE(hosts.count() + apis.count() + docs.count(), 0);

        manager.setDocsPort(9000);
        manager.setServerHost(QStringLiteral("localhost/"));
        QCOMPARE(hosts.count(), 1);
        QCOMPARE(docs.count(), 1);
        QCOMPARE(manager.serverHost(), QStringLiteral("http://localhost"));
        QCOMPARE(manager.docsZhUrl(), QStringLiteral("http://localhost:9000/"));
        QCOMPARE(manager.docsEnUrl(), QStringLiteral("http://localhost:9000/en/"));
        QTRY_COMPARE(m_fixture->server.requestCount(cListPath), 4);

        manager.setApiPort(70000);
        QCOMPARE(manager.apiPort(), 8078);
        manager.setApiPort(-1);
        QCOMPARE(apis.count(), 1);
        GenSettings* settings = m_fixture->toolbox.genSettings();
        QCOMPARE(settings->sValue("serverHost", QString(), "sysSettings"),
                 QStringLiteral("http://localhost"));
        QCOMPARE(settings->iValue("apiPort", 0, "sysSettings"), 8078);
        QCOMPARE(settings->iValue("docsPort", 0, "sysSettings"), 9000);
    }

    void storedNonsenseBecomesDefault()
    {
        GenSettings* settings = m_fixture->toolbox.genSettings();
        settings->setValue("serverHost", "  ", "sysSettings");
        settings->setValue("apiPort", 65536, "sysSettings");
        settings->setValue("docsPort", -3, "sysSettings");
        const SystemManager& manager = m_fixture->start();
        QCOMPARE(manager.serverHost(), QStringLiteral("http://127.0.0.1"));
        QCOMPARE(manager.apiPort(), 8078);
        QCOMPARE(manager.docsPort(), 8000);
    }

    void withoutSettings()
    {
        SystemManager manager(nullptr, nullptr, m_fixture->services, m_fixture->timings);
        const QSignalSpy ports(&manager, &SystemManager::docsPortChanged);
        manager.setDocsPort(1234);
        QCOMPARE(manager.docsPort(), 1234);
        QCOMPARE(ports.count(), 1);
        QVERIFY(!QFile::exists(manager.systemLogFilePath()));
    }

    void closingWithRequestsUnderWay()
    {
        Reply mute;
        mute.mute = true;
        answerWith(mute);
        SystemManager& manager = m_fixture->start();
        for (int i = 0; i < 20; ++i)
            manager.requestMcuTypes(QString());
        QTRY_VERIFY(m_fixture->server.requestCount(cListPath) > 0);
        const QSignalSpy lists(&manager, &SystemManager::mcuTypesChanged);
        m_fixture->manager.reset();
        QCOMPARE(lists.count(), 0);
        // Whatever they would still do, they do to nobody.
        m_fixture->server.dropConnections();
        QCoreApplication::processEvents();
    }
};

QUORVEL_TEST_MAIN(SystemManagerServerTest, QApplication)
#include "tst_SystemManagerServer.moc"
