// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/GenApplication.h"
#include "app/GenToolbox.h"
#include "settings/GenSettings.h"
#include "tests/support/TestCase.h"

#include <QtTest>

class GenToolboxTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void hexadecimalText_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("text");
        QTest::newRow("none") << QByteArray() << QString();
        QTest::newRow("one") << QByteArray("\x05") << QStringLiteral("05");
        QTest::newRow("two") << QByteArray("\xAB\xCD") << QStringLiteral("AB CD");
        QTest::newRow("three") << QByteArray("\x0A\x1B\xFF") << QStringLiteral("0A 1B FF");
    }

    void hexadecimalText()
    {
        QFETCH(QByteArray, bytes);
        QTEST(genApp()->toolbox()->byteArrayToHexString(bytes), "text");
    }

    void everyToolIsChildOfTheToolbox()
    {
        const GenToolbox* toolbox = genApp()->toolbox();
        const QObjectList tools = toolbox->children();
        QCOMPARE(tools.size(), 6);
        QCOMPARE(tools.at(2), static_cast<QObject*>(toolbox->genSettings()));
        QCOMPARE(toolbox->version(), QStringLiteral("1.1.4"));
    }
};

QUORVEL_TEST_MAIN(GenToolboxTest, GenApplication)
#include "tst_GenToolbox.moc"
