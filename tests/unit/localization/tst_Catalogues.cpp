// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/TestCase.h"

#include <QCoreApplication>
#include <QTranslator>
#include <QtTest>

/// What the compiled catalogues say at the places where a slip would show.
class TestCatalogues : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void chinese_data();
    void chinese();
    void englishLeavesTheSourceTexts();
};

void TestCatalogues::chinese_data()
{
    QTest::addColumn<QByteArray>("context");
    QTest::addColumn<QByteArray>("source");
    QTest::addColumn<QByteArray>("disambiguation");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char* name, const char* context, const char* source, const char* disambiguation,
                        const char* expected) {
        QTest::newRow(name) << QByteArray(context) << QByteArray(source) << QByteArray(disambiguation)
                            << QString::fromUtf8(expected);
    };

    row("initial label of the update dialog", "UpgradeWindow", "Connect to Server...", "",
        "正在连接服务器...");
    row("label after the start status", "UpgradeWindow", "Connect to Server...", "连接服务器...",
        "连接服务器...");
    row("a disambiguation without entry finds the plain one", "UpgradeWindow", "Connect to Server...",
        "正在连接", "正在连接服务器...");
    row("upgrade on the settings page", "SysSettings", "Upgrade", "", "升级");
    row("upgrade in the update dialog", "UpgradeWindow", "Upgrade", "", "更新");
    row("cancel in the update dialog", "UpgradeWindow", "Cancel", "", "退出");
    row("asked with the Chinese text", "PointerGauge", "Range", "量程档", "量程档");
    row("only with its disambiguation", "UserSettings", "Register", "注册", "注册");
    row("leading space", "ToolsManager", " Multimeter Gauge", "", "万用表测量");
    row("trailing space", "PoweWaveAnalysis", "Saved: ", "", "已保存:");
    row("symbol", "DataBaseShow", "Resistance(Ω)", "", "电阻档(Ω)");
    row("example address", "SysSettings", "Example: http://127.0.0.1", "", "例如：http://127.0.0.1");
    row("message box", "QObject", "An application is already running.", "", "应用程序已经在运行。");
    row("for assistive technology", "GenTitleBar", "Close", "", "关闭");
    // Entries without a translation: the source text stays.
    row("badge F", "ChargeData", "F", "", "F");
    row("badge S", "ChargeData", "S", "", "S");
    row("English manual", "SysSettings", "English Manual", "", "English Manual");
    row("history page", "ToolsManager", "DataBase Show", "", "DataBase Show");
    row("driver message", "SystemManager", "FEL driver installation failed. Exit code: %1", "",
        "FEL driver installation failed. Exit code: %1");
}

void TestCatalogues::chinese()
{
    QFETCH(QByteArray, context);
    QFETCH(QByteArray, source);
    QFETCH(QByteArray, disambiguation);
    QTranslator translator;
    QVERIFY(translator.load(QStringLiteral(":/localization/gen_cn.qm")));
    QVERIFY(QCoreApplication::installTranslator(&translator));
    QTranslator accessibility;
    QVERIFY(accessibility.load(QStringLiteral(":/localization/accessibility_cn.qm")));
    QVERIFY(QCoreApplication::installTranslator(&accessibility));

    QTEST(QCoreApplication::translate(context.constData(), source.constData(),
                                      disambiguation.isEmpty() ? nullptr : disambiguation.constData()),
          "expected");
}

void TestCatalogues::englishLeavesTheSourceTexts()
{
    QTranslator translator;
    QVERIFY(translator.load(QStringLiteral(":/localization/gen_en.qm")));
    QVERIFY(!translator.isEmpty());
    QVERIFY(QCoreApplication::installTranslator(&translator));

    QCOMPARE(QCoreApplication::translate("ToolsManager", "Power Analysis"), QStringLiteral("Power Analysis"));
    QCOMPARE(QCoreApplication::translate("SysSettings", "Upgrade"), QStringLiteral("Upgrade"));
}

QUORVEL_TEST_MAIN(TestCatalogues, QCoreApplication)
#include "tst_Catalogues.moc"
