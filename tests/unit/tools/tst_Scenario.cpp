// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/TestCase.h"
#include "tools/virtual-instrument/Scenario.h"

#include <QCoreApplication>
#include <QtTest>

class ScenarioTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void command_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<int>("action");
        QTest::addColumn<QStringList>("arguments");
        const auto row = [](const char* line, Action action, const QStringList& arguments) {
            QTest::newRow(line) << QString::fromLatin1(line) << static_cast<int>(action) << arguments;
        };
        row("unplug", Action::Unplug, {});
        row("  burst\t2000 500 ", Action::Burst, {"2000", "500"});
        row("burst 7", Action::Burst, {"7", "1000"});
        row("log Fan started,  twice", Action::Log, {"Fan started,  twice"});
        row("set typeCMah nan", Action::Set, {"typeCMah", "nan"});
        row("auto", Action::Auto, {"all"});
        row("permission denied", Action::Permission, {"denied"});
        row("device-info QI-1", Action::DeviceInfo, {"QI-1", "1.0.0"});
    }

    void command()
    {
        QFETCH(QString, line);
        const ParsedCommand parsed = parseCommand(line);
        QCOMPARE(parsed.error, QString());
        QTEST(static_cast<int>(parsed.command.action), "action");
        QTEST(parsed.command.arguments, "arguments");
    }

    void refusedCommand_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("complaint");
        QTest::newRow("nothing") << ""
                                 << "unknown command";
        QTest::newRow("unknown") << "jump"
                                 << "unknown command \"jump\"";
        QTest::newRow("missing argument") << "silence"
                                          << "use: silence <seconds>";
        QTest::newRow("too many") << "unplug now"
                                  << "too many arguments";
        QTest::newRow("no number") << "garbage many"
                                   << "must be a number";
        QTest::newRow("fraction of a packet") << "garbage 1.5"
                                              << "must be a number";
        QTest::newRow("out of range") << "screen 5"
                                      << "from 1 to 4";
        QTest::newRow("negative") << "silence -1"
                                  << "from 0";
        QTest::newRow("no choice") << "permission maybe"
                                   << "granted or denied";
        QTest::newRow("no value of the packet") << "set voltage 5"
                                                << "no measurement value";
    }

    void refusedCommand()
    {
        QFETCH(QString, line);
        QFETCH(QString, complaint);
        const QString error = parseCommand(line).error;
        QVERIFY2(error.contains(complaint), qPrintable(error));
    }

    void stepsInTheOrderOfTheirTimes()
    {
        QString error;
        const Scenario scenario = Scenario::parse(QStringLiteral("# comment only\n"
                                                                 "5 unplug # why\n"
                                                                 "\n"
                                                                 "+2.5 replug\n"
                                                                 "1 log first\n"
                                                                 "1 log second\n"
                                                                 "9 repeat\n"),
                                                  &error);
        QCOMPARE(error, QString());
        QCOMPARE(scenario.periodSec(), 9.0);
        QList<double> times;
        QStringList logs;
        for (const Scenario::Step& step : scenario.steps()) {
            times.append(step.atSec);
            logs.append(step.command.text(0));
        }
        QCOMPARE(times, (QList<double>{1, 1, 5, 7.5}));
        QCOMPARE(logs.mid(0, 2), (QStringList{"first", "second"}));
    }

    void refusedScenario_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("complaint");
        QTest::newRow("no time") << "1 unplug\nreplug"
                                 << "line 2: a step is a time";
        QTest::newRow("bad command") << "1 unplug\n2 screen 9"
                                     << "line 2: number must be";
        QTest::newRow("after repeat") << "5 repeat\n6 unplug"
                                      << "nothing follows";
        QTest::newRow("at once for ever") << "0 repeat"
                                          << "above 0";
        QTest::newRow("later than repeat") << "8 unplug\n5 repeat"
                                           << "due after";
    }

    void refusedScenario()
    {
        QFETCH(QString, text);
        QFETCH(QString, complaint);
        QString error;
        const Scenario scenario = Scenario::parse(text, &error);
        QVERIFY2(error.contains(complaint), qPrintable(error));
        QVERIFY(scenario.steps().empty());
    }
};

QUORVEL_TEST_MAIN(ScenarioTest, QCoreApplication)
#include "tst_Scenario.moc"
