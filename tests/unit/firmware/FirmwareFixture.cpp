// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/unit/firmware/FirmwareFixture.h"

#include "platform/UserFolders.h"
#include "storage/DataFolders.h"
#include "storage/SettingsFile.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>

QByteArray catalogueOf(const QString& type, const QStringList& urls, const QStringList& names)
{
    QJsonArray files;
    for (int i = 0; i < urls.size(); ++i)
        files.append(QJsonObject{{"url", urls.at(i)}, {"name", names.at(i)}});
    const QJsonObject entry{{"type", type}, {"files", files}};
    return QJsonDocument(QJsonObject{{"firmware", QJsonArray{entry}}}).toJson();
}

FirmwareFixture::FirmwareFixture() : settings(std::make_shared<SettingsFile>()), log("test_%1.log", settings)
{
    QDir(folders::logs()).removeRecursively();
    QDir(cacheFolder()).removeRecursively();
    settings->setValue(setting::usbDebugEnabled, true);
    bootMode.findUsbDevice = [](const QString&, const QString&, const platform::ProcessRun&) {
        return platform::UsbQuery{true, "always", true};
    };
    bootMode.flashToolPath = [this] { return scripts.program("sunxi-fel"); };
}

QString FirmwareFixture::cacheFolder()
{
    return platform::userFolder(platform::UserFolder::LocalData) + QStringLiteral("/firmware");
}

QStringList FirmwareFixture::cached()
{
    return QDir(cacheFolder()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
}

QString FirmwareFixture::addHanging(const QString& name) const
{
    const QString id = scripts.path(name + ".id");
    scripts.add(name, "id " + name.toUtf8() + ".id\nhang");
    return id;
}

void FirmwareFixture::addFlashTool(const QByteArray& atWrite) const
{
    scripts.addRecorder("sunxi-fel", "alone busy\n"
                                     "when slow pause 300\n"
                                     "if 1 version out AWUSBFEX soc=00001663(F1C100s)\\n\n"
                                     "if 1 version exit 0\n"
                                     "id tool.id\n" +
                                         atWrite +
                                         "\nif 2 spiflash-read copy written-$3|$5\n"
                                         "if 2 spiflash-read exit 0"
                                         "\nout \\r 50% [========        ]  99.0 kB/s, ETA 00:01 \n"
                                         "copy $4|written-$3\n"
                                         "out \\r100% [================]    68 kB,   99.0 kB/s\\n");
}

int FirmwareFixture::toolCalls(const QString& command) const
{
    const QList<QStringList> calls = scripts.calls("sunxi-fel");
    return int(std::count_if(calls.cbegin(), calls.cend(),
                             [&command](const QStringList& call) { return call.contains(command); }));
}

QStringList FirmwareFixture::logLines() const
{
    constexpr int cTimeStampLength = 26;
    QStringList lines;
    const QStringList stamped =
        QString::fromUtf8(test::contentOf(log.filePath())).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    for (const QString& line : stamped)
        lines.append(line.mid(cTimeStampLength));
    return lines;
}
