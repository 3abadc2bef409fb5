// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/unit/system/ManagerFixture.h"

#include "hid/HidLink.h"
#include "settings/GenSettings.h"
#include "storage/DataFolders.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QStandardPaths>
#include <QtTest>

namespace {

constexpr int cNever = 3600 * 1000;
constexpr int cTimeStampLength = 26;

} // namespace

QByteArray catalogueOf(const QString& type, const QStringList& urls, const QStringList& names)
{
    QJsonArray files;
    for (int i = 0; i < urls.size(); ++i)
        files.append(QJsonObject{{"url", urls.at(i)}, {"name", names.at(i)}});
    const QJsonObject entry{{"type", type}, {"files", files}};
    return QJsonDocument(QJsonObject{{"firmware", QJsonArray{entry}}}).toJson();
}

ManagerFixture::ManagerFixture() : toolbox(nullptr)
{
    // The toolbox's own ones would look for devices and servers too.
    delete toolbox.systemManager();
    delete toolbox.hidLink();
    cleanFolders();
    toolbox.genSettings()->setValue("usbDebugEnabled", true, "sysSettings");
    toolbox.genSettings()->setValue("serverHost", "127.0.0.1", "sysSettings");
    toolbox.genSettings()->setValue("apiPort", server.port(), "sysSettings");
    timings.statusPeriodMs = cNever;
    timings.firstPresenceCheckMs = cNever;
    timings.pauseBeforeDownloadsMs = 1;
    timings.pauseAfterFlashingMs = 1;
    services.findUsbDevice = [](const QString&, const QString&, const platform::ProcessRun&) {
        return platform::UsbQuery{true, "always"};
    };
    services.flashToolPath = [this] { return scripts.path("sunxi-fel"); };
}

ManagerFixture::~ManagerFixture() = default;

void ManagerFixture::cleanFolders()
{
    QDir(DataFolders::logs()).removeRecursively();
    QDir(cacheDir()).removeRecursively();
    QFile::remove(QStandardPaths::writableLocation(QStandardPaths::DesktopLocation) +
                  QStringLiteral("/Quorvel_logs.zip"));
}

QString ManagerFixture::cacheDir()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation) +
           QStringLiteral("/firmware");
}

QStringList ManagerFixture::cached()
{
    return QDir(cacheDir()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
}

SystemManager& ManagerFixture::start()
{
    manager =
        std::make_unique<SystemManager>(nullptr, &toolbox, toolbox.genSettings()->file(), services, timings);
    QObject::connect(manager.get(), &SystemManager::logMessage, manager.get(),
                     [this](const QString& message) { messages.append(message); });
    QObject::connect(manager.get(), &SystemManager::progressChanged, manager.get(),
                     [this](int value) { progress.append(value); });
    return *manager;
}

SystemManager& ManagerFixture::startWithCatalogue(const QStringList& urls, const QStringList& names)
{
    server.setReply("/api/mcu/firmware_list", HttpFaultServer::Reply::of(catalogueOf("F1", urls, names)));
    SystemManager& created = start();
    QSignalSpy types(&created, &SystemManager::mcuTypesChanged);
    [&types] { QTRY_COMPARE(types.count(), 1); }();
    return created;
}

QStringList ManagerFixture::log() const
{
    QStringList lines;
    const QString text = QString::fromUtf8(test::contentOf(manager->systemLogFilePath()));
    const QStringList stamped = text.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    for (const QString& line : stamped)
        lines.append(line.mid(cTimeStampLength));
    return lines;
}
