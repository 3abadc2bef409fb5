// SPDX-License-Identifier: GPL-3.0-or-later
#include "recording/RecordingWriter.h"
#include "tests/support/TestCase.h"
#include "tools/virtual-instrument/RecordingPlayback.h"

#include <QCoreApplication>
#include <QTemporaryDir>
#include <QtTest>

using namespace recording;
using namespace std::chrono_literals;

class RecordingPlaybackTest : public TestCase
{
    Q_OBJECT

private:
    static Measurement measured(Time at, float volts)
    {
        Measurement made;
        made.at = at;
        made.values.mainInputVoltage = volts;
        return made;
    }
    /// "at kind content" of each step.
    static void addTo(QStringList& texts, const std::vector<RecordingPlayback::Step>& steps)
    {
        for (const RecordingPlayback::Step& step : steps) {
            QString what = step.kind == RecordingPlayback::Kind::Unplug ? QStringLiteral("unplug")
                                                                        : QStringLiteral("plug");
            if (step.kind == RecordingPlayback::Kind::Packet)
                what = protocol::packetType(step.packet) == static_cast<int>(protocol::Type::Measurement)
                           ? QString::number(protocol::decodeMeasurement(step.packet)->mainInputVoltage)
                           : protocol::decodeMultimeter(step.packet)->text;
            texts << QStringLiteral("%1 %2").arg(step.at.count() / 1000).arg(what);
        }
    }

private Q_SLOTS:
    void everythingIsPlayedOnceAndInOrder()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("a.qrec"));
        Identity identity;
        identity.info = {QStringLiteral("QI1"), QStringLiteral("2")};
        {
            RecordingWriter writer;
            Error error;
            QVERIFY(writer.create(path, QStringLiteral("Test"), Time(0), error));
            QVERIFY(writer.append({identity, measured(0ms, 1),
                                   MultimeterRecord{50ms, 1, QStringLiteral("7V")}, measured(100ms, 2),
                                   GapBegin{100ms, GapReason::Unplugged, {}}, measured(5000ms, 3),
                                   GapBegin{5000ms, GapReason::Silence, {}}, measured(9000ms, 4)},
                                  {}, error));
            QVERIFY(writer.finish(EndReason::Stopped, 9500ms, error));
        }
        RecordingPlayback playback;
        QVERIFY(!playback.open(path));
        QCOMPARE(playback.deviceInfo().deviceId, QStringLiteral("QI1"));
        QStringList played;
        // The steps of the time end at recorded times, too.
        for (int i = 0; i < 500 && !playback.isAtEnd(); ++i)
            addTo(played, playback.advance(50ms));
        const QString reading = QStringLiteral("50 7V");
        QCOMPARE(played, (QStringList{QStringLiteral("0 1"), reading, reading, reading, reading, reading,
                                      QStringLiteral("100 2"), QStringLiteral("100 unplug"),
                                      QStringLiteral("5000 plug"), QStringLiteral("5000 3"),
                                      QStringLiteral("9000 4")}));
        QVERIFY(playback.isAtEnd());
        QCOMPARE(RecordingPlayback().open(folder.path()).failure == Failure::None, false);
    }
};

QUORVEL_TEST_MAIN(RecordingPlaybackTest, QCoreApplication)
#include "tst_RecordingPlayback.moc"
