// SPDX-License-Identifier: GPL-3.0-or-later
#include "qmlsupport/GenPalette.h"
#include "tests/support/TestCase.h"

#include <QCoreApplication>
#include <QSignalSpy>
#include <QtTest>

class GenPaletteTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void startsDarkAndEnabled()
    {
        const GenPalette palette(nullptr, nullptr);
        QCOMPARE(palette.globalTheme(), GenPalette::Dark);
        QCOMPARE(palette.window(), QColor("#1f1f1f"));
        QCOMPARE(palette.text(), QColor("#ffffff"));
        QCOMPARE(palette.button().alpha(), 0);
        QCOMPARE(palette.leftPanelColor(), QColor("#292929"));
    }

    void everyNameHasBothProperties()
    {
        const GenPalette palette(nullptr, nullptr);
        const QStringList names = palette.colors();
        QCOMPARE(names.size(), 43);
        QCOMPARE(names.first(), QStringLiteral("windowShadeLight"));
        QCOMPARE(names.last(), QStringLiteral("toolStripFGColor"));
        for (const QString& name : names) {
            QVERIFY2(palette.property(qPrintable(name)).value<QColor>().isValid(), qPrintable(name));
            QCOMPARE(palette.property(qPrintable(name + QStringLiteral("Colors"))).toStringList().size(), 4);
        }
    }

    void colourTextsListEnabledBeforeDisabled()
    {
        const GenPalette palette(nullptr, nullptr);
        QCOMPARE(palette.windowColors(), QStringList({"#ffffff", "#ffffff", "#1f1f1f", "#232323"}));
        QCOMPARE(palette.buttonColors(), QStringList({"#4766bb", "#778899", "#000000", "#000000"}));
    }

    void themeIsSharedAndTheGroupIsNot()
    {
        GenPalette first(nullptr, nullptr);
        GenPalette second(nullptr, nullptr);
        QSignalSpy firstChanged(&first, &GenPalette::paletteChanged);
        QSignalSpy secondChanged(&second, &GenPalette::paletteChanged);

        first.setGlobalTheme(GenPalette::Dark);
        QCOMPARE(firstChanged.count(), 0);
        first.setColorGroupEnabled(false);
        QCOMPARE(first.text(), QColor("#707070"));
        QCOMPARE(second.text(), QColor("#ffffff"));
        QCOMPARE(firstChanged.count(), 1);
        QCOMPARE(secondChanged.count(), 0);

        first.setGlobalTheme(GenPalette::Light);
        QCOMPARE(second.globalTheme(), GenPalette::Light);
        QCOMPARE(second.text(), QColor("#000000"));
        QCOMPARE(secondChanged.count(), 1);
        second.setGlobalTheme(GenPalette::Dark);
    }

    void aWrittenColourReachesEveryLivingPalette()
    {
        GenPalette first(nullptr, nullptr);
        auto second = std::make_unique<GenPalette>(nullptr, nullptr);
        QSignalSpy changed(second.get(), &GenPalette::paletteChanged);
        const QColor before = first.colorRed();
        first.set_colorRed(Qt::cyan);
        QCOMPARE(second->colorRed(), QColor(Qt::cyan));
        QCOMPARE(changed.count(), 1);
        second.reset();
        first.set_colorRed(before);
        QCOMPARE(first.colorRed(), before);
    }
};

QUORVEL_TEST_MAIN(GenPaletteTest, QCoreApplication)
#include "tst_GenPalette.moc"
