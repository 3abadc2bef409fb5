// SPDX-License-Identifier: GPL-3.0-or-later
// Time from the click on a page's entry to the first frame that shows the whole page, and of a language
// switch with the settings page shown, against the same with an empty page in the same window. Needs a
// display: LIBGL_ALWAYS_SOFTWARE=1 xvfb-run -a page_cost
#include "app/GenApplication.h"
#include "app/GenToolbox.h"
#include "benchmarks/services/Measure.h"
#include "platform/Allocator.h"
#include "qmlsupport/QmlComponentInfo.h"
#include "qmlsupport/ToolsManager.h"
#include "system/SystemManager.h"

#include <QMouseEvent>
#include <QQmlProperty>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTemporaryDir>
#include <QTimer>

#include <array>
#include <atomic>
#include <cstdlib>
#include <functional>

namespace {

constexpr std::array<const char*, 6> cPages{"needle gauge",  "wave page",     "multimeter",
                                            "charging page", "user settings", "system settings"};
/// There are two empty pages, so that one can be opened from the other.
constexpr int cEmptyPage = 6;
constexpr int cOtherEmptyPage = 7;
constexpr int cEntries = 8;

constexpr double cHighestOpeningRatio = 4.0;
/// Index of the needle gauge, the first page that a user sees, and its aim.
constexpr size_t cGaugePage = 0;
constexpr double cHighestGaugeRatio = 1.8;
constexpr double cHighestSwitchRatio = 3.0;
constexpr int cRounds = 9;
/// Time after the start until the window has its shadow and the first timers of the core objects have run.
constexpr int cStartMs = 3000;
/// Longer than the page column's animations.
constexpr int cSettleMs = 300;
constexpr int cTimeoutMs = 20000;
/// No program listens on this port.
constexpr int cClosedPort = 9;

void settle(int ms)
{
    QEventLoop loop;
    QTimer::singleShot(ms, &loop, &QEventLoop::quit);
    loop.exec();
}

/// Returns the repeater that is nearest to the root of the tree.
QQuickItem* repeaterBelow(QQuickItem* root)
{
    QList<QQuickItem*> items = root->childItems();
    for (int i = 0; i < items.size(); ++i) {
        if (items.at(i)->inherits("QQuickRepeater"))
            return items.at(i);
        items += items.at(i)->childItems();
    }
    return nullptr;
}

/// Returns the first item of the tree that has a property of that name.
QQuickItem* itemWith(QQuickItem* root, const char* property)
{
    if (root->property(property).isValid())
        return root;
    const QList<QQuickItem*> children = root->childItems();
    for (QQuickItem* child : children) {
        if (QQuickItem* found = itemWith(child, property))
            return found;
    }
    return nullptr;
}

/// Measures the time of a change in a window, up to the first frame that shows all of it.
class FrameWatch
{
public:
    explicit FrameWatch(QQuickWindow* window)
    {
        // Both signals come on the drawing thread, the first while the GUI thread is blocked.
        QObject::connect(
            window, &QQuickWindow::afterSynchronizing, &m_context,
            [this] { m_drawn = m_waiting && m_complete(); }, Qt::DirectConnection);
        QObject::connect(
            window, &QQuickWindow::frameSwapped, &m_context,
            [this] {
                if (!m_drawn || !m_waiting.exchange(false))
                    return;
                m_nanoseconds = m_timer.nsecsElapsed();
                QMetaObject::invokeMethod(&m_loop, "quit", Qt::QueuedConnection);
            },
            Qt::DirectConnection);
    }

    /// Returns the seconds from the start of \a work to the frame in which \a complete is true. Ends the
    /// program when no such frame comes.
    double secondsOf(const std::function<void()>& work, const std::function<bool()>& complete)
    {
        QTimer limit;
        QObject::connect(&limit, &QTimer::timeout, &m_loop, [] {
            std::fprintf(stderr, "no complete frame\n");
            std::exit(1);
        });
        limit.start(cTimeoutMs);
        m_complete = complete;
        m_drawn = false;
        m_timer.start();
        m_waiting = true;
        work();
        m_loop.exec();
        return double(m_nanoseconds) / 1e9;
    }

private:
    QObject m_context;
    QEventLoop m_loop;
    QElapsedTimer m_timer;
    std::function<bool()> m_complete;
    std::atomic_bool m_waiting{false};
    std::atomic_bool m_drawn{false};
    std::atomic<qint64> m_nanoseconds{0};
};

/// The application's window with two more pages, which are empty.
class PageWindow
{
public:
    explicit PageWindow(QQuickWindow* window) : m_window(window), m_frames(window)
    {
        QQuickItem* column = itemWith(window->contentItem(), "collapsedButtonHeight");
        QQuickItem* stack = itemWith(window->contentItem(), "loadPages");
        if (!column || !stack)
            return;
        m_entries = repeaterBelow(column);
        m_loaders = repeaterBelow(stack);
        QVariantList pages = genApp()->toolbox()->toolsManager()->settingsPages();
        for (int i = 0; i < 2; ++i)
            pages.append(QVariant::fromValue(new QmlComponentInfo(
                QStringLiteral("Empty"), QUrl(QStringLiteral("qrc:/benchmark/EmptyPage.qml")),
                QUrl(QStringLiteral("qrc:/res/userSetImg.svg")), genApp())));
        for (QQuickItem* repeater : {m_entries, m_loaders})
            QQmlProperty::write(repeater, QStringLiteral("model"), pages);
        // A page may be ready before its last parts are drawn. One more frame shows them.
        for (int page = 0; page < cEntries; ++page)
            QObject::connect(itemAt(m_loaders, page), SIGNAL(statusChanged()), window, SLOT(update()));
    }

