// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/Command.h"
#include "cli/Console.h"
#include "firmware/FirmwareServer.h"
#include "firmware/FirmwareUpgrade.h"
#include "firmware/FlashProgress.h"
#include "platform/FlashTool.h"
#include "platform/StopSignals.h"
#include "storage/SettingsFile.h"

#include <QCoreApplication>

namespace cli {

namespace {

using State = FirmwareUpgrade::State;

QString activityOf(State state)
{
    switch (state) {
    case State::WritingBoot:
        return QStringLiteral("writing boot");
    case State::WritingLogo:
        return QStringLiteral("writing logo");
    case State::WritingExec:
        return QStringLiteral("writing exec");
    case State::ReadingBack:
        return QStringLiteral("reading back");
    default:
        return QStringLiteral("downloading");
    }
}

/// One upgrade from its start to its end. The event loop ends with it.
class FlashRun : public QObject
{
public:
    explicit FlashRun(bool verify)
        : m_settings(std::make_shared<SettingsFile>())
        , m_log(QStringLiteral("system_manager_%1.log"), m_settings)
        , m_server(m_settings, {}, m_log)
        , m_watch(bootModeServices(), {}, m_log)
        , m_upgrade(m_watch, &platform::flashToolPath, {}, m_log)
        , m_verify(verify)
    {
        m_upgrade.setVerification(verify);
        connect(&m_upgrade, &FirmwareUpgrade::message, this, &FlashRun::onMessage);
        connect(&m_upgrade, &FirmwareUpgrade::progress, this, &FlashRun::showProgress);
        connect(&m_upgrade, &FirmwareUpgrade::finished, this, &FlashRun::onFinished);
        connect(&m_signals, &platform::StopSignals::stopRequested, this, &FlashRun::onStopRequested);
        m_watch.start();
    }

    /// Writes the firmware that the server offers under \a type. Returns the exit code.
    int run(const QString& type)
    {
        connect(&m_server, &FirmwareServer::catalogueChanged, this, [this, type] { onCatalogue(type); });
        m_server.requestCatalogue({});
        return runEventLoop();
    }

    /// Writes files of this computer. Returns the exit code.
    int run(const FirmwareImages& images)
    {
        m_upgrade.start(images);
        return isAccepted() ? runEventLoop() : reportRefusal();
    }

private:
    static BootModeServices bootModeServices()
    {
        BootModeServices services;
        services.flashToolPath = &platform::flashToolPath;
        return services;
    }

    bool isAccepted() const { return m_upgrade.state() != State::Idle; }

    int reportRefusal() { return console::fail(m_watch.felReady() ? NotFlashed : NoController, m_detail); }

    void onCatalogue(const QString& type)
    {
        const FirmwareCatalogue& catalogue = m_server.catalogue();
        if (catalogue.types.isEmpty()) {
            QCoreApplication::exit(console::fail(
                NoServer, QStringLiteral("the firmware server %1 offers nothing").arg(m_server.host())));
        } else if (!catalogue.types.contains(type)) {
            QCoreApplication::exit(
                console::fail(WrongUsage, QStringLiteral("no such firmware: %1; there is %2")
                                              .arg(type, catalogue.types.join(QStringLiteral(", ")))));
        } else {
            m_upgrade.start(type, catalogue);
            if (!isAccepted())
                QCoreApplication::exit(reportRefusal());
        }
    }

    void onMessage(const QString& text)
    {
        // The tool replaces its progress line by carriage returns.
        const QStringList lines =
            QString(text).replace(QLatin1Char('\r'), QLatin1Char('\n')).split(QLatin1Char('\n'));
        for (const QString& line : lines) {
            const auto percent = flash::percentIn(line);
            // A percentage of a download is in progress() already.
            if (percent && m_upgrade.progressAt(*percent) > 0)
                showProgress(m_upgrade.progressAt(*percent));
            else if (!percent && !line.trimmed().isEmpty() &&
                     !line.startsWith(QLatin1String("Executing: ")) &&
                     line != QLatin1String("Upgrade failed."))
                // The last line before the end says why.
                m_detail = line.trimmed();
        }
    }

    void showProgress(int percent)
    {
        console::showProgress(QStringLiteral("%1 %  %2").arg(percent, 3).arg(activityOf(m_upgrade.state())));
    }

    void onFinished(bool ok)
    {
        console::endProgress();
        if (!ok) {
            QCoreApplication::exit(
                console::fail(NotFlashed, QStringLiteral("the firmware was not written: %1").arg(m_detail)));
            return;
        }
        console::writeLine(m_verify ? QStringLiteral("The firmware is written and verified.")
                                    : QStringLiteral("The firmware is written."));
        QCoreApplication::exit(Success);
    }

    void onStopRequested()
    {
        if (isAccepted())
            m_upgrade.stop();
        else
            QCoreApplication::exit(console::fail(Failed, QStringLiteral("stopped")));
    }

    platform::StopSignals m_signals;
    const std::shared_ptr<SettingsFile> m_settings;
    const DebugLog m_log;
    FirmwareServer m_server;
    BootModeWatch m_watch;
    FirmwareUpgrade m_upgrade;
    const bool m_verify;
    QString m_detail;
};

int runFlash(const QCommandLineParser& options, const QStringList& arguments)
{
    const FirmwareImages images{options.value(QStringLiteral("boot")), options.value(QStringLiteral("logo")),
                                options.value(QStringLiteral("exec"))};
    const bool anyFile = !(images.boot.isEmpty() && images.logo.isEmpty() && images.exec.isEmpty());
    const bool allFiles = !(images.boot.isEmpty() || images.logo.isEmpty() || images.exec.isEmpty());
    if (arguments.isEmpty() ? !allFiles : anyFile)
        return console::fail(WrongUsage,
                             QStringLiteral("either a TYPE or all of --boot, --logo and --exec is needed"));
    FlashRun run(options.isSet(QStringLiteral("verify")));
    return arguments.isEmpty() ? run.run(images) : run.run(arguments.first());
}

} // namespace

Command flashCommand()
{
    const QString file = QStringLiteral("FILE");
    Command command;
    command.name = QStringLiteral("flash");
    command.summary = QStringLiteral("Writes firmware into the controller, which must be in boot mode.");
    command.operands = {{QStringLiteral("[TYPE]"), QStringLiteral("A firmware that the server offers.")}};
    command.options = {
        {QStringLiteral("boot"), QStringLiteral("The boot image, a file of this computer."), file},
        {QStringLiteral("logo"), QStringLiteral("The logo image."), file},
        {QStringLiteral("exec"), QStringLiteral("The program image."), file},
        {QStringLiteral("verify"), QStringLiteral("Reads the flash back and compares.")}};
    command.mostOperands = 1;
    command.run = &runFlash;
    return command;
}

} // namespace cli
