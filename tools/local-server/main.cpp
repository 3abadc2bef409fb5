// SPDX-License-Identifier: GPL-3.0-or-later

// A local server for people and tests: firmware catalogue and files, version check, installer and manual. Any
// path can be given a fault. It listens on the loopback address unless an option names another.

#include "LocalServer.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <csignal>
#include <iostream>
#include <string>

namespace {

constexpr int cExitUsage = 2;
constexpr int cExitPortTaken = 1;
constexpr int cBytesPerMebibyte = 1 << 20;
constexpr int cLargestInstallerMebibytes = 1024;

QCommandLineOption option(const char* name, const QString& help, const char* valueName,
                          const char* fallback = "")
{
    return {QLatin1String(name), help, QLatin1String(valueName), QLatin1String(fallback)};
}

void defineOptions(QCommandLineParser& parser)
{
    parser.setApplicationDescription(
        QStringLiteral(
            "Serves the firmware catalogue and files, the version check, the installer and the manual.\n\n"
            "While it runs it takes commands, one per line, on standard input or as the body of a POST\n"
            "to /control on the API port: \"fault PATH KIND[:VALUE]\", \"clear [PATH]\", \"update ANSWER\",\n"
            "\"list\" and, on standard input, \"quit\". A PATH may end in *.\n\n"
            "Faults:  %1\nAnswers: %2")
            .arg(Fault::names().join(QLatin1Char(' ')), UpdateService::modeNames().join(QLatin1Char(' '))));
    parser.addHelpOption();
    parser.addOption(option("host", QStringLiteral("Address to listen on."), "address", "127.0.0.1"));
    parser.addOption(
        option("api-port", QStringLiteral("Port of the API; 0 takes a free one."), "port", "8078"));
    parser.addOption(
        option("docs-port", QStringLiteral("Port of the manual; 0 takes a free one."), "port", "8000"));
    parser.addOption(option("update", QStringLiteral("Answer to a version check."), "answer", "same"));
    parser.addOption(option("installer-size", QStringLiteral("Size of the installer in MiB."), "MiB", "24"));
    parser.addOption(option("manual",
                            QStringLiteral("Folder of the built manual (default: ../manual/html from here)."),
                            "folder"));
    parser.addOption(option("fault", QStringLiteral("Answer PATH wrongly; may be given several times."),
                            "PATH=KIND[:VALUE]"));
    parser.addOption({QStringLiteral("verbose"), QStringLiteral("Print every request.")});
}

/// Returns the integer of option \a name when it lies in \a low..\a high, else -1.
int number(const QCommandLineParser& parser, const char* name, int low, int high)
{
    bool ok = false;
    const int value = parser.value(QLatin1String(name)).toInt(&ok);
    if (ok && value >= low && value <= high)
        return value;
    std::cerr << "local-server: --" << name << " takes a number from " << low << " to " << high << "\n";
    return -1;
}

/// Applies the faults and the update mode of the command line to \a server. Returns false for an invalid one.
bool applyOptions(const QCommandLineParser& parser, LocalServer& server)
{
    QStringList commands{QStringLiteral("update ") + parser.value(QStringLiteral("update"))};
    const QStringList faults = parser.values(QStringLiteral("fault"));
    for (const QString& fault : faults)
        commands.append(QStringLiteral("fault %1 %2")
                            .arg(fault.section(QLatin1Char('='), 0, 0), fault.section(QLatin1Char('='), 1)));
    for (const QString& command : std::as_const(commands)) {
        const QString result = server.command(command);
        if (result.startsWith(QLatin1String("error"))) {
            std::cerr << "local-server: " << result.toStdString() << "\n";
            return false;
        }
    }
    return true;
}

/// Runs commands from standard input. Returns true after "quit", false when the input ends without it.
bool runCommands(LocalServer& server)
{
    for (std::string line; std::getline(std::cin, line);) {
        if (line == "quit")
            return true;
        if (!line.empty())
            std::cout << server.command(QString::fromStdString(line)).toStdString() << std::endl;
    }
    return false;
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("local-server"));
    QCommandLineParser parser;
    defineOptions(parser);
    parser.process(app);
    LocalServer::Options options;
    options.host = parser.value(QStringLiteral("host"));
    options.apiPort = number(parser, "api-port", 0, 65535);
    options.docsPort = number(parser, "docs-port", 0, 65535);
    const int installerMebibytes = number(parser, "installer-size", 0, cLargestInstallerMebibytes);
    options.installerBytes = installerMebibytes * cBytesPerMebibyte;
    options.manualFolder = parser.isSet(QStringLiteral("manual"))
                               ? parser.value(QStringLiteral("manual"))
                               : QCoreApplication::applicationDirPath() + QStringLiteral("/../manual/html");
    options.logRequests = parser.isSet(QStringLiteral("verbose"));
    if (options.apiPort < 0 || options.docsPort < 0 || installerMebibytes < 0)
        return cExitUsage;

#ifdef SIGPIPE
    // A client that disconnects during an answer must not end the server. Windows has no such signal.
    std::signal(SIGPIPE, SIG_IGN);
#endif
    LocalServer server(options);
    if (!applyOptions(parser, server))
        return cExitUsage;
    if (!server.start()) {
        std::cerr << "local-server: " << server.errorText().toStdString() << "\n";
        return cExitPortTaken;
    }
    const std::string host = options.host.toStdString();
    std::cout << "API    http://" << host << ':' << server.apiPort() << "\n"
              << "Manual http://" << host << ':' << server.docsPort() << std::endl;
    // A server in the background has no input and serves until it is killed.
    return runCommands(server) ? 0 : QCoreApplication::exec();
}
