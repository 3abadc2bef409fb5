// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/integration/LocalServerProcess.h"
#include "tests/support/TestCase.h"

#include <QDir>
#include <QFile>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QtTest>

namespace {

constexpr int cTimeoutMs = 20'000;

} // namespace

/// The manual on the documentation port of the local server.
class LocalManualTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(m_folder.isValid());
        QVERIFY(m_server.start({"--manual", m_folder.filePath("site")}));
    }

    void aMissingManualSaysHowToBuildIt()
    {
        const QByteArray reply = get("/en/");
        QVERIFY(reply.startsWith("HTTP/1.1 503"));
        QVERIFY(reply.contains("--target manual"));
    }

    /// The files come after the server: it must not have to start again.
    void pages_data()
    {
        write("site/index.html", "Chinese");
        write("site/en/index.html", "English");
        write("site/_static/a.css", "style");
        write("site/_static/a.js", "script");
        write("site/_images/a.png", "picture");
        write("secret.html", "secret");
        write("site-private/a.html", "secret");
        const test::Table<QByteArray, QByteArray> table("begin", "content");
        const auto ok = [](const QByteArray& type) {
            return "HTTP/1.1 200 OK\ntext/" + type + "; charset=utf-8";
        };
        table.row("/", ok("html"), "Chinese");
        table.row("/en/", ok("html"), "English");
        table.row("/_static/a.css", ok("css"), "style");
        table.row("/_static/a.js?v=1", ok("javascript"), "script");
        table.row("/_images/a.png", "HTTP/1.1 200 OK\nimage/png", "picture");
        table.row("/en", "HTTP/1.1 302", "Location: /en/");
        table.row("/none.html", "HTTP/1.1 404", "not found");
        table.row("/../secret.html", "HTTP/1.1 404", "not found");
        table.row("/en/%2e%2e/%2e%2e/secret.html", "HTTP/1.1 404", "not found");
        table.row("/../site-private/a.html", "HTTP/1.1 404", "not found");
    }

    void pages()
    {
        QFETCH(QByteArray, begin);
        QFETCH(QByteArray, content);
        const QByteArray reply = get(QTest::currentDataTag());
        const QList<QByteArray> parts = begin.split('\n');
        QVERIFY2(reply.startsWith(parts.first()), reply.constData());
        QVERIFY2(parts.size() == 1 || reply.contains("Content-Type: " + parts.last() + "\r\n"),
                 reply.constData());
        QVERIFY2(reply.contains(content), reply.constData());
        QVERIFY2(!reply.contains("secret"), reply.constData());
    }

private:
    /// Asks for exactly this path, which a network manager would tidy up. Returns header and body.
    QByteArray get(const QByteArray& path) const
    {
        QTcpSocket socket;
        socket.connectToHost("127.0.0.1", quint16(m_server.docsPort()));
        socket.write("GET " + path + " HTTP/1.1\r\nHost: localhost\r\nConnection: close\r\n\r\n");
        QByteArray reply;
        while (socket.waitForReadyRead(cTimeoutMs))
            reply += socket.readAll();
        return reply;
    }

    void write(const QString& name, const QByteArray& text) const
    {
        const QFileInfo place(m_folder.filePath(name));
        QVERIFY(QDir().mkpath(place.path()));
        QFile file(place.filePath());
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(text), qint64(text.size()));
    }

    QTemporaryDir m_folder;
    LocalServerProcess m_server;
};

QTEST_GUILESS_MAIN(LocalManualTest)
#include "tst_LocalManual.moc"
