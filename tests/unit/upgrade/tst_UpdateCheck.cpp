// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/unit/upgrade/UpdateFixture.h"

/// Version checks against a real server on the loopback.
class UpdateCheckTest : public UpdateTestCase
{
    Q_OBJECT

private:
    static Reply offer(const QString& version)
    {
        return UpdateTestCase::offer(version, "http://h/p.exe", "00");
    }

    static Reply text(const QByteArray& body, int status = 200)
    {
        return Reply::of(body, [status](Reply& reply) { reply.status = status; });
    }

    std::unique_ptr<QSignalSpy> m_offered;

private Q_SLOTS:
    void init()
    {
        UpdateTestCase::init();
        m_offered = std::make_unique<QSignalSpy>(m_control.get(), &CUpgradeControl::needUpdate2);
    }

    void manualResults_data()
    {
        const test::Table<Reply, QVariantList> table("reply", "result");
        const auto result = [](bool need, const QString& latest, const QString& desc, const QString& url,
                               const QString& message) {
            return QVariantList{need, "1.1.4", latest, desc, url, message};
        };
        const QString news = "news";
        const QString url = "http://h/p.exe";
        const QString already = "Already latest version.";
        const QString invalid = "Invalid update response.";
        table.row("newer", offer("1.1.5"), result(true, "1.1.5", news, url, {}));
        table.row("same", offer("1.1.4"), result(false, "1.1.4", news, url, already));
        table.row("older", offer("1.0.9"), result(false, "1.0.9", news, url, already));
        table.row("none", text("{\"data\":{\"need_update\":false}}"),
                  result(false, "1.1.4", {}, {}, already));
        table.row("no data", text("{}"), result(false, "1.1.4", {}, {}, already));
        table.row("malformed", text("{\"data\":"), result(false, {}, {}, {}, invalid));
        table.row("empty", text({}), result(false, {}, {}, {}, invalid));
        table.row("redirect", text({}, 302), result(false, {}, {}, {}, invalid));
    }

    void manualResults()
    {
        QFETCH(Reply, reply);
        QFETCH(QVariantList, result);
        m_server->setReply(cCheckPath, reply);
        m_control->checkUpdateNow();
        QTRY_COMPARE(m_manual->count(), 1);
        QCOMPARE(m_manual->first(), result);
        const HttpFaultServer::Request request = m_server->requests().constFirst();
        QCOMPARE(request.method, QByteArray("POST"));
        QCOMPARE(request.headers.value("content-type"), QByteArray("application/json"));
        QCOMPARE(m_status->count(), 0);
        QCOMPARE(m_offered->count(), 0);
    }

    void networkErrors_data()
    {
        const test::Table<Reply> table("reply");
        const auto raw = [](const QByteArray& bytes) {
            return Reply::of({}, [&bytes](Reply& reply) { reply.raw = bytes; });
        };
        table.row("not found", text("{}", 404));
        table.row("server error", text("{\"data\":{\"need_update\":true}}", 500));
        table.row("connection dropped", raw("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\n{"));
        table.row("no HTTP", raw(QByteArray(4096, '\x80') + "\r\n\r\n"));
        // Larger than any answer: the check is aborted before the body fills the memory.
        table.row("huge", text(QByteArray(8 << 20, ' ')));
    }

    /// Both kinds of check report the error. A manual check also reports the reason.
    void networkErrors()
    {
        QFETCH(Reply, reply);
        m_server->setReply(cCheckPath, reply);
        m_control->checkUpdateNow();
        QTRY_COMPARE(m_manual->count(), 1);
        QCOMPARE(m_manual->first().at(0).toBool(), false);
        QVERIFY(!m_manual->first().at(5).toString().isEmpty());
        QCOMPARE(*m_status, QList<QVariantList>{{CUpgradeControl::UPC_NetworkError}});
        m_control->checkUpdate(m_server->url(cCheckPath));
        QTRY_COMPARE(m_status->count(), 2);
        QCOMPARE(m_manual->count(), 1);
        // The server has stopped listening.
        m_server->close();
        m_control->checkUpdateNow();
        QTRY_COMPARE(m_manual->count(), 2);
        QCOMPARE(m_status->count(), 3);
    }

    /// The automatic check offers only a newer version that is not ignored. A manual check offers it anyway.
    void automaticCheckAndIgnoredVersion()
    {
        const QString url = m_server->url(cCheckPath);
        m_server->setReply(cCheckPath, offer("1.2"));
        m_control->checkUpdate(url);
        QTRY_COMPARE(m_offered->count(), 1);
        QCOMPARE(m_offered->first(), (QVariantList{"1.2", "news"}));

        m_control->ignoreVersion("  ");
        QCOMPARE(settings()->sValue("ignoredVersion", {}, "upgrade"), QString());
        m_control->ignoreVersion(" 1.2 ");
        QCOMPARE(settings()->sValue("ignoredVersion", {}, "upgrade"), QStringLiteral("1.2"));
        m_control->checkUpdate(url);
        m_control->checkUpdateNow();
        QTRY_COMPARE(m_manual->count(), 1);
        QTRY_COMPARE(m_server->requests().size(), 3);
        QVERIFY(m_manual->first().at(0).toBool());

        // A later version than the ignored one is offered.
        m_server->setReply(cCheckPath, offer("1.3"));
        m_control->checkUpdate(url);
        QTRY_COMPARE(m_offered->count(), 2);
        QCOMPARE(m_offered->at(1).constFirst().toString(), QStringLiteral("1.3"));
    }

    void checksOnceByItself()
    {
        m_server->setReply(cCheckPath, offer("1.2"));
        const CUpgradeControl control(settings()->file());
        QSignalSpy offered(&control, &CUpgradeControl::needUpdate2);
        QSignalSpy manual(&control, &CUpgradeControl::manualCheckFinished);
        QTRY_COMPARE(offered.count(), 1);
        QCOMPARE(m_server->requestCount(cCheckPath), 1);
        QCOMPARE(manual.count(), 0);
    }

    void manyChecksAtOnceAreAllAnswered()
    {
        Reply slow = offer("1.2");
        slow.pieceBytes = 40;
        m_server->setReply(cCheckPath, slow);
        for (int i = 0; i < 20; ++i)
            m_control->checkUpdateNow();
        QTRY_COMPARE(m_manual->count(), 20);
        // The control may be deleted during a check.
        m_server->setReply(cCheckPath, Reply::of({}, [](Reply& reply) { reply.mute = true; }));
        m_control->checkUpdateNow();
        QTRY_COMPARE(m_server->requests().size(), 21);
        m_control.reset();
    }
};

QUORVEL_TEST_MAIN(UpdateCheckTest, GenApplication)
#include "tst_UpdateCheck.moc"
