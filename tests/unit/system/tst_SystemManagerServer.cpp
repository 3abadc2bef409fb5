// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/GenSettings.h"
#include "tests/unit/system/ManagerFixture.h"

#include <QApplication>
#include <QtTest>

using Reply = HttpFaultServer::Reply;

namespace {

const QByteArray cListPath("/api/mcu/firmware_list");

} // namespace

class SystemManagerServerTest : public ManagerTestCase
{
    Q_OBJECT

private:
    void answerWith(const Reply& reply) { m_fixture->server.setReply(cListPath, reply); }

    /// Status checks that have ended so far, by their log lines.
    QStringList checks() const { return m_fixture->log().filter("requestServerStatus finished."); }

private Q_SLOTS:
    void status_data()
    {
        const test::Table<int, QByteArray, bool> table("status", "headers", "connected");
        table.row("200", 200, {}, true);
        table.row("204", 204, {}, true);
        table.row("304", 304, {}, true);
        table.row("404", 404, {}, false);
        table.row("503", 503, {}, false);
        table.row("redirect to a page", 302, "Location: /page\r\n", true);
        table.row("redirect to nothing", 302, "Location: /missing\r\n", false);
        table.row("redirect loop", 302, "Location: /api/mcu/firmware_list\r\n", false);
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
            reply.body = catalogueOf("F1", {}, {});
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
        const test::Table<Reply> table("bad");
        const auto row = [&table](const char* name, const auto& change) {
            table.row(name, Reply::of(catalogueOf("F1", {}, {}), change));
        };
        row("mute", [](Reply& reply) { reply.mute = true; });
        row("stalled", [](Reply& reply) {
            reply.sendBytes = 10;
            reply.after = Reply::After::Stall;
        });
        row("endless", [](Reply& reply) {
            reply.body = QByteArray(40 * 1024 * 1024, ' ');
            reply.length = Reply::NoLength;
        });
        row("drip", [](Reply& reply) {
            reply.pieceBytes = 1;
            reply.pauseMs = 20;
        });
        row("truncated", [](Reply& reply) { reply.sendBytes = 10; });
        row("garbage", [](Reply& reply) { reply.raw = "no HTTP at all\r\n\r\n"; });
        row("closed", [](Reply& reply) { reply.raw = "\r\n"; });
    }

    void faults()
    {
        QFETCH(Reply, bad);
        m_fixture->timings.statusPeriodMs = 400;
        m_fixture->timings.statusTimeoutMs = 300;
        m_fixture->timings.catalogueStallMs = 300;
        m_fixture->timings.catalogueTimeoutMs = 600;
        const Reply good = Reply::of(catalogueOf("F1", {}, {}));
        answerWith(good);
        SystemManager& manager = m_fixture->start();
        QTRY_VERIFY(manager.serverConnected());
        QTRY_COMPARE(manager.mcuTypes(), QStringList{"F1"});

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
        answerWith(Reply::of(R"({"firmware":[{"type":"A"},{"type":"B"},{"type":"A"}]})"));
        SystemManager& manager = m_fixture->start();
        QTRY_COMPARE(manager.mcuTypes(), (QStringList{"A", "B", "A"}));
        QSignalSpy lists(&manager, &SystemManager::mcuTypesChanged);

        // An address of its own; a redirect is the answer itself; a page of an error is none.
        Reply other = Reply::of(catalogueOf("C", {}, {}));
        m_fixture->server.setReply("/other", other);
        manager.requestMcuTypes(m_fixture->server.url("/other"));
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
        manager.requestMcuTypes(m_fixture->server.url("/other"));
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

        manager.setServerHost(" http://127.0.0.1/ ");
        manager.setApiPort(m_fixture->server.port());
        manager.setDocsPort(0);
        QCOMPARE(hosts.count() + apis.count() + docs.count(), 0);

        manager.setDocsPort(9000);
        manager.setServerHost("localhost/");
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
        SystemManager manager(nullptr, nullptr, {}, m_fixture->services, m_fixture->timings);
        const QSignalSpy ports(&manager, &SystemManager::docsPortChanged);
        manager.setDocsPort(1234);
        QCOMPARE(manager.docsPort(), 1234);
        QCOMPARE(ports.count(), 1);
        QVERIFY(!QFile::exists(manager.systemLogFilePath()));
    }

    void closingWithRequestsUnderWay()
    {
        answerWith(Reply::of({}, [](Reply& reply) { reply.mute = true; }));
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
