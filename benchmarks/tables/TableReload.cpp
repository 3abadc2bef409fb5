// SPDX-License-Identifier: GPL-3.0-or-later
// Time of the multimeter page to show a full table of readings, against a plain list model of the same rows.
#include "app/GenApplication.h"
#include "app/GenToolbox.h"
#include "benchmarks/services/Measure.h"
#include "hid/HidLink.h"
#include "instrument/PacketCodec.h"

#include <QFile>
#include <QQmlApplicationEngine>
#include <QTemporaryDir>

namespace {

constexpr int cRows = 1000;
constexpr int cReadingsPerRow = 5;
constexpr int cRuns = 21;
constexpr double cAim = 1.3;

using Samples = std::vector<double>;

template <class Work>
double secondsOf(Work work)
{
    QElapsedTimer timer;
    timer.start();
    work();
    return double(timer.nsecsElapsed()) / 1e9;
}

/// Makes the link record one row.
void record(HidLink& link, int number)
{
    const protocol::MultimeterReading reading{2, QStringLiteral("%1.5kOhm").arg(number)};
    const QByteArray packet = protocol::encode(reading);
    for (int i = 0; i < cReadingsPerRow; ++i)
        QMetaObject::invokeMethod(&link, "handleIncomingPacket", Qt::DirectConnection,
                                  Q_ARG(QByteArray, packet));
}

} // namespace

int main(int argc, char** argv)
{
    const QTemporaryDir home;
    qputenv("HOME", QFile::encodeName(home.path()));
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    GenApplication app(argc, argv);
    app.registerQmlTypes();
    HidLink& link = *app.toolbox()->hidLink();
    for (int i = 0; i < cRows; ++i)
        record(link, i);

    QQmlApplicationEngine engine;
    app.prepareEngine(engine);
    engine.load(QUrl(QStringLiteral("qrc:/benchmarks/Tables.qml")));
    if (engine.rootObjects().isEmpty())
        return 1;
    QObject* tables = engine.rootObjects().constFirst();
    int rows = 0;
    const auto call = [tables, &rows](const char* function) {
        QVariant result;
        QMetaObject::invokeMethod(tables, function, Q_RETURN_ARG(QVariant, result));
        rows = result.toInt();
    };

    int number = cRows;
    const auto compareAfter = [&](int newRows) {
        Samples reload;
        Samples fill;
        for (int run = 0; run < cRuns; ++run) {
            // The page gets all new rows with one signal.
            link.blockSignals(true);
            for (int i = 0; i < newRows; ++i)
                record(link, number++);
            link.blockSignals(false);
            // Drawing costs the same in both cases and is not part of the reload.
            QCoreApplication::processEvents();
            fill.push_back(secondsOf([&call] { call("fill"); }));
            reload.push_back(secondsOf([&call] { call("reload"); }));
        }
        return Comparison{medianOf(reload), medianOf(fill)};
    };
    const Comparison allNew = compareAfter(cRows);
    const Comparison oneNew = compareAfter(1);
    if (rows != cRows) {
        std::fprintf(stderr, "%d of %d rows\n", rows, cRows);
        return 1;
    }
    const bool met = report("1,000 rows, all new", "plain model", allNew, cAim) &
                     report("1,000 rows, one new", "plain model", oneNew, cAim);
    return met ? 0 : 2;
}
