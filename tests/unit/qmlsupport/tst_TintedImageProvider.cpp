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
        const QImage image =
            provider.requestImage("%23ff8000/qrc%3A%2Fbasic%2Fcheckbox-blank.svg", &natural, QSize(48, 48));
        QCOMPARE(natural, QSize(24, 24));
        QCOMPARE(image.size(), QSize(48, 48));
        // The left edge of the box; its middle is empty.
        QCOMPARE(image.pixelColor(7, 24), QColor(0xff, 0x80, 0x00));
        QCOMPARE(image.pixelColor(24, 24).alpha(), 0);
    }

    void translucentColourKeepsItsAlpha()
    {
        TintedImageProvider provider;
        const QImage image =
            provider.requestImage("%2380ffffff/qrc%3A%2Fbasic%2Fcheckbox-blank.svg", nullptr, QSize(48, 48));
        QCOMPARE(image.pixelColor(7, 24).alpha(), 0x80);
    }

    void aspectIsKept()
    {
        const QString id = "white/qrc%3A%2Fbasic%2Fclose.svg";
        QCOMPARE(TintedImageProvider().requestImage(id, nullptr, QSize()).size(), QSize(24, 24));
        QCOMPARE(TintedImageProvider().requestImage(id, nullptr, QSize(100, 30)).size(), QSize(30, 30));
    }

    void unusableAddresses()
    {
        for (const char* id :
             {"", "nonsense/qrc%3A%2Fbasic%2Fclose.svg", "white/qrc%3A%2Fbasic%2Fnone.svg", "white"})
            QVERIFY2(TintedImageProvider().requestImage(id, nullptr, QSize(24, 24)).isNull(), id);
    }
};

QUORVEL_TEST_MAIN(TintedImageProviderTest, QGuiApplication)
#include "tst_TintedImageProvider.moc"
