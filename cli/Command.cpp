// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/Command.h"

#include "cli/Console.h"
#include "cli/Duration.h"
#include "storage/ApplicationInfo.h"

#include <QCoreApplication>

namespace cli {

namespace {

using Factory = Command (*)();
constexpr Factory cCommands[] = {
    &listCommand,   &watchCommand,    &recordCommand,  &infoCommand,  &exportCommand,
    &reportCommand, &markCommand,     &recoverCommand, &mergeCommand, &curveCommand,
    &screenCommand, &functionCommand, &flashCommand,
};

constexpr char cProgram[] = "quorvel-cli";

QString overview()
{
    QString text = QStringLiteral("Usage: quorvel-cli COMMAND [OPTION]... [OPERAND]...\n\n"
                                  "Reads and records a USB measurement instrument.\n\nCommands:\n");
    for (const Factory factory : cCommands) {
        const Command command = factory();
        text += QStringLiteral("  %1 %2\n").arg(command.name, -10).arg(command.summary);
    }
    return text + QStringLiteral("\n\"quorvel-cli COMMAND --help\" describes a command; "
                                 "\"quorvel-cli --version\" prints the version.\n");
}

QString usage(const Command& command, const QCommandLineParser& parser)
{
    QString synopsis = QStringLiteral("Usage: quorvel-cli ") + command.name + QStringLiteral(" [OPTION]...");
    for (const Operand& operand : command.operands)
        synopsis += QLatin1Char(' ') + operand.name;
    // The parser's own first line would show the path of the program.
    const QString text = parser.helpText();
    return synopsis + text.mid(text.indexOf(QLatin1Char('\n')));
}

int runCommand(const Command& command, const QStringList& arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(command.summary);
    parser.addOption({{QStringLiteral("h"), QStringLiteral("help")}, QStringLiteral("Prints this help.")});
    parser.addOptions(QList<QCommandLineOption>(command.options.cbegin(), command.options.cend()));
    for (const Operand& operand : command.operands)
        parser.addPositionalArgument(operand.name, operand.description);
    if (!parser.parse(arguments))
        return console::fail(WrongUsage, parser.errorText());
    if (parser.isSet(QStringLiteral("help"))) {
        console::write(usage(command, parser).toLocal8Bit());
        return console::flush() ? Success : Failed;
    }
    const QStringList operands = parser.positionalArguments();
    if (operands.size() < command.leastOperands || operands.size() > command.mostOperands)
        return console::fail(
            WrongUsage,
            QStringLiteral("wrong number of operands; see \"quorvel-cli %1 --help\"").arg(command.name));
    return command.run(parser, operands);
}

} // namespace

QCommandLineOption jsonOption()
{
    return {QStringLiteral("json"), QStringLiteral("Prints JSON, one object per line.")};
}

QCommandLineOption outputOption(const QString& description)
{
    return {{QStringLiteral("o"), QStringLiteral("output")}, description, QStringLiteral("FILE")};
}

QCommandLineOption timeOption(const QString& name, const QString& description)
{
    return {name, description, QStringLiteral("TIME")};
}

std::optional<std::chrono::microseconds> timeOf(const QCommandLineParser& options, const QString& name,
                                                std::chrono::microseconds fallback)
{
    if (!options.isSet(name))
        return fallback;
    const QString text = options.value(name);
    const auto time = parseDuration(text);
    if (!time)
        console::fail(WrongUsage,
                      QStringLiteral("--%1 %2: not a time such as 90s, 5m or 8h").arg(name, text));
    return time;
}

int runEventLoop()
{
    return QCoreApplication::exec();
}

int run(const QStringList& arguments)
{
    const QString name = arguments.value(1);
    if (name == QLatin1String("--version")) {
        console::writeLine(QLatin1String(cProgram) + QLatin1Char(' ') + applicationVersion());
        return Success;
    }
    if (name == QLatin1String("--help") || name == QLatin1String("-h") || name == QLatin1String("help")) {
        console::write(overview().toLocal8Bit());
        return Success;
    }
    if (name.isEmpty())
        return console::fail(WrongUsage, QStringLiteral("a command is missing; see \"quorvel-cli --help\""));
    for (const Factory factory : cCommands) {
        const Command command = factory();
        if (command.name == name)
            return runCommand(command, QStringList{QLatin1String(cProgram)} + arguments.mid(2));
    }
    return console::fail(WrongUsage,
                         QStringLiteral("no such command: %1; see \"quorvel-cli --help\"").arg(name));
}

} // namespace cli
