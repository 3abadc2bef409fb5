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
        const test::Table<int, QStringList> table("action", "arguments");
        table.row("unplug", int(Action::Unplug), {});
        table.row("  burst\t2000 500 ", int(Action::Burst), {"2000", "500"});
        table.row("burst 7", int(Action::Burst), {"7", "1000"});
        table.row("log Fan started,  twice", int(Action::Log), {"Fan started,  twice"});
        table.row("set typeCMah nan", int(Action::Set), {"typeCMah", "nan"});
        table.row("auto", int(Action::Auto), {"all"});
        table.row("permission denied", int(Action::Permission), {"denied"});
        table.row("device-info QI-1", int(Action::DeviceInfo), {"QI-1", "1.0.0"});
    }

    void command()
    {
        const ParsedCommand parsed = parseCommand(QTest::currentDataTag());
        QCOMPARE(parsed.error, QString());
        QTEST(int(parsed.command.action), "action");
        QTEST(parsed.command.arguments, "arguments");
    }

    void refusedCommand_data()
    {
        const test::Table<QString, QString> table("line", "complaint");
        table.row("nothing", "", "unknown command");
        table.row("unknown", "jump", "unknown command \"jump\"");
        table.row("missing argument", "silence", "use: silence <seconds>");
        table.row("too many", "unplug now", "too many arguments");
        table.row("no number", "garbage many", "must be a number");
        table.row("fraction of a packet", "garbage 1.5", "must be a number");
        table.row("out of range", "screen 5", "from 1 to 4");
        table.row("negative", "silence -1", "from 0");
        table.row("no choice", "permission maybe", "granted or denied");
        table.row("no value of the packet", "set voltage 5", "no measurement value");
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
        const Scenario scenario = Scenario::parse("# comment only\n"
                                                  "5 unplug # why\n"
                                                  "\n"
                                                  "+2.5 replug\n"
                                                  "1 log first\n"
                                                  "1 log second\n"
                                                  "9 repeat\n",
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
        const test::Table<QString, QString> table("text", "complaint");
        table.row("no time", "1 unplug\nreplug", "line 2: a step is a time");
        table.row("bad command", "1 unplug\n2 screen 9", "line 2: number must be");
        table.row("after repeat", "5 repeat\n6 unplug", "nothing follows");
        table.row("at once for ever", "0 repeat", "above 0");
        table.row("later than repeat", "8 unplug\n5 repeat", "due after");
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
