// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/TestCase.h"

#include <QCoreApplication>
#include <QTranslator>
#include <QtTest>

/// Checks the compiled catalogues at the places where mistakes are likely.
class TestCatalogues : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void chinese_data()
    {
        const test::Table<QByteArray, QByteArray, QByteArray, QString> table("context", "source",
                                                                             "disambiguation", "expected");
        table.row("initial label of the update dialog", "UpgradeWindow", "Connect to Server...", "",
                  "正在连接服务器...");
        table.row("label after the start status", "UpgradeWindow", "Connect to Server...", "连接服务器...",
                  "连接服务器...");
        table.row("a disambiguation without entry finds the plain one", "UpgradeWindow",
                  "Connect to Server...", "正在连接", "正在连接服务器...");
        table.row("upgrade on the settings page", "SysSettings", "Upgrade", "", "升级");
        table.row("upgrade in the update dialog", "UpgradeWindow", "Upgrade", "", "更新");
        table.row("cancel in the update dialog", "UpgradeWindow", "Cancel", "", "退出");
        table.row("asked with the Chinese text", "PointerGauge", "Range", "量程档", "量程档");
        table.row("only with its disambiguation", "UserSettings", "Register", "注册", "注册");
        table.row("leading space", "ToolsManager", " Multimeter Gauge", "", "万用表测量");
        table.row("trailing space", "PoweWaveAnalysis", "Saved: ", "", "已保存:");
        table.row("symbol", "DataBaseShow", "Resistance(Ω)", "", "电阻档(Ω)");
        table.row("example address", "SysSettings", "Example: http://127.0.0.1", "",
                  "例如：http://127.0.0.1");
        table.row("message box", "QObject", "An application is already running.", "", "应用程序已经在运行。");
        table.row("for assistive technology", "GenTitleBar", "Close", "", "关闭");
        // Entries without a translation keep the source text.
        table.row("badge F", "ChargeData", "F", "", "F");
        table.row("badge S", "ChargeData", "S", "", "S");
        table.row("English manual", "SysSettings", "English Manual", "", "English Manual");
        table.row("history page", "ToolsManager", "DataBase Show", "", "DataBase Show");
        table.row("driver message", "SystemManager", "FEL driver installation failed. Exit code: %1", "",
                  "FEL driver installation failed. Exit code: %1");
    }

    void chinese()
    {
        QFETCH(QByteArray, context);
        QFETCH(QByteArray, source);
        QFETCH(QByteArray, disambiguation);
        QTranslator translator;
        QVERIFY(translator.load(":/localization/gen_cn.qm"));
        QVERIFY(QCoreApplication::installTranslator(&translator));
        QTranslator accessibility;
        QVERIFY(accessibility.load(":/localization/accessibility_cn.qm"));
        QVERIFY(QCoreApplication::installTranslator(&accessibility));

        QTEST(QCoreApplication::translate(context.constData(), source.constData(),
                                          disambiguation.isEmpty() ? nullptr : disambiguation.constData()),
              "expected");
    }

    void englishLeavesTheSourceTexts()
    {
        QTranslator translator;
        QVERIFY(translator.load(":/localization/gen_en.qm"));
        QVERIFY(!translator.isEmpty());
        QVERIFY(QCoreApplication::installTranslator(&translator));

        QCOMPARE(QCoreApplication::translate("ToolsManager", "Power Analysis"),
                 QStringLiteral("Power Analysis"));
        QCOMPARE(QCoreApplication::translate("SysSettings", "Upgrade"), QStringLiteral("Upgrade"));
    }
};

QUORVEL_TEST_MAIN(TestCatalogues, QCoreApplication)
#include "tst_Catalogues.moc"
