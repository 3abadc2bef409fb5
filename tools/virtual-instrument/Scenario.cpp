// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/virtual-instrument/Scenario.h"

#include "tools/virtual-instrument/MeasurementField.h"

#include <QRegularExpression>

#include <algorithm>
#include <cmath>
#include <iterator>

namespace {

enum class Kind { Integer, Real, Word, Choice, Field, FieldOrAll, Rest };

struct Argument
{
    const char* name;
    Kind kind;
    double minimum = 0;
    double maximum = 0;
    /// Default value; null for a required argument.
    const char* defaultText = nullptr;
    /// The words of a Choice, separated by "|".
    const char* choices = nullptr;
};

struct Rule
{
    Action action;
    const char* name;
    std::vector<Argument> arguments;
    const char* help;
};

constexpr double cMaxPackets = 10'000'000;
constexpr double cMaxSeconds = 86'400;

const std::vector<Rule>& grammar()
{
    static const std::vector<Rule> rules{
        {Action::Unplug, "unplug", {}, "take the instrument off the bus"},
        {Action::Replug, "replug", {}, "put it on the bus again, under a new node name"},
        {Action::Silence, "silence", {{"seconds", Kind::Real, 0, cMaxSeconds}}, "send nothing for a while"},
        {Action::Rate,
         "rate",
         {{"per-second", Kind::Real, 0, 1000}},
         "measurement packets per second (20 at first)"},
        {Action::Garbage,
         "garbage",
         {{"count", Kind::Integer, 1, cMaxPackets}},
         "send full packets of random bytes under an unknown type"},
        {Action::Truncated,
         "truncated",
         {{"count", Kind::Integer, 1, cMaxPackets}, {"bytes", Kind::Integer, 1, 63, "10"}},
         "send measurement packets cut short"},
        {Action::ZeroFilled,
         "zero",
         {{"count", Kind::Integer, 1, cMaxPackets}},
         "send packets of 64 zero bytes"},
        {Action::NotANumber,
         "nan",
         {{"count", Kind::Integer, 1, cMaxPackets}},
         "send measurement packets whose fourteen values are NaN"},
        {Action::Burst,
         "burst",
         {{"count", Kind::Integer, 1, cMaxPackets}, {"per-second", Kind::Real, 1, 100'000, "1000"}},
         "send measurement packets at a high rate; typeCMah numbers them from 1, typeCTimeSec is the time of "
         "sending in seconds of the monotonic clock, modulo 60"},
        {Action::WriteErrors,
         "write-errors",
         {{"count", Kind::Integer, 0, cMaxPackets}},
         "let the host's next writes fail"},
        {Action::Screen,
         "screen",
         {{"number", Kind::Integer, 1, 4}},
         "turn the instrument's screen and tell the host: 1 main supply, 2 Type-C, 3 wave, 4 multimeter"},
        {Action::Function,
         "function",
         {{"number", Kind::Integer, 0, 4}},
         "switch the multimeter and tell the host: 0 voltage, 1 resistance, 2 capacitance, 3 diode, 4 "
         "buzzer"},
        {Action::Log, "log", {{"text", Kind::Rest}}, "send a log line of the instrument"},
        {Action::DeviceInfo,
         "device-info",
         {{"id", Kind::Word}, {"version", Kind::Word, 0, 0, "1.0.0"}},
         "change the identity (16 bytes each at most) and send it"},
        {Action::Set,
         "set",
         {{"field", Kind::Field}, {"value", Kind::Real, -1e30, 1e30}},
         "hold a measurement value (a number or nan)"},
        {Action::Auto,
         "auto",
         {{"field", Kind::FieldOrAll, 0, 0, "all"}},
         "let the bench play a held value again"},
        {Action::Reading,
         "reading",
         {{"text", Kind::Rest}},
         "hold the multimeter's reading, 20 bytes at most; \"auto\" lets the bench play it again"},
        {Action::Interfaces,
         "interfaces",
         {{"count", Kind::Integer, 1, 2}},
         "plug in again with one HID interface, or with a mute one in front of it"},
        {Action::Permission,
         "permission",
         {{"state", Kind::Choice, 0, 0, nullptr, "granted|denied"}},
         "give or take the right to open the device node, now and after each replug"},
        {Action::BootController,
         "boot-controller",
         {{"state", Kind::Choice, 0, 0, nullptr, "plug|unplug"}},
         "the controller in its boot mode (1f3a:efe8) joins or leaves the bus"},
        {Action::Exit,
         "exit",
         {{"code", Kind::Integer, 0, 255, "0"}},
         "end the program under test and leave with this code"},
        {Action::Status, "status", {}, "answer with the state, for the control channel"},
        {Action::Drain,
         "drain",
         {},
         "answer once the program has read every packet, for the control channel"},
    };
    return rules;
}

QString checkArgument(const Argument& argument, const QString& text)
{
    const QString name = QLatin1String(argument.name);
    switch (argument.kind) {
    case Kind::Integer:
    case Kind::Real: {
        bool ok = false;
        double value = text.toDouble(&ok);
        if (argument.kind == Kind::Integer)
            value = text.toInt(&ok);
        if (!ok)
            return QStringLiteral("%1 must be a number, not \"%2\"").arg(name, text);
        if (value < argument.minimum || value > argument.maximum)
            return QStringLiteral("%1 must be from %2 to %3")
                .arg(name)
                .arg(argument.minimum)
                .arg(argument.maximum);
        break;
    }
    case Kind::Choice: {
        const QStringList choices = QString::fromLatin1(argument.choices).split(QLatin1Char('|'));
        if (!choices.contains(text))
            return QStringLiteral("%1 must be %2").arg(name, choices.join(QStringLiteral(" or ")));
        break;
    }
    case Kind::FieldOrAll:
        if (text == QStringLiteral("all"))
            break;
        [[fallthrough]];
    case Kind::Field:
        if (measurementField(text) == nullptr)
            return QStringLiteral("no measurement value is called \"%1\"").arg(text);
        break;
    case Kind::Word:
    case Kind::Rest:
        break;
    }
    return {};
}

QString synopsis(const Rule& rule)
{
    QString text = QLatin1String(rule.name);
    for (const Argument& argument : rule.arguments) {
        const QString name = argument.choices != nullptr ? QString::fromLatin1(argument.choices)
                                                         : QStringLiteral("<%1>").arg(argument.name);
        text +=
            QLatin1Char(' ') + (argument.defaultText != nullptr ? QStringLiteral("[%1]").arg(name) : name);
    }
    return text;
}

/// Sets the arguments of \a command from \a rest. Returns the error, or an empty text.
QString readArguments(const Rule& rule, QString rest, Command* command)
{
    static const QRegularExpression blank(QStringLiteral("\\s+"));
    for (const Argument& argument : rule.arguments) {
        const int end = argument.kind == Kind::Rest ? -1 : rest.indexOf(blank);
        QString text = end < 0 ? rest : rest.left(end);
        rest = end < 0 ? QString() : rest.mid(end).trimmed();
        if (text.isEmpty() && argument.defaultText != nullptr)
            text = QLatin1String(argument.defaultText);
        if (text.isEmpty())
            return QStringLiteral("use: %1").arg(synopsis(rule));
        const QString fault = checkArgument(argument, text);
        if (!fault.isEmpty())
            return fault;
        command->arguments.append(text);
    }
    return rest.isEmpty() ? QString() : QStringLiteral("too many arguments, use: %1").arg(synopsis(rule));
}

} // namespace

ParsedCommand parseCommand(const QString& line)
{
    const QString trimmed = line.trimmed();
    const QString name = trimmed.section(QRegularExpression(QStringLiteral("\\s+")), 0, 0);
    const std::vector<Rule>& rules = grammar();
    const auto rule = std::find_if(rules.cbegin(), rules.cend(), [&name](const Rule& candidate) {
        return name == QLatin1String(candidate.name);
    });
    ParsedCommand result;
    if (rule == rules.cend()) {
        result.error = QStringLiteral("unknown command \"%1\"").arg(name);
        return result;
    }
    result.command.action = rule->action;
    result.error = readArguments(*rule, trimmed.mid(name.size()).trimmed(), &result.command);
    return result;
}

QString commandHelp()
{
    constexpr int cColumn = 34;
    QString text;
    for (const Rule& rule : grammar())
        text += QStringLiteral("  %1 %2\n").arg(synopsis(rule), -cColumn).arg(QLatin1String(rule.help));
    return text;
}

Scenario Scenario::parse(const QString& text, QString* error)
{
    static const QRegularExpression pattern(QStringLiteral("^(\\+?)(\\d+(?:\\.\\d+)?)\\s+(\\S.*)$"));
    Scenario scenario;
    const QStringList lines = text.split(QLatin1Char('\n'));
    double lastSec = 0;
    for (int i = 0; i < lines.size(); ++i) {
        const auto fail = [error, i](const QString& what) {
            *error = QStringLiteral("line %1: %2").arg(i + 1).arg(what);
            return Scenario();
        };
        const QString line = lines.at(i).section(QLatin1Char('#'), 0, 0).trimmed();
        if (line.isEmpty())
            continue;
        const QRegularExpressionMatch match = pattern.match(line);
        if (!match.hasMatch())
            return fail(QStringLiteral("a step is a time in seconds and a command"));
        if (scenario.m_periodSec > 0)
            return fail(QStringLiteral("nothing follows \"repeat\""));
        lastSec = match.captured(2).toDouble() + (match.capturedLength(1) > 0 ? lastSec : 0);
        if (match.captured(3) == QStringLiteral("repeat")) {
            scenario.m_periodSec = lastSec;
            if (lastSec <= 0)
                return fail(QStringLiteral("\"repeat\" needs a time above 0"));
            continue;
        }
        const ParsedCommand parsed = parseCommand(match.captured(3));
        if (!parsed.error.isEmpty())
            return fail(parsed.error);
        scenario.m_steps.push_back({lastSec, parsed.command});
    }
    const auto earlier = [](const Step& a, const Step& b) { return a.atSec < b.atSec; };
    std::stable_sort(scenario.m_steps.begin(), scenario.m_steps.end(), earlier);
    if (scenario.m_periodSec > 0 && !scenario.m_steps.empty() &&
        scenario.m_steps.back().atSec > scenario.m_periodSec) {
        *error = QStringLiteral("a step is due after \"repeat\"");
        return {};
    }
    error->clear();
    return scenario;
}
