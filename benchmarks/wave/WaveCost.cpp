// SPDX-License-Identifier: GPL-3.0-or-later
// Processor time of the wave page (all threads, drawing included) against bare charts that are updated as
// often. Needs a display: LIBGL_ALWAYS_SOFTWARE=1 xvfb-run -a wave_cost
#include "app/GenApplication.h"
#include "benchmarks/services/Measure.h"

#include <QQmlApplicationEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTemporaryDir>
#include <QTimer>
#include <QXYSeries>

#include <cmath>
#include <ctime>
#include <functional>

namespace {

constexpr int cRounds = 5;
constexpr int cTicks = 80;
/// Longer than the time of any frame, so that every tick is drawn.
constexpr int cTickIntervalMs = 60;
constexpr int cLiveIntervalMs = 80;
constexpr int cViewSamples = 60;
constexpr int cRecordedSamples = 3000;
constexpr int cOverviewPoints = 300;
constexpr double cHighestRatio = 1.3;
constexpr double cHighestOverviewRatio = 1.1;

double seconds(clockid_t clock)
{
    timespec time{};
    clock_gettime(clock, &time);
    return double(time.tv_sec) + double(time.tv_nsec) / 1e9;
}

/// Calls \a tick \a ticks times, \a intervalMs apart, and handles the events that follow. Returns the seconds
/// of \a clock per tick.
double secondsPerTick(int ticks, int intervalMs, clockid_t clock, const std::function<void()>& tick)
{
    QEventLoop loop;
    QTimer timer;
    int left = ticks;
    QObject::connect(&timer, &QTimer::timeout, &loop, [&loop, &tick, &left] {
        if (left-- > 0)
            tick();
        else
            loop.quit();
    });
    const double before = seconds(clock);
    timer.start(intervalMs);
    loop.exec();
    return (seconds(clock) - before) / ticks;
}

void call(QObject* object, const char* function)
{
    QMetaObject::invokeMethod(object, function);
}

/// A bare chart in a window of its own.
class BareChart
{
public:
    BareChart(QQmlApplicationEngine& engine, const QSize& size, int seriesCount, int points)
        : m_points(points), m_stride(points == cViewSamples ? 1 : cRecordedSamples / points)
    {
        engine.load(QUrl(QStringLiteral("qrc:/benchmark/BareChart.qml")));
        m_window = qobject_cast<QQuickWindow*>(engine.rootObjects().constLast());
        m_window->setProperty("seriesCount", seriesCount);
        m_window->setProperty("axesShown", points == cViewSamples);
        m_window->resize(size);
        QMetaObject::invokeMethod(m_window, "setSpan", Q_ARG(QVariant, points));
        const QVariantList series = m_window->property("series").toList();
        for (int i = 0; i < seriesCount; ++i)
            m_series.push_back(qobject_cast<QtCharts::QXYSeries*>(series.value(i).value<QObject*>()));
        m_window->hide();
    }

    /// Gives the curves the width of those of the page's \a chart, and the same part of the window.
    void drawLike(QQuickItem* chart)
    {
        QMetaObject::invokeMethod(m_window, "drawLike",
                                  Q_ARG(QVariant, QVariant::fromValue<QObject*>(chart)));
    }

    void show(bool shown) { m_window->setVisible(shown); }

