// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/GenApplication.h"
#include "app/GenToolbox.h"
#include "qmlsupport/QmlComponentInfo.h"
#include "qmlsupport/ToolsManager.h"
#include "tests/support/TestCase.h"

#include <QFile>
#include <QSignalSpy>
#include <QtTest>

namespace {

QStringList titles(ToolsManager& manager)
{
    QStringList result;
    const QVariantList pages = manager.settingsPages();
    for (const QVariant& page : pages)
        result.append(page.value<QmlComponentInfo*>()->title());
    return result;
}

} // namespace

class ToolsManagerTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void pagesAreCreatedOnceAndExist()
    {
        ToolsManager& manager = *genApp()->toolbox()->toolsManager();
        const QVariantList pages = manager.settingsPages();
        QCOMPARE(pages.size(), 6);
        QCOMPARE(manager.settingsPages(), pages);
        for (const QVariant& page : pages) {
            const auto* info = page.value<QmlComponentInfo*>();
            QVERIFY2(QFile::exists(QLatin1Char(':') + info->url().path()),
                     qPrintable(info->url().toString()));
            QVERIFY2(QFile::exists(QLatin1Char(':') + info->icon().path()),
                     qPrintable(info->icon().toString()));
        }
    }

    void titlesFollowTheLanguage()
    {
        ToolsManager& manager = *genApp()->toolbox()->toolsManager();
        QCOMPARE(titles(manager), QStringList({"主供电检测", "电源波形分析", "万用表测量", "充电数据采集",
                                               "用户设置", "系统设置"}));
        auto* first = manager.settingsPages().constFirst().value<QmlComponentInfo*>();
        QSignalSpy titleChanged(first, &QmlComponentInfo::titleChanged);
        QSignalSpy pagesChanged(&manager, &ToolsManager::settingsPagesChanged);
        genApp()->setLanguage(GenApplication::English);
        QCOMPARE(titles(manager), QStringList({"Pointer Gauge", "Power Analysis", " Multimeter Gauge",
                                               "Charge Data", "User Settings", "System Settings"}));
        QCOMPARE(titleChanged.count(), 1);
        QCOMPARE(pagesChanged.count(), 1);

        manager.refreshTitles();
        QCOMPARE(titleChanged.count(), 1);
        QCOMPARE(pagesChanged.count(), 2);
    }
};

QUORVEL_TEST_MAIN(ToolsManagerTest, GenApplication)
#include "tst_ToolsManager.moc"
