// SPDX-License-Identifier: GPL-3.0-or-later
#include "network/ServerAddress.h"
#include "tests/support/TestCase.h"

#include <QtTest>

class ServerAddressTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void hosts_data()
    {
        const test::Table<QString, QString> table("host", "base");
        table.row("blanks, slashes, no scheme", " \t10.0.0.7///\n", "http://10.0.0.7");
        table.row("https", "https://lab.local/", "https://lab.local");
        table.row("scheme in upper case", "HTTP://lab", "http://HTTP://lab");
        table.row("empty", "", "http://127.0.0.1");
        table.row("blank", "  \t ", "http://127.0.0.1");
        table.row("slashes only", "///", "http://");
        table.row("path stays", "lab/sub/", "http://lab/sub");
    }

    void hosts()
    {
        QFETCH(QString, host);
        QTEST(server::normalizeServerHost(host), "base");
    }

    void urls()
    {
        const QString host = "lab/";
        QCOMPARE(server::url(host, 8078, "/api/x"), QStringLiteral("http://lab:8078/api/x"));
        QCOMPARE(server::url(host, 8078, "api/x"), QStringLiteral("http://lab:8078/api/x"));
    }

    void ports()
    {
        for (const int bad : {0, -1, 65536, std::numeric_limits<int>::min()})
            QCOMPARE(server::portOr(bad, 8078), 8078);
        for (const int good : {1, 8078, 65535})
            QCOMPARE(server::portOr(good, 8000), good);
    }
};

QUORVEL_TEST_MAIN(ServerAddressTest, QCoreApplication)
#include "tst_ServerAddress.moc"
