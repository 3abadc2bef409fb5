// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/unit/system/ManagerFixture.h"

#include "hid/HidLink.h"
#include "settings/DataFolders.h"
#include "settings/GenSettings.h"

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
        files.append(QJsonObject{{QStringLiteral("url"), urls.at(i)}, {QStringLiteral("name"), names.at(i)}});
    const QJsonObject entry{{QStringLiteral("type"), type}, {QStringLiteral("files"), files}};
    return QJsonDocument(QJsonObject{{QStringLiteral("firmware"), QJsonArray{entry}}}).toJson();
}

ManagerFixture::ManagerFixture() : toolbox(nullptr)
{
    // The toolbox's own ones would look for devices and servers too.
    delete toolbox.systemManager();
    delete toolbox.hidLink();
    cleanFolders();
    toolbox.genSettings()->setValue(QStringLiteral("usbDebugEnabled"), true, QStringLiteral("sysSettings"));
    toolbox.genSettings()->setValue(QStringLiteral("serverHost"), QStringLiteral("127.0.0.1"),
                                    QStringLiteral("sysSettings"));
    toolbox.genSettings()->setValue(QStringLiteral("apiPort"), server.port(), QStringLiteral("sysSettings"));
    timings.statusPeriodMs = cNever;
    timings.firstPresenceCheckMs = cNever;
    timings.pauseBeforeDownloadsMs = 1;
    timings.pauseAfterFlashingMs = 1;
    services.findUsbDevice = [](const QString&, const QString&, const platform::ProcessRun&) {
        return platform::UsbQuery{true, QStringLiteral("always")};
    };
    services.flashToolPath = [this] { return scripts.path(QStringLiteral("sunxi-fel")); };
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
    manager = std::make_unique<SystemManager>(nullptr, &toolbox, services, timings);
    QObject::connect(manager.get(), &SystemManager::logMessage, manager.get(),
                     [this](const QString& message) { messages.append(message); });
    QObject::connect(manager.get(), &SystemManager::progressChanged, manager.get(),
                     [this](int value) { progress.append(value); });
    return *manager;
}

SystemManager& ManagerFixture::startWithCatalogue(const QStringList& urls, const QStringList& names)
{
    HttpFaultServer::Reply reply;
    reply.body = catalogueOf(QStringLiteral("F1"), urls, names);
    server.setReply("/api/mcu/firmware_list", reply);
    SystemManager& created = start();
    QSignalSpy types(&created, &SystemManager::mcuTypesChanged);
    [&types] { QTRY_COMPARE(types.count(), 1); }();
    return created;
}

QStringList ManagerFixture::log() const
{
    QStringList lines;
    QFile file(manager->systemLogFilePath());
    if (!file.open(QIODevice::ReadOnly))
        return lines;
    const QStringList stamped =
        QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    for (const QString& line : stamped)
        lines.append(line.mid(cTimeStampLength));
    return lines;
}

bool ManagerFixture::logHas(const QString& text) const
{
    return log().contains(text);
}
