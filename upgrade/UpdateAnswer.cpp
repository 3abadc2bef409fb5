// SPDX-License-Identifier: GPL-3.0-or-later
#include "upgrade/UpdateAnswer.h"

#include <QJsonDocument>
#include <QJsonObject>

UpdateAnswer UpdateAnswer::fromJson(const QByteArray& body)
{
    UpdateAnswer answer;
    const QJsonDocument document = QJsonDocument::fromJson(body);
    if (!document.isObject())
        return answer;
    answer.isValid = true;
    const QJsonObject data = document.object().value(QLatin1String("data")).toObject();
    answer.needUpdate = data.value(QLatin1String("need_update")).toBool(false);
    if (!answer.needUpdate)
        return answer;
    answer.url = data.value(QLatin1String("url")).toString();
    answer.latestVersion = data.value(QLatin1String("latest_version")).toString();
    answer.sha256 = data.value(QLatin1String("sha256")).toString();
    answer.description = data.value(QLatin1String("desc")).toString();
    return answer;
}

QByteArray versionCheckBody(const QString& version)
{
    const QJsonObject question{{QStringLiteral("version"), version},
                               // The server publishes one installer, the Windows one.
                               {QStringLiteral("platform"), QStringLiteral("windows")}};
    return QJsonDocument(question).toJson(QJsonDocument::Indented);
}
