// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/Command.h"
#include "cli/Console.h"
#include "cli/InstrumentSession.h"
#include "instrument/PacketCodec.h"

#include <QJsonArray>

#include <algorithm>

namespace cli {

namespace {

using Candidate = InstrumentDiscovery::Candidate;

QString stateOf(const Candidate& candidate)
{
    if (!candidate.accessAdvice.isEmpty())
        return QStringLiteral("refused");
    return candidate.users.isEmpty() ? QStringLiteral("free") : QStringLiteral("busy");
}

void printCandidate(const Candidate& candidate, bool json)
{
    if (json) {
        console::writeJson({{QStringLiteral("path"), candidate.path},
                            {QStringLiteral("product"), candidate.product},
                            {QStringLiteral("serial"), candidate.serial},
                            {QStringLiteral("state"), stateOf(candidate)},
                            {QStringLiteral("users"), QJsonArray::fromStringList(candidate.users)},
                            {QStringLiteral("advice"), candidate.accessAdvice}});
        return;
    }
    QString line = QStringLiteral("%1  %2").arg(stateOf(candidate), -8).arg(candidate.path);
    for (const QString& text : {candidate.product, candidate.serial})
        if (!text.isEmpty())
            line += QStringLiteral("  ") + text;
    if (!candidate.users.isEmpty())
        line += QStringLiteral("  (also used by %1)").arg(candidate.users.join(QStringLiteral(", ")));
    console::writeLine(line);
}

int runList(const QCommandLineParser& options, const QStringList& /*arguments*/)
{
    InstrumentDiscovery discovery;
    const std::vector<Candidate> candidates = discovery.candidates();
    for (const Candidate& candidate : candidates)
        printCandidate(candidate, options.isSet(QStringLiteral("json")));
    if (candidates.empty())
        return console::fail(NoInstrument, QStringLiteral("no instrument is connected"));
    const auto usable = std::find_if(candidates.cbegin(), candidates.cend(), [](const Candidate& candidate) {
        return candidate.accessAdvice.isEmpty();
    });
    return usable != candidates.cend() ? Success : console::fail(Refused, candidates.front().accessAdvice);
}

/// A screen or function by its number or its name; -1 for none.
int numberOf(const QString& text, int first, const QStringList& names)
{
    bool isNumber = false;
    const int number = text.toInt(&isNumber);
    if (!isNumber) {
        const int index = names.indexOf(text.toLower());
        return index < 0 ? -1 : first + index;
    }
    return number >= first && number < first + names.size() ? number : -1;
}

int sendScreen(int layer0, int layer1)
{
    InstrumentSession session;
    return session.send({protocol::encode(protocol::UiControl{
        protocol::HostRequest, layer0, layer1, protocol::cLayerNotGiven, protocol::cLayerNotGiven})});
}

QStringList screenNames()
{
    return {QStringLiteral("main"), QStringLiteral("type-c"), QStringLiteral("wave"),
            QStringLiteral("multimeter")};
}

QStringList functionNames()
{
    return {QStringLiteral("voltage"), QStringLiteral("resistance"), QStringLiteral("capacitance"),
            QStringLiteral("diode"), QStringLiteral("buzzer")};
}

int runScreen(const QCommandLineParser& /*options*/, const QStringList& arguments)
{
    const int screen = numberOf(arguments.first(), protocol::MainSupplyScreen, screenNames());
    if (screen < 0)
        return console::fail(WrongUsage, QStringLiteral("no such screen: %1").arg(arguments.first()));
    return sendScreen(screen, protocol::cLayerNotGiven);
}

int runFunction(const QCommandLineParser& /*options*/, const QStringList& arguments)
{
    const int function = numberOf(arguments.first(), protocol::VoltageFunction, functionNames());
    if (function < 0)
        return console::fail(WrongUsage, QStringLiteral("no such function: %1").arg(arguments.first()));
    return sendScreen(protocol::MultimeterScreen, function);
}

} // namespace

Command listCommand()
{
    Command command;
    command.name = QStringLiteral("list");
    command.summary = QStringLiteral("Lists the instruments on the bus: free, busy or refused.");
    command.options = {jsonOption()};
    command.run = &runList;
    return command;
}

Command screenCommand()
{
    Command command;
    command.name = QStringLiteral("screen");
    command.summary = QStringLiteral("Shows a screen of the instrument.");
    command.operands = {
        {QStringLiteral("SCREEN"), QStringLiteral("1 or main, 2 or type-c, 3 or wave, 4 or multimeter")}};
    command.leastOperands = command.mostOperands = 1;
    command.run = &runScreen;
    return command;
}

Command functionCommand()
{
    Command command;
    command.name = QStringLiteral("function");
    command.summary = QStringLiteral("Selects a function of the multimeter and shows its screen.");
    command.operands = {
        {QStringLiteral("FUNCTION"), QStringLiteral("0 or voltage, 1 or resistance, 2 or capacitance, "
                                                    "3 or diode, 4 or buzzer")}};
    command.leastOperands = command.mostOperands = 1;
    command.run = &runFunction;
    return command;
}

} // namespace cli
