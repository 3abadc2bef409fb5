// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/GenApplication.h"
#include "app/GenToolbox.h"
#include "tests/support/TestCase.h"

#include <QtTest>

class GenToolboxTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void hexadecimalText_data()
    {
        const test::Table<QByteArray, QString> table("bytes", "text");
        table.row("none", {}, {});
        table.row("one", "\x05", "05");
        table.row("two", "\xAB\xCD", "AB CD");
        table.row("three", "\x0A\x1B\xFF", "0A 1B FF");
    }

    void hexadecimalText()
    {
        QFETCH(QByteArray, bytes);
        QTEST(genApp()->toolbox()->byteArrayToHexString(bytes), "text");
    }
};

QUORVEL_TEST_MAIN(GenToolboxTest, GenApplication)
#include "tst_GenToolbox.moc"
