// SPDX-License-Identifier: GPL-3.0-or-later
#include "firmware/FirmwareServer.h"
#include "storage/SettingsFile.h"
#include "tests/unit/firmware/FirmwareFixture.h"

#include <QtTest>

using Reply = HttpFaultServer::Reply;

namespace {

const QByteArray cListPath("/api/mcu/firmware_list");

} // namespace

class FirmwareServerTest : public FirmwareTestCase
{
    Q_OBJECT

private:
    ServerTimings m_timings;
    std::unique_ptr<FirmwareServer> m_server;

    /// Creates the object with the test server's address in the settings, and starts it as the program does.
    FirmwareServer& start()
    {
        m_server = std::make_unique<FirmwareServer>(m_fixture->settings, m_timings, m_fixture->log);
        m_server->start();
        m_server->requestCatalogue(QString());
        return *m_server;
    }

    void answerWith(const Reply& reply) { m_fixture->server.setReply(cListPath, reply); }

    /// Returns the number of finished status checks, from their log lines.
    QStringList checks() const { return m_fixture->logLines().filter("requestServerStatus finished."); }

private Q_SLOTS:
    void init()
    {
        FirmwareTestCase::init();
        m_timings = ServerTimings();
        m_timings.statusPeriodMs = 3600 * 1000;
        m_fixture->settings->setValue(setting::serverHost, "127.0.0.1");
        m_fixture->settings->setValue(setting::apiPort, m_fixture->server.port());
        m_fixture->settings->setValue(setting::docsPort, 8000);
    }

    void cleanup()
    {
        m_server.reset();
        FirmwareTestCase::cleanup();
    }

    void status_data()
    {
        const test::Table<int, QByteArray, bool> table("status", "headers", "connected");
        table.row("200", 200, {}, true);
        table.row("304", 304, {}, true);
        table.row("404", 404, {}, false);
        table.row("503", 503, {}, false);
        table.row("redirect to a page", 302, "Location: /page\r\n", true);
        table.row("redirect to nothing", 302, "Location: /missing\r\n", false);
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
        FirmwareServer& server = start();
        const QSignalSpy changes(&server, &FirmwareServer::connectedChanged);
        QVERIFY(!server.isConnected());
        QTRY_COMPARE(checks().size(), 1);
        QCOMPARE(server.isConnected(), connected);
        QCOMPARE(changes.count(), int(connected));
        const auto& requests = m_fixture->server.requests();
        const bool signedRequest =
            std::any_of(requests.cbegin(), requests.cend(), [](const HttpFaultServer::Request& request) {
                return request.method == "GET" && request.headers.value("user-agent") == "Quorvel";
            });
        QVERIFY(signedRequest);
    }

    /// The server is slow, wrong or silent. Each check ends in time, and the state is correct.
    void faults_data()
    {
        const test::Table<Reply> table("bad");
        const auto row = [&table](const char* name, const auto& change) {
            table.row(name, Reply::of(catalogueOf("F1", {}, {}), change));
        };
        row("mute", [](Reply& reply) { reply.mute = true; });
        row("endless", [](Reply& reply) {
            reply.body = QByteArray(40 * 1024 * 1024, ' ');
            reply.length = Reply::NoLength;
        });
        row("truncated", [](Reply& reply) { reply.sendBytes = 10; });
        row("garbage", [](Reply& reply) { reply.raw = "no HTTP at all\r\n\r\n"; });
    }

    void faults()
    {
        QFETCH(Reply, bad);
        m_timings.statusPeriodMs = 400;
        m_timings.statusTimeoutMs = 300;
        m_timings.catalogueStallMs = 300;
        m_timings.catalogueTimeoutMs = 600;
        const Reply good = Reply::of(catalogueOf("F1", {}, {}));
        answerWith(good);
        FirmwareServer& server = start();
        QTRY_VERIFY(server.isConnected());
        QTRY_COMPARE(server.catalogue().types, QStringList{"F1"});

        answerWith(bad);
        QTRY_VERIFY(!server.isConnected());
        const QSignalSpy lists(&server, &FirmwareServer::catalogueChanged);
        server.requestCatalogue(QString());
        QTRY_COMPARE(lists.count(), 1);
        QCOMPARE(server.catalogue().types, QStringList());

        // The server is back. Within one period the state changes and the missing list is loaded.
        answerWith(good);
        QTRY_VERIFY(server.isConnected());
        QTRY_COMPARE(server.catalogue().types, QStringList{"F1"});
    }