    /// Replaces each series once by the curves that the page shows: by every m_stride-th sample.
    void tick()
    {
        ++m_tick;
        for (size_t i = 0; i < m_series.size(); ++i) {
            QVector<QPointF> points;
            for (int point = 0; point < m_points; ++point) {
                const int sample = point * m_stride + m_tick;
                points.append(
                    {double(point), i == 1 ? 2 + std::sin(sample / 9.0) : 5 + 0.2 * std::sin(sample / 5.0)});
            }
            m_series.at(i)->replace(points);
        }
    }

private:
    QQuickWindow* m_window = nullptr;
    std::vector<QtCharts::QXYSeries*> m_series;
    int m_points;
    int m_stride;
    int m_tick = 0;
};

/// Measures the page and a bare chart in turn. Only one of the two windows is on the screen.
Comparison compareTicks(QQuickWindow* page, BareChart& bare, int intervalMs, clockid_t clock,
                        const std::function<void()>& pageTick)
{
    constexpr int cSettleTicks = 10;
    std::vector<double> ours;
    std::vector<double> floor;
    for (int round = 0; round < cRounds; ++round) {
        page->hide();
        bare.show(true);
        secondsPerTick(cSettleTicks, intervalMs, clock, [&bare] { bare.tick(); });
        floor.push_back(secondsPerTick(cTicks, intervalMs, clock, [&bare] { bare.tick(); }));
        bare.show(false);
        page->show();
        secondsPerTick(cSettleTicks, intervalMs, clock, pageTick);
        ours.push_back(secondsPerTick(cTicks, intervalMs, clock, pageTick));
    }
    return {medianOf(ours), medianOf(floor)};
}

QSize sizeOf(const QQuickItem* item)
{
    return QSizeF(item->width(), item->height()).toSize();
}

} // namespace

int main(int argc, char** argv)
{
    const QTemporaryDir home;
    qputenv("HOME", QFile::encodeName(home.path()));
    // A drawing thread separates the two costs on every driver.
    qputenv("QSG_RENDER_LOOP", "threaded");
    GenApplication app(argc, argv);
    app.registerQmlTypes();
    QQmlApplicationEngine engine;
    app.prepareEngine(engine);
    engine.load(QUrl(QStringLiteral("qrc:/benchmark/WaveWindow.qml")));
    if (engine.rootObjects().isEmpty())
        return 1;
    auto* window = qobject_cast<QQuickWindow*>(engine.rootObjects().constFirst());
    secondsPerTick(10, cLiveIntervalMs, CLOCK_MONOTONIC, [] {});
    QMetaObject::invokeMethod(window, "record", Q_ARG(QVariant, cRecordedSamples - 500));

    auto* panel = window->findChild<QQuickItem*>(QStringLiteral("waveChartPanel"));
    auto* overviewChart = window->findChild<QQuickItem*>(QStringLiteral("overviewChart"));
    if (!panel || !overviewChart)
        return 1;
    BareChart full(engine, window->size(), 2, cViewSamples);
    BareChart chart(engine, sizeOf(panel), 3, cViewSamples);
    BareChart strip(engine, sizeOf(overviewChart), 2, cOverviewPoints);
    strip.drawLike(overviewChart);

    // Live: the page's own timer ticks, and measurements arrive at the same rate.
    const Comparison live = compareTicks(window, full, cLiveIntervalMs, CLOCK_PROCESS_CPUTIME_ID,
                                         [window] { call(window, "measure"); });

    // The parts alone: the page's own timer is stopped.
    QMetaObject::invokeMethod(window, "setConnected", Q_ARG(QVariant, false));
    const Comparison tick = compareTicks(window, chart, cTickIntervalMs, CLOCK_THREAD_CPUTIME_ID,
                                         [window] { call(window, "tickChart"); });
    QMetaObject::invokeMethod(window, "record", Q_ARG(QVariant, cRecordedSamples));
    const Comparison overview = compareTicks(window, strip, cTickIntervalMs, CLOCK_THREAD_CPUTIME_ID,
                                             [window] { call(window, "tickOverview"); });

    bool met = report("chart tick, 60 samples in view", "replace on a bare chart", tick, cHighestRatio);
    met = report("overview rebuild, 3,000 samples", "replace on a bare chart", overview,
                 cHighestOverviewRatio) &&
          met;
    met = report("live page, each 80 ms", "bare chart, each 80 ms", live, cHighestRatio) && met;
    return met ? 0 : 2;
}
