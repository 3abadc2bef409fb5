// SPDX-License-Identifier: GPL-3.0-or-later
#include "UpdateService.h"

#include "TestContent.h"

#include <QCryptographicHash>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

constexpr std::uint64_t cInstallerSeed = 77;

QString offeredVersion(UpdateService::Mode mode, const QString& asking)
{
    switch (mode) {
    case UpdateService::Mode::Same:
        return asking;
    case UpdateService::Mode::Older:
        return QStringLiteral("1.0.0");
    case UpdateService::Mode::Ignored:
        return QStringLiteral("1.1.99");
    default:
        return QStringLiteral("1.2.0");
    }
}

QString description()
{
    return QStringLiteral("1. 充电曲线新增导出功能。\n2. 万用表读数稳定性改进。\n"
                          "3. Charging curves can be exported.\n4. Steadier multimeter readings.");
}

} // namespace

UpdateService::UpdateService(int installerBytes)
    // The first bytes are those of a Windows program.
    : m_installer(QByteArrayLiteral("MZ") + deterministicBytes(cInstallerSeed, qMax(0, installerBytes - 2)))
    , m_sha256(QString::fromLatin1(QCryptographicHash::hash(m_installer, QCryptographicHash::Sha256).toHex()))
{}

QStringList UpdateService::modeNames()
{
    // In the order of Mode.
    return {QStringLiteral("newer"),          QStringLiteral("same"),
            QStringLiteral("older"),          QStringLiteral("ignored"),
            QStringLiteral("none"),           QStringLiteral("malformed"),
            QStringLiteral("wrong-hash"),     QStringLiteral("upper-case-hash"),
            QStringLiteral("missing-length"), QStringLiteral("truncated")};
}

std::optional<UpdateService::Mode> UpdateService::modeFromText(const QString& text)
{
    const int index = modeNames().indexOf(text);
    if (index < 0)
        return {};
    return Mode(index);
}

QString UpdateService::installerPath()
{
    return QStringLiteral("/download/Quorvel-installer.exe");
}

QByteArray UpdateService::answer(const QByteArray& question, const QString& baseUrl) const
{
    const QJsonObject asked = QJsonDocument::fromJson(question).object();
    const QString version = asked.value(QLatin1String("version")).toString();
    if (version.isEmpty() || !asked.value(QLatin1String("platform")).isString())
        return {};
    const Mode mode = m_mode;
    if (mode == Mode::Malformed)
        return QByteArrayLiteral("{\"code\": 0, \"data\": {\"need_update\": tr");
    QJsonObject data{{QStringLiteral("need_update"), mode != Mode::None}};
    if (mode != Mode::None) {
        QString hash = m_sha256;
        if (mode == Mode::WrongHash)
            hash.fill(QLatin1Char('0'));
        else if (mode == Mode::UpperCaseHash)
            hash = hash.toUpper();
        data.insert(QStringLiteral("latest_version"), offeredVersion(mode, version));
        data.insert(QStringLiteral("url"), QString(baseUrl + installerPath()));
        data.insert(QStringLiteral("sha256"), hash);
        data.insert(QStringLiteral("desc"), description());
    }
    return QJsonDocument(QJsonObject{{QStringLiteral("code"), 0}, {QStringLiteral("data"), data}}).toJson();
}