    void catalogue()
    {
        answerWith(Reply::of(R"({"firmware":[{"type":"A"},{"type":"B"},{"type":"A"}]})"));
        FirmwareServer& server = start();
        QTRY_COMPARE(server.catalogue().types, (QStringList{"A", "B", "A"}));
        QSignalSpy lists(&server, &FirmwareServer::catalogueChanged);

        // The check uses the address of its server. A redirect counts as an answer, an error page does not.
        Reply other = Reply::of(catalogueOf("C", {}, {}));
        m_fixture->server.setReply("/other", other);
        server.requestCatalogue(m_fixture->server.url("/other"));
        QTRY_COMPARE(server.catalogue().types, QStringList{"C"});
        Reply moved;
        moved.status = 302;
        moved.headers = "Location: /other\r\n";
        answerWith(moved);
        server.requestCatalogue(QString());
        QTRY_COMPARE(lists.count(), 2);
        QCOMPARE(server.catalogue().types, QStringList());
        other.status = 500;
        m_fixture->server.setReply("/other", other);
        server.requestCatalogue(m_fixture->server.url("/other"));
        QTRY_COMPARE(lists.count(), 3);
        QCOMPARE(server.catalogue().types, QStringList());
    }

    void settersStoreTellAndAsk()
    {
        answerWith(Reply());
        FirmwareServer& server = start();
        QTRY_COMPARE(m_fixture->server.requestCount(cListPath), 2);
        const QSignalSpy hosts(&server, &FirmwareServer::hostChanged);
        const QSignalSpy apis(&server, &FirmwareServer::apiPortChanged);
        const QSignalSpy docs(&server, &FirmwareServer::docsPortChanged);

        server.setHost(" http://127.0.0.1/ ");
        server.setApiPort(m_fixture->server.port());
        server.setDocsPort(0);
        QCOMPARE(hosts.count() + apis.count() + docs.count(), 0);

        server.setDocsPort(9000);
        server.setHost("localhost/");
        QCOMPARE(hosts.count(), 1);
        QCOMPARE(docs.count(), 1);
        QCOMPARE(server.host(), QStringLiteral("http://localhost"));
        QCOMPARE(server.docsUrl("/"), QStringLiteral("http://localhost:9000/"));
        QCOMPARE(server.docsUrl("/en/"), QStringLiteral("http://localhost:9000/en/"));
        QTRY_COMPARE(m_fixture->server.requestCount(cListPath), 4);

        server.setApiPort(70000);
        QCOMPARE(server.apiPort(), 8078);
        server.setApiPort(-1);
        QCOMPARE(apis.count(), 1);
        QCOMPARE(m_fixture->settings->value(setting::serverHost), QStringLiteral("http://localhost"));
        QCOMPARE(m_fixture->settings->value(setting::apiPort), 8078);
        QCOMPARE(m_fixture->settings->value(setting::docsPort), 9000);
    }

    void unusableSettingsAndNone()
    {
        m_fixture->settings->setValue(setting::serverHost, "  ");
        m_fixture->settings->setValue(setting::apiPort, 65536);
        m_fixture->settings->setValue(setting::docsPort, -3);
        for (const auto& settings : {m_fixture->settings, std::shared_ptr<SettingsFile>()}) {
            FirmwareServer server(settings, m_timings, m_fixture->log);
            QCOMPARE(server.host(), QStringLiteral("http://127.0.0.1"));
            QCOMPARE(server.apiPort(), 8078);
            QCOMPARE(server.docsPort(), 8000);
            server.setDocsPort(1234);
            QCOMPARE(server.docsPort(), 1234);
        }
    }

    void stoppingWithRequestsUnderWay()
    {
        answerWith(Reply::of({}, [](Reply& reply) { reply.mute = true; }));
        const QSignalSpy lists(&start(), &FirmwareServer::catalogueChanged);
        QTRY_VERIFY(m_fixture->server.requestCount(cListPath) > 0);
        m_server.reset();
        QCOMPARE(lists.count(), 0);
    }
};

QUORVEL_TEST_MAIN(FirmwareServerTest, QCoreApplication)
#include "tst_FirmwareServer.moc"
