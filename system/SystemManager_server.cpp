// SPDX-License-Identifier: GPL-3.0-or-later
#include "network/ReplyGuard.h"
#include "storage/SettingsFile.h"
#include "system/SystemManager.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>

namespace {

/// More than any catalogue has: a reply that goes on after this is not one.
constexpr qint64 cMaxStatusBytes = 16 * 1024 * 1024;
constexpr int cFirstSuccessStatus = 200;
constexpr int cFirstErrorStatus = 400;

} // namespace

void SystemManager::loadServerSettings()
{
    if (m_settings == nullptr)
        return;
    const QString group = server::settingsGroup();
    m_serverHost =
        server::normalizeServerHost(m_settings->value(group, server::hostKey(), m_serverHost).toString());
    m_docsPort =
        server::portOr(m_settings->value(group, server::docsPortKey(), server::cDefaultDocsPort).toInt(),
                       server::cDefaultDocsPort);
    m_apiPort =
        server::portOr(m_settings->value(group, server::apiPortKey(), server::cDefaultApiPort).toInt(),
                       server::cDefaultApiPort);
}

QString SystemManager::apiUrl(const QString& path) const
{
    return server::url(m_serverHost, m_apiPort, path);
}

QString SystemManager::docsZhUrl() const
{
    return server::url(m_serverHost, m_docsPort, QStringLiteral("/"));
}

QString SystemManager::docsEnUrl() const
{
    return server::url(m_serverHost, m_docsPort, QStringLiteral("/en/"));
}

QNetworkAccessManager* SystemManager::network()
{
    if (m_network == nullptr)
        m_network = new QNetworkAccessManager(this);
    return m_network;
}

void SystemManager::askServer()
{
    requestServerStatus();
    requestMcuTypes(QString());
}

void SystemManager::setServerHost(const QString& host)
{
    const QString value = server::normalizeServerHost(host);
    if (value == m_serverHost)
        return;
    m_serverHost = value;
    storeSetting(server::hostKey(), value);
    Q_EMIT serverHostChanged();
    askServer();
}

void SystemManager::setApiPort(int port)
{
    const int value = server::portOr(port, server::cDefaultApiPort);
    if (value == m_apiPort)
        return;
    m_apiPort = value;
    storeSetting(server::apiPortKey(), value);
    Q_EMIT apiPortChanged();
    askServer();
}

void SystemManager::setDocsPort(int port)
{
    const int value = server::portOr(port, server::cDefaultDocsPort);
    if (value == m_docsPort)
        return;
    m_docsPort = value;
    storeSetting(server::docsPortKey(), value);
    Q_EMIT docsPortChanged();
}

void SystemManager::requestServerStatus()
{
    if (m_stopping)
        return;
    QNetworkRequest request(QUrl(apiUrl(QStringLiteral("/api/mcu/firmware_list"))));
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::NoLessSafeRedirectPolicy);
    request.setRawHeader("User-Agent", "Quorvel");
    QNetworkReply* reply = network()->get(request);
    ReplyLimits limits;
    limits.stallMs = m_timings.statusTimeoutMs;
    limits.totalMs = m_timings.statusTimeoutMs;
    limits.maxBytes = cMaxStatusBytes;
    limits.discardBody = true;
    const auto* guard = new ReplyGuard(reply, limits);
    connect(reply, &QNetworkReply::finished, this,
            [this, reply, guard] { onStatusFinished(reply, guard->cutReason()); });
}

void SystemManager::onStatusFinished(QNetworkReply* reply, const QString& cutReason)
{
    const int httpStatus = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    const bool accepted =
        httpStatus == 0 || (httpStatus >= cFirstSuccessStatus && httpStatus < cFirstErrorStatus);
    const bool connected = reply->error() == QNetworkReply::NoError && accepted;
    writeLog(QStringLiteral("requestServerStatus finished. error=%1(%2) httpStatus=%3 connected=%4")
                 .arg(QString::number(int(reply->error())),
                      cutReason.isEmpty() ? reply->errorString() : cutReason, QString::number(httpStatus),
                      QString::number(int(connected))));
    reply->deleteLater();
    if (connected != m_serverConnected) {
        m_serverConnected = connected;
        Q_EMIT serverConnectedChanged();
    }
    // Without this, a server that comes up after the application would stay without firmware types.
    if (connected && m_catalogueMissing && m_catalogueRequests == 0)
        requestMcuTypes(QString());
}
