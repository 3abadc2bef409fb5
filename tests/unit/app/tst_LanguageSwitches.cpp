// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/GenApplication.h"
#include "app/GenToolbox.h"
#include "platform/Allocator.h"
#include "system/SystemManager.h"
#include "tests/qml/TestInstrument.h"
#include "tests/support/ProcessMemory.h"
#include "tests/support/TestCase.h"
#include "tests/unit/app/ItemSearch.h"

#include <QAbstractItemModel>
#include <QQmlEngine>
#include <QQuickWindow>
#include <QRawFont>
#include <QScreen>
#include <QSignalSpy>
#include <QtTest>

#include <array>

namespace {

constexpr int cPages = 6;
constexpr int cMultimeterPage = 2;
constexpr int cSettingsPage = 5;
/// Caches (glyphs, fonts of both scripts, compiled bindings) are full after these: they take some 0.2 MiB,
/// and up to a thousand switches nothing more.
constexpr int cWarmUpSwitches = 100;
constexpr int cSwitches = 200;
/// For all the switches after the first ones: of what is allocated, which a leak of 1.3 KiB a switch exceeds,
/// and of what is resident. The latter counts the script engine's own memory too, but also what the allocator
/// keeps back between two measurements.
constexpr qint64 cHighestAllocatedKb = 128;
constexpr qint64 cHighestResidentKb = 1024;
constexpr int cMultimeterSwitches = 20;
/// No program answers on this port.
constexpr int cClosedPort = 9;

// The sanitizers keep freed memory for a while, so memory growth is not measured with them.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool cMemoryTells = false;
#else
constexpr bool cMemoryTells = true;
#endif

/// Without what only waits to be collected.
std::optional<test::ProcessMemory> usedMemory(QQmlEngine& engine)
{
    engine.collectGarbage();
    return test::processMemory();
}

/// Returns all texts of the items of the tree, in order.
QStringList textsBelow(QQuickItem* root)
{
    QStringList texts;
    const QString text = root->property("text").toString();
    if (!text.isEmpty())
        texts.append(text);
    const QList<QQuickItem*> children = root->childItems();
    for (QQuickItem* child : children)
        texts += textsBelow(child);
    return texts;
}

/// What is wrong with the bold texts of the tree: each must be drawn with the interface's own bold font,
/// which holds only the characters that it needs.
QStringList boldFaults(QQuickItem* root)
{
    QStringList faults;
    const auto font = root->property("font").value<QFont>();
    const QString text = root->property("text").toString();
    if (font.bold() && !text.isEmpty()) {
        const QRawFont bold = QRawFont::fromFont(font);
        if (bold.weight() < QFont::Bold)
            faults << text + ": not bold in " + bold.familyName();
        for (const QChar character : text) {
            if (!bold.supportsCharacter(character))
                faults << text + ": no " + character;
        }
    }
    const QList<QQuickItem*> children = root->childItems();
    for (QQuickItem* child : children)
        faults += boldFaults(child);
    return faults;
}

} // namespace

class LanguageSwitchesTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        genApp()->registerQmlTypes();
        auto* manager = genApp()->toolbox()->systemManager();
        manager->setServerHost("http://127.0.0.1");
        manager->setDocsPort(cClosedPort);
        manager->setApiPort(cClosedPort);
        QVERIFY(m_instrument.plugIn());
        QVERIFY(genApp()->initQmlEngine());
        m_window = qobject_cast<QQuickWindow*>(genApp()->rootWindow());
        QVERIFY(m_window);
        QVERIFY(QTest::qWaitForWindowExposed(m_window));
        m_stack = itemWith(m_window->contentItem(), "currentPage");
        m_column = itemWith(m_window->contentItem(), "collapsedButtonHeight");
        QVERIFY(m_stack && m_column);
    }

    /// Larger than the default size of a window.
    void windowKeepsItsSize()
    {
        const QSize size = m_window->screen()->size() - QSize(10, 10);
        m_window->resize(size);
        QVERIFY(switchLanguage());
        QVERIFY(switchLanguage());
        QCOMPARE(m_window->size(), size);
    }

    void settingsPageKeepsItsStateAndTheMemory()
    {
        QQuickItem* page = open(cSettingsPage);
        QVERIFY(page);
        auto* host = page->findChild<QQuickItem*>("hostField");
        auto* apply = page->findChild<QQuickItem*>("applyButton");
        auto* languages = page->findChild<QQuickItem*>("languageCombobox");
        QVERIFY(host && apply && languages);
        host->setProperty("text", "http://being.typed");

        const std::array<QString, 2> applyTexts{"应用", "Apply"};
        std::array<QStringList, 2> texts;
        std::optional<test::ProcessMemory> before;
        for (int count = 1; count <= cSwitches; ++count) {
            QVERIFY(switchLanguage());
            const auto language = size_t(genApp()->currentLanguage());
            // Texts of the page and of the list of pages when this language was shown first.
            const QStringList said = textsBelow(page) + textsBelow(m_column);
            if (texts.at(language).isEmpty())
                texts.at(language) = said;
            QCOMPARE(said, texts.at(language));
            QCOMPARE(apply->property("text").toString(), applyTexts.at(language));
            QCOMPARE(languages->property("currentIndex").toInt(), int(language));
            if (count == cWarmUpSwitches)
                before = usedMemory(*qmlEngine(m_window));
        }
        QVERIFY(texts.front() != texts.back());
        QCOMPARE(currentPage(), page);
        QCOMPARE(host->property("text").toString(), QStringLiteral("http://being.typed"));
        const std::optional<test::ProcessMemory> after = usedMemory(*qmlEngine(m_window));
        if (!cMemoryTells || !before || !after)
            return;
        QVERIFY(before->residentKb > 0);
        const qint64 allocatedKb = after->allocatedKb - before->allocatedKb;
        const qint64 residentKb = after->residentKb - before->residentKb;
        qInfo() << cSwitches - cWarmUpSwitches << "switches:" << allocatedKb << "KiB more allocated than"
                << before->allocatedKb << "KiB," << residentKb << "KiB more resident than"
                << before->residentKb;
        QVERIFY2(allocatedKb <= cHighestAllocatedKb, qPrintable(QString::number(allocatedKb)));
        QVERIFY2(residentKb <= cHighestResidentKb, qPrintable(QString::number(residentKb)));
    }

    void multimeterKeepsItsRows()
    {
        QQuickItem* page = open(cMultimeterPage);
        QVERIFY(page);
        constexpr int cReadingsOfARow = 5;
        for (const char* reading : {"100", "220", "470"})
            m_instrument.read(2, QLatin1String(reading), cReadingsOfARow);
        QQuickItem* table = itemWith(page, "listView");
        QVERIFY(table);
        table->setProperty("currentIndex", 1);

        const std::array<QString, 2> headers{"时间日期", "Date Time"};
        for (int count = 0; count < cMultimeterSwitches; ++count) {
            QVERIFY(switchLanguage());
            QCOMPARE(textsBelow(table).value(0), headers.at(size_t(genApp()->currentLanguage())));
            auto* model = table->property("model").value<QAbstractItemModel*>();
            QVERIFY(model);
            QCOMPARE(model->rowCount(), 3);
            QCOMPARE(table->property("currentIndex").toInt(), 1);
        }
        QCOMPARE(currentPage(), page);
    }

    void boldTextsAreInTheBoldFont()
    {
        for (int language = 0; language < 2; ++language) {
            QVERIFY(switchLanguage());
            for (int page = 0; page < cPages; ++page) {
                const QPointer<QQuickItem> before = currentPage();
                QMetaObject::invokeMethod(m_column, "selectIndex", Q_ARG(QVariant, page),
                                          Q_ARG(QVariant, true));
                QVERIFY(QTest::qWaitFor([&] { return currentPage() && currentPage() != before; },
                                        cLoadTimeoutMs));
                QVERIFY(!textsBelow(currentPage()).isEmpty());
                QCOMPARE(boldFaults(m_window->contentItem()), QStringList());
            }
        }
    }

    void cleanupTestCase() { genApp()->shutdown(); }

private:
    QQuickItem* currentPage() const { return m_stack->property("currentPage").value<QQuickItem*>(); }

    /// Opens the page like a click. Returns null when it does not load.
    QQuickItem* open(int index)
    {
        QMetaObject::invokeMethod(m_column, "selectIndex", Q_ARG(QVariant, index), Q_ARG(QVariant, true));
        const QString document =
            index == cSettingsPage ? QStringLiteral("SysSettings") : QStringLiteral("MultimeterGauge");
        const auto shown = [this, &document] {
            const QQuickItem* page = currentPage();
            return page && QString::fromLatin1(page->metaObject()->className()).startsWith(document);
        };
        return QTest::qWaitFor(shown, cLoadTimeoutMs) ? currentPage() : nullptr;
    }

    /// Changes to the other language. Returns true when the window was drawn in it.
    bool switchLanguage()
    {
        QSignalSpy frames(m_window, &QQuickWindow::frameSwapped);
        return genApp()->setLanguage(1 - genApp()->currentLanguage()) && frames.wait();
    }

    static constexpr int cLoadTimeoutMs = 20000;
    TestInstrument m_instrument{*genApp()->toolbox()->hidLink()};
    QQuickWindow* m_window = nullptr;
    QQuickItem* m_stack = nullptr;
    QQuickItem* m_column = nullptr;
};

int main(int argc, char** argv)
{
    platform::returnLargeBlocksAtOnce();
    test::isolateHome();
    GenApplication app(argc, argv);
    LanguageSwitchesTest testObject;
    return QTest::qExec(&testObject, argc, argv);
}

#include "tst_LanguageSwitches.moc"
