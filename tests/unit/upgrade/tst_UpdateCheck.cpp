// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/GenApplication.h"
#include "app/GenToolbox.h"
#include "settings/GenSettings.h"
#include "tests/support/HttpFaultServer.h"
#include "tests/support/TestCase.h"
#include "upgrade/CUpgradeControl.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

using Reply = HttpFaultServer::Reply;

namespace {

const QByteArray cCheckPath = QByteArrayLiteral("/api/check_version");

GenSettings* settings()
{
    return genApp()->toolbox()->genSettings();
}

Reply offer(const QString& version)
{
    Reply reply;
    reply.body =
        QJsonDocument(QJsonObject{{QStringLiteral("data"),
                                   QJsonObject{{QStringLiteral("need_update"), true},
                                               {QStringLiteral("url"), QStringLiteral("http://h/p.exe")},
                                               {QStringLiteral("latest_version"), version},
                                               {QStringLiteral("sha256"), QStringLiteral("00")},
                                               {QStringLiteral("desc"), QStringLiteral("news")}}}})
            .toJson();
    return reply;
}

Reply text(const QByteArray& body, int status = 200)
{
    Reply reply;
    reply.body = body;
    reply.status = status;
    return reply;
}

} // namespace

/// Version checks against a real server on the loopback.
class UpdateCheckTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TestCase::init();
        m_server = std::make_unique<HttpFaultServer>();
        QVERIFY(m_server->isListening());
        settings()->setValue(QStringLiteral("serverHost"), QStringLiteral(" 127.0.0.1// "),
                             QStringLiteral("sysSettings"));
        settings()->setValue(QStringLiteral("apiPort"), m_server->port(), QStringLiteral("sysSettings"));
        settings()->setValue(QStringLiteral("ignoredVersion"), QString(), QStringLiteral("upgrade"));
        m_control = std::make_unique<CUpgradeControl>();
        m_status = std::make_unique<QSignalSpy>(m_control.get(), &CUpgradeControl::updateStatus);
        m_manual = std::make_unique<QSignalSpy>(m_control.get(), &CUpgradeControl::manualCheckFinished);
        m_offered = std::make_unique<QSignalSpy>(m_control.get(), &CUpgradeControl::needUpdate2);
    }

    void cleanup()
    {
        m_control.reset();
        m_server.reset();
        TestCase::cleanup();
    }

    void manualResults_data()
    {
        QTest::addColumn<QVariant>("reply");
        QTest::addColumn<QVariantList>("result");
        const auto result = [](bool need, const QString& latest, const QString& desc, const QString& url,
                               const QString& message) {
            return QVariantList{need, QStringLiteral("1.1.4"), latest, desc, url, message};
        };
        const auto row = [](const char* name, const Reply& reply, const QVariantList& values) {
            QTest::newRow(name) << QVariant::fromValue(reply) << values;
        };
        const QString news = QStringLiteral("news");
        const QString url = QStringLiteral("http://h/p.exe");
        const QString already = QStringLiteral("Already latest version.");
        const QString invalid = QStringLiteral("Invalid update response.");
        row("newer", offer(QStringLiteral("1.1.5")), result(true, QStringLiteral("1.1.5"), news, url, {}));
        row("same", offer(QStringLiteral("1.1.4")),
            result(false, QStringLiteral("1.1.4"), news, url, already));
        row("older", offer(QStringLiteral("1.0.9")),
            result(false, QStringLiteral("1.0.9"), news, url, already));
        row("none", text("{\"data\":{\"need_update\":false}}"),
            result(false, QStringLiteral("1.1.4"), {}, {}, already));
        row("no data", text("{}"), result(false, QStringLiteral("1.1.4"), {}, {}, already));
        row("malformed", text("{\"data\":"), result(false, {}, {}, {}, invalid));
        row("empty", text({}), result(false, {}, {}, {}, invalid));
        row("redirect", text({}, 302), result(false, {}, {}, {}, invalid));
    }

    void manualResults()
    {
        QFETCH(QVariant, reply);
        QFETCH(QVariantList, result);
        m_server->setReply(cCheckPath, reply.value<Reply>());
        m_control->checkUpdateNow();
        QTRY_COMPARE(m_manual->count(), 1);
        QCOMPARE(m_manual->first(), result);
        QCOMPARE(m_status->count(), 0);
        QCOMPARE(m_offered->count(), 0);
    }

    void requestIsAJsonPost()
    {
        m_server->setReply(cCheckPath, text("{}"));
        m_control->checkUpdateNow();
        QTRY_COMPARE(m_manual->count(), 1);
        const HttpFaultServer::Request request = m_server->requests().constFirst();
        QCOMPARE(request.method, QByteArray("POST"));
        QCOMPARE(request.headers.value("content-type"), QByteArray("application/json"));
        QCOMPARE(QJsonDocument::fromJson(request.body).object().size(), 2);
    }

    void networkErrors_data()
    {
        QTest::addColumn<QVariant>("reply");
        Reply dropped;
        dropped.raw = "HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\n{";
        Reply garbage;
        garbage.raw = QByteArray(4096, '\x80') + "\r\n\r\n";
        QTest::newRow("not found") << QVariant::fromValue(text("{}", 404));
        QTest::newRow("server error") << QVariant::fromValue(text("{\"data\":{\"need_update\":true}}", 500));
        QTest::newRow("connection dropped") << QVariant::fromValue(dropped);
        QTest::newRow("no HTTP") << QVariant::fromValue(garbage);
        // More than any answer needs: given up before it fills the memory.
        QTest::newRow("huge") << QVariant::fromValue(text(QByteArray(8 << 20, ' ')));
    }

    /// Reported for a check of either kind, with its reason for a manual one.
    void networkErrors()
    {
        QFETCH(QVariant, reply);
        m_server->setReply(cCheckPath, reply.value<Reply>());
        m_control->checkUpdateNow();
        QTRY_COMPARE(m_manual->count(), 1);
        QCOMPARE(m_manual->first().at(0).toBool(), false);
        QVERIFY(!m_manual->first().at(5).toString().isEmpty());
        QCOMPARE(*m_status, QList<QVariantList>{{CUpgradeControl::UPC_NetworkError}});

        m_control->checkUpdate(m_server->url(QString::fromLatin1(cCheckPath)));
        QTRY_COMPARE(m_status->count(), 2);
        QCOMPARE(m_manual->count(), 1);
    }

    void nobodyListens()
    {
        m_server->close();
        m_control->checkUpdateNow();
        QTRY_COMPARE(m_manual->count(), 1);
        QCOMPARE(m_status->count(), 1);
    }

    /// Only a newer version that is not ignored shows by itself; the user's own check shows it anyway.
    void automaticCheckAndIgnoredVersion()
    {
        const QString url = m_server->url(QString::fromLatin1(cCheckPath));
        m_server->setReply(cCheckPath, offer(QStringLiteral("1.2")));
        m_control->checkUpdate(url);
        QTRY_COMPARE(m_offered->count(), 1);
        QCOMPARE(m_offered->first(), (QVariantList{QStringLiteral("1.2"), QStringLiteral("news")}));

        m_control->ignoreVersion(QStringLiteral("  "));
        QCOMPARE(settings()->sValue(QStringLiteral("ignoredVersion"), {}, QStringLiteral("upgrade")),
                 QString());
        m_control->ignoreVersion(QStringLiteral(" 1.2 "));
        QCOMPARE(settings()->sValue(QStringLiteral("ignoredVersion"), {}, QStringLiteral("upgrade")),
                 QStringLiteral("1.2"));
        m_control->checkUpdate(url);
        m_control->checkUpdateNow();
        QTRY_COMPARE(m_manual->count(), 1);
        QTRY_COMPARE(m_server->requests().size(), 3);
        QVERIFY(m_manual->first().at(0).toBool());

        // A later version than the ignored one is news again.
        m_server->setReply(cCheckPath, offer(QStringLiteral("1.3")));
        m_control->checkUpdate(url);
        QTRY_COMPARE(m_offered->count(), 2);
        QCOMPARE(m_offered->at(1).constFirst().toString(), QStringLiteral("1.3"));
    }

    void checksOnceByItself()
    {
        m_server->setReply(cCheckPath, offer(QStringLiteral("1.2")));
        QTRY_COMPARE(m_offered->count(), 1);
        QCOMPARE(m_server->requestCount(cCheckPath), 1);
        QCOMPARE(m_manual->count(), 0);
    }

    void manyChecksAtOnceAreAllAnswered()
    {
        Reply slow = offer(QStringLiteral("1.2"));
        slow.pieceBytes = 40;
        m_server->setReply(cCheckPath, slow);
        for (int i = 0; i < 20; ++i)
            m_control->checkUpdateNow();
        QTRY_COMPARE(m_manual->count(), 20);
    }

    void maySafelyGoDuringACheck()
    {
        Reply mute;
        mute.mute = true;
        m_server->setReply(cCheckPath, mute);
        m_control->checkUpdateNow();
        QTRY_COMPARE(m_server->requests().size(), 1);
        m_control.reset();
    }

private:
    std::unique_ptr<HttpFaultServer> m_server;
    std::unique_ptr<CUpgradeControl> m_control;
    std::unique_ptr<QSignalSpy> m_status;
    std::unique_ptr<QSignalSpy> m_manual;
    std::unique_ptr<QSignalSpy> m_offered;
};

Q_DECLARE_METATYPE(HttpFaultServer::Reply)
QUORVEL_TEST_MAIN(UpdateCheckTest, GenApplication)
#include "tst_UpdateCheck.moc"
