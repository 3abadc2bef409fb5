// SPDX-License-Identifier: GPL-3.0-or-later
#include "recording/RecordingReport.h"
#include "recording/RecordingText.h"
#include "recording/RecordingWriter.h"
#include "recording/ReportData.h"
#include "tests/support/TestCase.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QtTest>

using namespace recording;
using namespace std::chrono_literals;

namespace {

const QString cHostile = QStringLiteral("</script><script>alert(\"1\")</script>");

Measurement measured(Time at, float volts, float amperes, float counterMah)
{
    Measurement made;
    made.at = at;
    made.values.mainInputVoltage = volts;
    made.values.mainOutputCurrent = amperes;
    made.values.mainPower = volts * amperes;
    made.values.mainMah = counterMah;
    return made;
}

} // namespace

class RecordingReportTest : public TestCase
{
    Q_OBJECT

private:
    QTemporaryDir m_folder;

    QString path(const char* name) const { return m_folder.filePath(QLatin1String(name)); }

    QString record(const char* name, const std::vector<Event>& events, Time end) const
    {
        RecordingWriter writer;
        Error error;
        // 2023-11-14 22:13:20 UTC, an hour ahead of it.
        const ClockPoint start{Time(0), 1'700'000'000'000'000, 3600};
        std::vector<Event> all{start};
        all.insert(all.end(), events.begin(), events.end());
        if (!writer.create(path(name), QStringLiteral("Test 1"), Time(0), error) ||
            !writer.append(all, start, error) || !writer.finish(EndReason::Stopped, end, error))
            qFatal("%s", qPrintable(errorText(error)));
        return path(name);
    }
    static QString page(const QString& recording)
    {
        const QString target = report::defaultTarget(recording);
        return report::write(recording, target) ? QString() : QString::fromUtf8(test::contentOf(target));
    }
    static QJsonObject charts(const QString& page)
    {
        const QString begin = QStringLiteral("id=\"data\">");
        const int from = page.indexOf(begin) + begin.size();
        return QJsonDocument::fromJson(
                   page.mid(from, page.indexOf(QStringLiteral("</script>"), from) - from).toUtf8())
            .object();
    }

private Q_SLOTS:
    void initTestCase() { QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates)); }

    void textsFromOutsideAreEscaped()
    {
        Identity identity;
        identity.info.deviceId = cHostile;
        const QString html = page(
            record("hostile.qrec",
                   {identity, measured(1s, 5, 1, 0), GapBegin{2s, GapReason::Unplugged, cHostile},
                    Mark{2500ms, cHostile}, MultimeterRecord{2600ms, 1, cHostile}, measured(3s, 5, 1, 0)},
                   4s));
        QVERIFY(!html.contains(cHostile));
        QCOMPARE(html.count(cHostile.toHtmlEscaped()), 4);
    }

    void gapsInterruptTheLinesAndAreNotIntegrated()
    {
        const QString html = page(record("gap.qrec",
                                         {measured(0s, 5, 2, 0), measured(1s, 5, 2, 0.5F),
                                          measured(2s, 5, 2, 1.111F), GapBegin{2s, GapReason::Unplugged, {}},
                                          measured(3602s, 5, 2, 2.2F), measured(3603s, 6, 2, 2.2F)},
                                         3604s));
        const QJsonObject data = charts(html);
        QCOMPARE(data.value(QStringLiteral("startMs")).toDouble(), 1'700'003'600'000.0);
        const QJsonObject main = data.value(QStringLiteral("supplies")).toArray().at(0).toObject();
        QCOMPARE(main.value(QStringLiteral("voltage")).toArray(), (QJsonArray{5, 5, 5, QJsonValue(), 5, 6}));
        QCOMPARE(data.value(QStringLiteral("gaps")).toArray(), QJsonArray({QJsonArray({2000, 3'602'000})}));
        // 2 A for 3 s, of which the counter says 1.111 mAh.
        QVERIFY(html.contains(QStringLiteral("1.667 mAh")));
        QVERIFY(html.contains(QStringLiteral("50.0 %")));
        QVERIFY(html.contains(QStringLiteral("2023-11-15 00:13:22")));
    }

    void aLongRecordingIsSummedUpWithoutLosingItsPeaks()
    {
        constexpr int cRows = 50'000;
        std::vector<Event> events;
        events.reserve(cRows);
        for (int i = 0; i < cRows; ++i)
            events.emplace_back(measured(i * 500ms, i == 31'234 ? 20.0F : 5.0F, 1, 0));
        const QJsonObject data = charts(page(record("long.qrec", events, cRows * 500ms)));
        QVERIFY(data.value(QStringLiteral("summed")).toBool());
        const QJsonArray voltage = data.value(QStringLiteral("supplies"))
                                       .toArray()
                                       .at(0)
                                       .toObject()
                                       .value(QStringLiteral("voltage"))
                                       .toArray();
        QVERIFY(voltage.size() <= report::cMostPoints);
        double highest = 0;
        for (const QJsonValue& point : voltage)
            highest = std::max(highest, point.toArray().at(2).toDouble());
        QCOMPARE(highest, 20.0);
    }

    void aRecordingWithoutMeasurementsHasAReport()
    {
        const QString html = page(record("empty.qrec", {GapBegin{0s, GapReason::NotConnected, {}}}, 4s));
        QVERIFY(html.contains(QStringLiteral("The recording has no measurements.")));
        QVERIFY(html.contains(QStringLiteral("No instrument connected")));
    }

    void failuresLeaveTheTargetAlone()
    {
        const QString target = path("kept.html");
        QVERIFY(test::writeFile(target, "kept"));
        QCOMPARE(report::write(target, target).failure, Failure::NotARecording);
        QCOMPARE(report::write(path("none.qrec"), target).failure, Failure::NotFound);
        QCOMPARE(test::contentOf(target), QByteArray("kept"));
        const Error error =
            report::write(record("unwritten.qrec", {measured(1s, 5, 1, 0)}, 2s), path("no/such.html"));
        QVERIFY(error);
        QCOMPARE(error.path, path("no/such.html"));
    }

    void valuesAreWrittenForPeople()
    {
        QCOMPARE(durationText(26h + 3min + 4999ms), QStringLiteral("26:03:04"));
        QCOMPARE(chargeText(9.8765), QStringLiteral("9.877 mAh"));
        QCOMPARE(chargeText(1234.5), QStringLiteral("1,235 mAh"));
        QCOMPARE(energyText(12.345), QStringLiteral("12.35 Wh"));
    }
};

QUORVEL_TEST_MAIN(RecordingReportTest, QCoreApplication)
#include "tst_RecordingReport.moc"
