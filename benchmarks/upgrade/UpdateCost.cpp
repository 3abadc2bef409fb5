// SPDX-License-Identifier: GPL-3.0-or-later
// Time and memory to download and verify an update of 256 MB over loopback, against curl piped into
// sha256sum, and the time for which the check blocks the window.
#include "benchmarks/services/Measure.h"
#include "upgrade/CUpgradeControl.h"
#include "upgrade/FileDigest.h"

#include <QCoreApplication>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QUrl>

namespace {

constexpr int cRuns = 5;
constexpr int cInstallerMebibytes = 256;
constexpr double cHighestRatio = 1.5;
constexpr int cHighestGrowthKb = 16 * 1024;

/// Starts the local server with a package of the measured size. Returns the URL of its API port.
QString startServer(QProcess& server)
{
    server.start(QStringLiteral(QUORVEL_LOCAL_SERVER),
                 {QStringLiteral("--api-port"), QStringLiteral("0"), QStringLiteral("--docs-port"),
                  QStringLiteral("0"), QStringLiteral("--update"), QStringLiteral("newer"),
                  QStringLiteral("--installer-size"), QString::number(cInstallerMebibytes)});
    while (!server.canReadLine() && server.waitForReadyRead(60000)) {
    }
    return QString::fromUtf8(server.readLine()).trimmed().section(QLatin1Char(' '), -1);
}

/// Runs one download. Returns true when the package passed its check.
bool updateOnce(CUpgradeControl& control)
{
    QEventLoop loop;
    int finished = 0;
    bool failed = false;
    QObject::connect(&control, &CUpgradeControl::updateStatus, &loop, [&](int status) {
        finished += status == CUpgradeControl::UPC_Finished ? 1 : 0;
        // An error before the end of the transfer comes from the automatic check.
        failed = (status == CUpgradeControl::UPC_NetworkError && finished > 0) ||
                 status == CUpgradeControl::UPC_Access;
        // The first UPC_Finished reports only the end of the transfer.
        if (failed || finished == 2)
            loop.quit();
    });
    control.startUpdate({});
    loop.exec();
    return !failed;
}

} // namespace

int main(int argc, char** argv)
{
    const QTemporaryDir folder;
    qputenv("TMPDIR", QFile::encodeName(folder.path()));
    const QCoreApplication app(argc, argv);
    QProcess server;
    const QString api = startServer(server);
    CUpgradeControl control;
    QEventLoop checked;
    QObject::connect(&control, &CUpgradeControl::needUpdate2, &checked, &QEventLoop::quit);
    control.checkUpdate(api + QStringLiteral("/api/check_version"));
    checked.exec();

    bool complete = true;
    const int memoryBefore = peakMemoryKb();
    const QString pipeline =
        QStringLiteral("curl -s %1/download/Quorvel-installer.exe | sha256sum >/dev/null").arg(api);
    const Comparison measured = compare(
        cRuns, [&] { complete = updateOnce(control) && complete; },
        [&] {
            complete =
                QProcess::execute(QStringLiteral("sh"), {QStringLiteral("-c"), pipeline}) == 0 && complete;
        });
    const int growth = peakMemoryKb() - memoryBefore;
    QElapsedTimer hashing;
    hashing.start();
    complete = !sha256OfFile(folder.filePath(QStringLiteral("Quorvel-installer.exe"))).isEmpty() && complete;
    const double hashMs = double(hashing.nsecsElapsed()) / 1e6;
    server.kill();
    server.waitForFinished();
    if (!complete) {
        std::fprintf(stderr, "an update failed\n");
        return 1;
    }
    const bool fast =
        report("download and check of a 256 MB update", "curl | sha256sum", measured, cHighestRatio);
    std::printf("%-44s %9d KiB (aim at most %d KiB)\n", "memory that six updates added", growth,
                cHighestGrowthKb);
    std::printf("%-44s %9.1f ms   of it, in which the window waits\n", "check of the package", hashMs);
    return fast && growth <= cHighestGrowthKb ? 0 : 2;
}
