// SPDX-License-Identifier: GPL-3.0-or-later
// Packing a log folder of 100 MB against the zip tool at the same level.
#include "benchmarks/services/Measure.h"
#include "platform/LogArchive.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>

namespace {

constexpr int cRuns = 5;
constexpr int cFiles = 20;
constexpr int cFileBytes = 5 * 1024 * 1024;
constexpr double cHighestRatio = 1.3;

/// Writes a file of packet log lines like those of a long session with debugging on.
bool writeLog(const QString& path, quint32 seed)
{
    QRandomGenerator random(seed);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    QByteArray text;
    for (int line = 0; text.size() < cFileBytes; ++line) {
        QByteArray packet(64, '\0');
        for (int i = 0; i < 24; ++i)
            packet[i] = char(random.bounded(256));
        text += "[2026-11-23 10:" + QByteArray::number(line / 60000 % 60) + ':' +
                QByteArray::number(line / 1000 % 60) + '.' + QByteArray::number(line % 1000) + "] RX " +
                packet.toHex(' ') + '\n';
    }
    return file.write(text) == text.size();
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication app(argc, argv);
    const QTemporaryDir home;
    const QString logs = home.filePath(QStringLiteral("Logs"));
    QDir().mkpath(logs);
    for (int i = 0; i < cFiles; ++i) {
        if (!writeLog(logs + QStringLiteral("/hid_link_202611%1.log").arg(i + 10), quint32(i)))
            return 1;
    }
    const QString ours = home.filePath(QStringLiteral("ours.zip"));
    const QString theirs = home.filePath(QStringLiteral("theirs.zip"));
    bool complete = true;
    QProcess zip;
    zip.setWorkingDirectory(home.path());
    const Comparison measured = compare(
        cRuns,
        [&] {
            QFile::remove(ours);
            complete =
                complete && platform::archiveFolder(logs, ours, {}, platform::cArchiveTimeLimitMs).complete;
        },
        [&] {
            QFile::remove(theirs);
            zip.start(QStringLiteral("zip"), {QStringLiteral("-1"), QStringLiteral("-q"),
                                              QStringLiteral("-r"), theirs, QStringLiteral("Logs")});
            complete = complete && zip.waitForFinished(-1) && zip.exitCode() == 0;
        });
    if (!complete) {
        std::fprintf(stderr, "an archive failed\n");
        return 1;
    }
    std::printf("%-44s %9lld KiB  zip %9lld KiB\n", "size of the archive", QFile(ours).size() / 1024,
                QFile(theirs).size() / 1024);
    return report("archive of 100 MB of logs", "zip -1", measured, cHighestRatio) ? 0 : 2;
}
