// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/TestCase.h"
#include "upgrade/UpdateVersion.h"

#include <QtTest>

class UpdateVersionTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void comparison_data()
    {
        const test::Table<QString, QString, bool> table("current", "latest", "newer");
        const auto row = [&table](const char* current, const char* latest, bool newer) {
            table.row(qPrintable(QString::asprintf("%s to %s", current, latest)), current, latest, newer);
        };
        row("1.1.4", "1.1.4", false);
        row("1.1.4", "1.1.5", true);
        row("1.1.4", "1.1.10", true);
        row("1.1.9", "1.2", true);
        row("1.1.4", "2", true);
        row("1.1.4", "1.1.4.0", false);
        row("1.1.4", "1.1.4.1", true);
        // Invalid and empty parts count as 0.
        row("1.1.4", "v1.1.5", false);
        row("1.1.4", "1..5", false);
        row("", "0.0.1", true);
        // Dates and hostile lengths.
        row("1.1.4", "1.1.20261123", true);
        row("1.1.4", "1.1.4294967300", true);
        row("1.1.4", "1.1.-5", false);
        row("1.1.4", "1.1.99999999999999999999999999", false);
    }

    void comparison()
    {
        QFETCH(QString, current);
        QFETCH(QString, latest);
        QTEST(isNewerVersion(current, latest), "newer");
    }
};

QUORVEL_TEST_MAIN(UpdateVersionTest, QCoreApplication)
#include "tst_UpdateVersion.moc"