    bool isComplete() const { return m_entries && m_loaders && itemAt(m_entries, cEntries - 1); }

    /// Returns the seconds from the click on the page's entry until the whole page is on the screen.
    double open(int page)
    {
        settle(cSettleMs);
        QQuickItem* entry = itemAt(m_entries, page);
        const QQuickItem* loader = itemAt(m_loaders, page);
        const QPointF centre = entry->mapToScene(QPointF(entry->width() / 2, entry->height() / 2));
        return m_frames.secondsOf(
            [this, &centre] {
                click(QEvent::MouseButtonPress, centre, Qt::LeftButton);
                click(QEvent::MouseButtonRelease, centre, Qt::NoButton);
            },
            [loader] {
                constexpr int cReady = 1;
                return loader->isVisible() && loader->property("status").toInt() == cReady;
            });
    }

    /// Returns the seconds until the window is shown in the other language.
    double switchLanguage()
    {
        settle(cSettleMs);
        return m_frames.secondsOf([] { genApp()->setLanguage(1 - genApp()->currentLanguage()); },
                                  [] { return true; });
    }

private:
    static QQuickItem* itemAt(QQuickItem* repeater, int index)
    {
        QQuickItem* item = nullptr;
        QMetaObject::invokeMethod(repeater, "itemAt", Q_RETURN_ARG(QQuickItem*, item), Q_ARG(int, index));
        return item;
    }

    void click(QEvent::Type type, const QPointF& position, Qt::MouseButtons buttons)
    {
        QMouseEvent event(type, position, m_window->mapToGlobal(position.toPoint()), Qt::LeftButton, buttons,
                          Qt::NoModifier);
        QCoreApplication::sendEvent(m_window, &event);
    }

    QQuickWindow* m_window;
    FrameWatch m_frames;
    QQuickItem* m_entries = nullptr;
    QQuickItem* m_loaders = nullptr;
};

} // namespace

int main(int argc, char** argv)
{
    const QTemporaryDir home;
    qputenv("HOME", QFile::encodeName(home.path()));
    qputenv("QSG_RENDER_LOOP", "threaded");
    platform::returnLargeBlocksAtOnce();
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling, true);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps, true);
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts, true);
    GenApplication app(argc, argv);
    SystemManager* services = app.toolbox()->systemManager();
    services->setServerHost(QStringLiteral("http://127.0.0.1"));
    services->setDocsPort(cClosedPort);
    services->setApiPort(cClosedPort);
    app.registerQmlTypes();
    app.initQmlEngine();
    auto* rootWindow = qobject_cast<QQuickWindow*>(app.rootWindow());
    if (!rootWindow)
        return 1;
    settle(cStartMs);
    PageWindow window(rootWindow);
    if (!window.isComplete())
        return 1;
    // The comparison leaves out what is loaded or compiled only once. The first page is open already.
    for (int page = cEntries - 1; page >= 0; --page)
        window.open(page);

    std::array<std::vector<double>, cPages.size()> pages;
    std::vector<double> emptyPage;
    std::vector<double> settingsSwitch;
    std::vector<double> emptySwitch;
    for (int round = 0; round < cRounds; ++round) {
        for (size_t page = 0; page < cPages.size(); ++page) {
            window.open(cEmptyPage);
            pages.at(page).push_back(window.open(int(page)));
        }
        for (int language = 0; language < 2; ++language)
            settingsSwitch.push_back(window.switchLanguage());
        window.open(cEmptyPage);
        emptyPage.push_back(window.open(cOtherEmptyPage));
        for (int language = 0; language < 2; ++language)
            emptySwitch.push_back(window.switchLanguage());
    }
    // Ends the drawing thread, which calls into the window's watch.
    app.shutdown();

    bool met = true;
    for (size_t page = 0; page < cPages.size(); ++page) {
        const QByteArray title = QByteArray("opening the ") + cPages.at(page);
        met = report(title.constData(), "an empty page", {medianOf(pages.at(page)), medianOf(emptyPage)},
                     page == cGaugePage ? cHighestGaugeRatio : cHighestOpeningRatio) &&
              met;
    }
    met = report("language switch, system settings shown", "an empty page",
                 {medianOf(settingsSwitch), medianOf(emptySwitch)}, cHighestSwitchRatio) &&
          met;
    return met ? 0 : 2;
}
