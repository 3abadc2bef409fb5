// SPDX-License-Identifier: GPL-3.0-or-later
// Time and memory to download and save 64 MB over loopback, against curl.
#include "benchmarks/services/Measure.h"
#include "network/FileDownload.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QFile>
#include <QNetworkAccessManager>
#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>

namespace {

constexpr int cRuns = 7;
constexpr int cFileBytes = 64 * 1024 * 1024;
constexpr double cHighestRatio = 1.5;
constexpr int cHighestGrowthKb = 16 * 1024;

/// Serves \a folder in a process of its own, so that only the client is measured. Returns the port.
int startServer(QProcess& server, const QString& folder)
{
    server.start(QStringLiteral("python3"),
                 {QStringLiteral("-u"), QStringLiteral("-m"), QStringLiteral("http.server"),
                  QStringLiteral("0"), QStringLiteral("--bind"), QStringLiteral("127.0.0.1"),
                  QStringLiteral("--directory"), folder});
    // "Serving HTTP on 127.0.0.1 port 40123 (...)"
    QByteArray greeting;
    while (!greeting.contains('(') && server.waitForReadyRead(10000))
        greeting += server.readAllStandardOutput();
    server.closeReadChannel(QProcess::StandardError);
    return greeting.mid(greeting.indexOf(" port ") + 6).split(' ').first().toInt();
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication app(argc, argv);
    const QTemporaryDir folder;
    {
        QByteArray image(cFileBytes, Qt::Uninitialized);
        QRandomGenerator(1).generate(reinterpret_cast<quint32*>(image.begin()),
                                     reinterpret_cast<quint32*>(image.end()));
        QFile file(folder.filePath(QStringLiteral("image.bin")));
        if (!file.open(QIODevice::WriteOnly) || file.write(image) != image.size())
            return 1;
    }
    QProcess server;
    const int port = startServer(server, folder.path());
    const QString url = QStringLiteral("http://127.0.0.1:%1/image.bin").arg(port);
    const QString target = folder.filePath(QStringLiteral("saved.bin"));
    QNetworkAccessManager network;
    bool complete = true;
    // The peak already contains the image above. A download that kept its body would exceed it by as much
    // again.
    resetPeakMemory();
    const int memoryBefore = peakMemoryKb();
    const Comparison measured = compare(
        cRuns,
        [&] {
            FileDownload download(QUrl(url), target, {60000, 60000, 2 * cFileBytes, false}, nullptr);
            QEventLoop loop;
            QObject::connect(&download, &FileDownload::finished, &loop, &QEventLoop::quit);
            download.start(network);
            loop.exec();
            complete = complete && download.outcome().saved && download.outcome().bytes == cFileBytes;
        },
        [&] {
            const int code = QProcess::execute(QStringLiteral("curl"),
                                               {QStringLiteral("-s"), QStringLiteral("-o"), target, url});
            complete = complete && code == 0;
        });
    const int growth = peakMemoryKb() - memoryBefore;
    server.kill();
    server.waitForFinished();
    if (!complete) {
        std::fprintf(stderr, "a download failed\n");
        return 1;
    }
    const bool fast = report("download and save of 64 MB", "curl", measured, cHighestRatio);
    std::printf("%-44s %9d KiB (aim at most %d KiB)\n", "memory that eight downloads added", growth,
                cHighestGrowthKb);
    return fast && growth <= cHighestGrowthKb ? 0 : 2;
}
