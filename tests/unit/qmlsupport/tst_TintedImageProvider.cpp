// SPDX-License-Identifier: GPL-3.0-or-later
#include "qmlsupport/TintedImageProvider.h"
#include "tests/support/TestCase.h"

#include <QGuiApplication>
#include <QImage>
#include <QtTest>

class TintedImageProviderTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void everyPixelTakesTheColour()
    {
        TintedImageProvider provider;
        QSize natural;
        const QImage image = provider.requestImage(
            QStringLiteral("%23ff8000/qrc%3A%2Fbasic%2Fcheckbox-blank.svg"), &natural, QSize(48, 48));
        QCOMPARE(natural, QSize(24, 24));
        QCOMPARE(image.size(), QSize(48, 48));
        // The left edge of the box; its middle is empty.
        QCOMPARE(image.pixelColor(7, 24), QColor(0xff, 0x80, 0x00));
        QCOMPARE(image.pixelColor(24, 24).alpha(), 0);
    }

    void translucentColourKeepsItsAlpha()
    {
        TintedImageProvider provider;
        const QImage image = provider.requestImage(
            QStringLiteral("%2380ffffff/qrc%3A%2Fbasic%2Fcheckbox-blank.svg"), nullptr, QSize(48, 48));
        QCOMPARE(image.pixelColor(7, 24).alpha(), 0x80);
    }

    void sizes_data()
    {
        QTest::addColumn<QSize>("requested");
        QTest::addColumn<QSize>("result");
        QTest::newRow("natural") << QSize() << QSize(24, 24);
        QTest::newRow("aspect is kept") << QSize(100, 30) << QSize(30, 30);
    }

    void sizes()
    {
        QFETCH(QSize, requested);
        TintedImageProvider provider;
        const QImage image =
            provider.requestImage(QStringLiteral("white/qrc%3A%2Fbasic%2Fclose.svg"), nullptr, requested);
        QTEST(image.size(), "result");
    }

    void unusableAddresses_data()
    {
        QTest::addColumn<QString>("id");
        QTest::newRow("empty") << QString();
        QTest::newRow("no colour") << QStringLiteral("nonsense/qrc%3A%2Fbasic%2Fclose.svg");
        QTest::newRow("no picture") << QStringLiteral("white/qrc%3A%2Fbasic%2Fnone.svg");
        QTest::newRow("no separator") << QStringLiteral("white");
    }

    void unusableAddresses()
    {
        QFETCH(QString, id);
        QVERIFY(TintedImageProvider().requestImage(id, nullptr, QSize(24, 24)).isNull());
    }
};

QUORVEL_TEST_MAIN(TintedImageProviderTest, QGuiApplication)
#include "tst_TintedImageProvider.moc"
