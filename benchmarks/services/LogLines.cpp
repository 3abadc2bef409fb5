// SPDX-License-Identifier: GPL-3.0-or-later
// Lines per second of the daily log, against opening, appending and closing with the C library. No line may
// be missing.
#include "benchmarks/services/Measure.h"
#include "storage/DailyLog.h"
#include "storage/DataFolders.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace {

constexpr int cRuns = 5;
constexpr int cLines = 5000;
/// One line for each packet at the rate of the bus.
constexpr double cPacketsPerSec = 1000;
constexpr double cAim = 2;

qint64 linesIn(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll().count('\n') : -1;
}

} // namespace

int main(int argc, char** argv)
{
    const QTemporaryDir home;
    QDir(home.path()).mkpath(QStringLiteral("Documents"));
    qputenv("HOME", QFile::encodeName(home.path()));
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(home.path()));
    const QCoreApplication app(argc, argv);
    const DailyLog log(QStringLiteral("benchmark_%1.log"));
    const QDateTime day = QDateTime::currentDateTime();
    const QString message(180, QLatin1Char('x'));
    const QByteArray line = QByteArray(206, 'x') + '\n';
    const QByteArray plainPath = QFile::encodeName(home.filePath(QStringLiteral("plain.log")));
    const Comparison measured = compare(
        cRuns,
        [&] {
            for (int i = 0; i < cLines; ++i)
                log.append(message, day);
        },
        [&] {
            for (int i = 0; i < cLines; ++i) {
                std::FILE* file = std::fopen(plainPath.constData(), "a");
                if (file == nullptr)
                    std::abort();
                std::fwrite(line.constData(), 1, size_t(line.size()), file);
                std::fclose(file);
            }
        });
    const qint64 written = linesIn(log.filePath(day));
    if (written != qint64(cRuns + 1) * cLines) {
        std::fprintf(stderr, "%lld of %d lines are there\n", written, (cRuns + 1) * cLines);
        return 1;
    }
    const double rate = cLines / measured.oursSeconds;
    std::printf("%-44s %9.0f /s   fopen, fwrite, fclose %9.0f /s   ratio %5.2fx\n",
                "log lines, all of them there", rate, cLines / measured.floorSeconds, measured.ratio());
    std::printf("%-44s %9.1fx of one for each packet (aim at least %.0fx)\n", "", rate / cPacketsPerSec,
                cAim);
    return rate >= cAim * cPacketsPerSec ? 0 : 2;
}
