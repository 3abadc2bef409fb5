// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/unit/firmware/FirmwareFixture.h"

#include "storage/DataFolders.h"
#include "storage/SettingsFile.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QStandardPaths>

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
    bootMode.flashToolPath = [this] { return scripts.path("sunxi-fel"); };
}

QString FirmwareFixture::cacheFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation) +
           QStringLiteral("/firmware");
}

QStringList FirmwareFixture::cached()
{
    return QDir(cacheFolder()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
}

QString FirmwareFixture::addHanging(const QString& name) const
{
    const QString id = scripts.path(name + ".id");
    scripts.add(name, "echo $$ > " + QFile::encodeName(id) + "; exec sleep 60");
    return id;
}

void FirmwareFixture::addFlashTool(const QByteArray& atWrite) const
{
    scripts.addRecorder("sunxi-fel", "cd " + QFile::encodeName(scripts.path(QString())) +
                                         " && { mkdir busy || echo $1 >> clash; }\n"
                                         "trap 'rmdir busy' EXIT\n"
                                         "[ -e slow ] && sleep 0.3\n"
                                         "case $1 in\n"
                                         "version) echo AWUSBFEX soc=00001663'(F1C100s)';;\n"
                                         "-p) echo $$ > tool.id\n" +
                                         atWrite +
                                         "\n"
                                         "printf '\\r 50%% [========        ]  99.0 kB/s, ETA 00:01 '\n"
                                         "cp \"$4\" written-$3\n"
                                         "printf '\\r100%% [================]    68 kB,   99.0 kB/s\\n';;\n"
                                         "esac");
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
