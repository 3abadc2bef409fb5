// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/UserFolders.h"
#include "recording/Recorder.h"
#include "recording/RecordingReader.h"
#include "recording/RecordingRepair.h"
#include "recording/RunningRecordings.h"
#include "tests/support/TestCase.h"

#include <QCoreApplication>
#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTimer>

#include <cstdio>

using namespace recording;
using namespace std::chrono_literals;

namespace {

/// How often a recording is killed; a campaign sets more.
constexpr char cKillsVariable[] = "QUORVEL_TEST_KILLS";
constexpr int cKills = 5;
constexpr char cRecordOption[] = "--record";
/// The recording lives for less than this.
constexpr int cLongestLifeMs = 3000;

/// Records 1,000 measurements a second, numbered, until this process is killed. Prints the number of each
/// measurement once it was added.
int recordUntilKilled(const QString& path)
{
    Recorder recorder;
    if (recorder.start({path, Time(0), {}}))
        return EXIT_FAILURE;
    auto next = std::chrono::steady_clock::now();
    int number = 0;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &recorder, [&] { // clazy:exclude=lambda-in-connect
        for (; next <= std::chrono::steady_clock::now(); next += 1ms) {
            protocol::Measurement values;
            values.mainTimeSec = static_cast<float>(++number);
            recorder.addMeasurement(values, next);
        }
        std::printf("%d\n", number);
        std::fflush(stdout);
    });
    timer.start(1ms);
    return QCoreApplication::exec();
}

} // namespace

/// A recording whose process is killed at any moment.
class KilledRecordingTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void theFileIsFinishedAfterwards();
};

void KilledRecordingTest::theFileIsFinishedAfterwards()
{
    bool given = false;
    const int asked = qEnvironmentVariableIntValue(cKillsVariable, &given);
    const int kills = given ? asked : cKills;
    int mostMissing = 0;
    for (int kill = 0; kill < kills; ++kill) {
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("a.qrec"));
        QProcess child;
        child.start(QCoreApplication::applicationFilePath(), {QLatin1String(cRecordOption), path});
        // Killed when it says that it has recorded for a random time.
        const int until = QRandomGenerator::global()->bounded(1, cLongestLifeMs);
        int added = 0;
        while (added < until) {
            QVERIFY(child.waitForReadyRead());
            while (child.canReadLine())
                added = child.readLine().trimmed().toInt();
        }
        child.kill();
        QVERIFY(child.waitForFinished());
        while (child.canReadLine())
            added = child.readLine().trimmed().toInt();

        QCOMPARE(running::interrupted(), QStringList{path});
        const Error error = repair::recover(path);
        QVERIFY2(!error, qPrintable(errorText(error)));
        RecordingReader reader;
        QVERIFY(reader.open(path));
        QCOMPARE(reader.info().endReason, EndReason::Interrupted);
        int number = 0;
        QVERIFY(reader.measurements({}, [&number](const recording::Measurement& measurement) {
            const bool isNext = static_cast<int>(measurement.values.mainTimeSec) == number + 1;
            number += isNext;
            return isNext;
        }));
        QCOMPARE(reader.info().rows, number);
        mostMissing = std::max(mostMissing, added - number);
    }
    qInfo("%d kills, at most %d of 1,000 measurements a second are missing", kills, mostMissing);
    // On a machine that stands still a transaction comes late, but never two of them.
    if (given)
        QVERIFY(mostMissing <= 1000);
}

int main(int argc, char** argv)
{
    const bool isChild = argc == 3 && qstrcmp(argv[1], cRecordOption) == 0;
    // The child shares the home folder of its parent.
    if (!isChild)
        test::isolateHome();
    const QCoreApplication app(argc, argv);
    if (isChild) {
        platform::redirectUserFolders(QString::fromLocal8Bit(qgetenv("HOME")));
        return recordUntilKilled(QString::fromLocal8Bit(argv[2]));
    }
    KilledRecordingTest testObject;
    return QTest::qExec(&testObject, argc, argv);
}

#include "tst_KilledRecording.moc"
