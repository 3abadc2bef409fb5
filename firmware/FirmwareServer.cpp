// SPDX-License-Identifier: GPL-3.0-or-later
#include "firmware/FirmwareServer.h"

#include "network/ReplyGuard.h"
#include "storage/SettingsFile.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>

#include <utility>

namespace {

/// More than any catalogue has: a reply that goes on after this is not one.
constexpr qint64 cMaxCatalogueBytes = 16 * 1024 * 1024;
constexpr int cFirstSuccessStatus = 200;
constexpr int cFirstErrorStatus = 400;

} // namespace

FirmwareServer::FirmwareServer(std::shared_ptr<SettingsFile> settings, const ServerTimings& timings,
                               DebugLog log, QObject* parent)
    : QObject(parent), m_settings(std::move(settings)), m_timings(timings), m_log(std::move(log))
{
    m_statusTimer.setInterval(m_timings.statusPeriodMs);
    connect(&m_statusTimer, &QTimer::timeout, this, &FirmwareServer::requestStatus);
    if (m_settings == nullptr)
        return;
    m_host = server::normalizeServerHost(m_settings->value(setting::serverHost));
    m_docsPort = server::portOr(m_settings->value(setting::docsPort), server::cDefaultDocsPort);
    m_apiPort = server::portOr(m_settings->value(setting::apiPort), server::cDefaultApiPort);
}

FirmwareServer::~FirmwareServer()
{
    stop();
}

QString FirmwareServer::listUrl() const
{
    return server::url(m_host, m_apiPort, QStringLiteral("/api/mcu/firmware_list"));
}

QString FirmwareServer::docsUrl(const QString& path) const
{
    return server::url(m_host, m_docsPort, path);
}

template <typename Setting>
void FirmwareServer::store(const Setting& setting, const QVariant& value)
{
    if (m_settings != nullptr)
        m_settings->setValue(setting, value);
}

void FirmwareServer::setHost(const QString& host)
{
    const QString value = server::normalizeServerHost(host);
    if (value == m_host)
        return;
    m_host = value;
    store(setting::serverHost, value);
    Q_EMIT hostChanged();
    ask();
}

void FirmwareServer::setApiPort(int port)
{
    const int value = server::portOr(port, server::cDefaultApiPort);
    if (value == m_apiPort)
        return;
    m_apiPort = value;
    store(setting::apiPort, value);
    Q_EMIT apiPortChanged();
    ask();
}

void FirmwareServer::setDocsPort(int port)
{
    const int value = server::portOr(port, server::cDefaultDocsPort);
    if (value == m_docsPort)
        return;
    m_docsPort = value;
    store(setting::docsPort, value);
    Q_EMIT docsPortChanged();
}

void FirmwareServer::ask()
{
    requestStatus();
    requestCatalogue(QString());
}

void FirmwareServer::start()
{
    if (m_stopped)
        return;
    requestStatus();
    m_statusTimer.start();
}

void FirmwareServer::stop()
{
    m_stopped = true;
    m_statusTimer.stop();
    m_network.reset();
}

template <typename Receiver>
void FirmwareServer::get(const QNetworkRequest& request, const ReplyLimits& limits, Receiver onFinished)
{
    if (m_network == nullptr)
        m_network = std::make_unique<QNetworkAccessManager>();
    QNetworkReply* reply = m_network->get(request);
    const auto* guard = new ReplyGuard(reply, limits);
    connect(reply, &QNetworkReply::finished, this, [this, reply, guard, onFinished] {
        reply->deleteLater();
        (this->*onFinished)(reply, guard->cutReason());
    });
}

void FirmwareServer::requestStatus()
{
    if (m_stopped)
        return;
    QNetworkRequest request{QUrl(listUrl())};
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::NoLessSafeRedirectPolicy);
    request.setRawHeader("User-Agent", "Quorvel");
    ReplyLimits limits;
    limits.stallMs = m_timings.statusTimeoutMs;
    limits.totalMs = m_timings.statusTimeoutMs;
    limits.maxBytes = cMaxCatalogueBytes;
    limits.discardBody = true;
    get(request, limits, &FirmwareServer::onStatusFinished);
}

void FirmwareServer::onStatusFinished(QNetworkReply* reply, const QString& cutReason)
{
    const int httpStatus = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    const bool accepted =
        httpStatus == 0 || (httpStatus >= cFirstSuccessStatus && httpStatus < cFirstErrorStatus);
    const bool connected = reply->error() == QNetworkReply::NoError && accepted;
    m_log.write(QStringLiteral("requestServerStatus finished. error=%1(%2) httpStatus=%3 connected=%4")
                    .arg(QString::number(int(reply->error())),
                         cutReason.isEmpty() ? reply->errorString() : cutReason, QString::number(httpStatus),
                         QString::number(int(connected))));
    if (connected != m_connected) {
        m_connected = connected;
        Q_EMIT connectedChanged();
    }
    // Without this, a server that comes up after the application would stay without firmware types.
    if (connected && m_catalogueMissing && m_catalogueRequests == 0)
        requestCatalogue(QString());
}

void FirmwareServer::requestCatalogue(const QString& url)
{
    if (m_stopped)
        return;
    const QString address = url.isEmpty() ? listUrl() : url;
    m_log.write(QStringLiteral("requestMcuTypes: %1").arg(address));
    ReplyLimits limits;
    limits.stallMs = m_timings.catalogueStallMs;
    limits.totalMs = m_timings.catalogueTimeoutMs;
    limits.maxBytes = cMaxCatalogueBytes;
    ++m_catalogueRequests;
    get(QNetworkRequest(QUrl(address)), limits, &FirmwareServer::onCatalogueFinished);
}

void FirmwareServer::onCatalogueFinished(QNetworkReply* reply, const QString& cutReason)
{
    --m_catalogueRequests;
    // A reply that was cut off is closed.
    const QByteArray body = reply->isReadable() ? reply->readAll() : QByteArray();
    m_log.write(QStringLiteral("requestMcuTypes finished. error=%1(%2) bytes=%3")
                    .arg(QString::number(int(reply->error())),
                         cutReason.isEmpty() ? reply->errorString() : cutReason,
                         QString::number(body.size())));
    m_catalogueMissing = reply->error() != QNetworkReply::NoError;
    // The page of an error is no catalogue, whatever it says.
    m_catalogue = FirmwareCatalogue::fromJson(m_catalogueMissing ? QByteArray() : body);
    Q_EMIT catalogueChanged();
}
