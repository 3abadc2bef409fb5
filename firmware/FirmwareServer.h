// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "firmware/FirmwareCatalogue.h"
#include "network/ServerAddress.h"
#include "storage/DebugLog.h"

#include <QObject>
#include <QTimer>

#include <memory>

class QNetworkAccessManager;
class QNetworkReply;
class QNetworkRequest;
class SettingsFile;
struct ReplyLimits;

/// Period and limits of the requests in milliseconds.
struct ServerTimings
{
    int statusPeriodMs = 10000;
    /// Limit of a whole status check, below its period: the state is right again one period after a recovery.
    int statusTimeoutMs = 8000;
    int catalogueStallMs = 8000;
    int catalogueTimeoutMs = 30000;
};

/**
 * The firmware server: its address in the settings, whether it can be reached, and its catalogue. Lives on
 * the GUI thread.
 */
class FirmwareServer : public QObject
{
    Q_OBJECT

public:
    /// Reads the address from \a settings; null stands for the defaults, and nothing is then stored.
    FirmwareServer(std::shared_ptr<SettingsFile> settings, const ServerTimings& timings, DebugLog log,
                   QObject* parent = nullptr);
    ~FirmwareServer() override;

    /// Base URL, normalised.
    const QString& host() const { return m_host; }
    int docsPort() const { return m_docsPort; }
    int apiPort() const { return m_apiPort; }
    /// URL of \a path of the manuals.
    QString docsUrl(const QString& path) const;
    /// Whether the last status check reached the server.
    bool isConnected() const { return m_connected; }
    /// Empty until a request has succeeded, and after one that failed.
    const FirmwareCatalogue& catalogue() const { return m_catalogue; }

    /// Normalises and stores the host or base URL; a new one is asked at once.
    void setHost(const QString& host);
    /// Stores a port, the default for anything outside 1 to 65535.
    void setDocsPort(int port);
    /// As setDocsPort(); a new port is asked at once.
    void setApiPort(int port);

    /// Checks the status now and then periodically.
    void start();
    /// Drops every request. Nothing starts afterwards.
    void stop();
    /// Fetches the catalogue from \a url, by default from the server. Ends in catalogueChanged().
    void requestCatalogue(const QString& url);

Q_SIGNALS:
    void hostChanged();
    void docsPortChanged();
    void apiPortChanged();
    void connectedChanged();
    void catalogueChanged();

private:
    QString listUrl() const;
    template <typename Setting>
    void store(const Setting& setting, const QVariant& value);
    /// Sends a GET request within \a limits; \a onFinished receives the reply and why it was cut off, if it
    /// was.
    template <typename Receiver>
    void get(const QNetworkRequest& request, const ReplyLimits& limits, Receiver onFinished);
    void ask();
    void requestStatus();
    void onStatusFinished(QNetworkReply* reply, const QString& cutReason);
    void onCatalogueFinished(QNetworkReply* reply, const QString& cutReason);

    const std::shared_ptr<SettingsFile> m_settings;
    const ServerTimings m_timings;
    const DebugLog m_log;
    QString m_host = server::defaultServerAddress();
    int m_docsPort = server::cDefaultDocsPort;
    int m_apiPort = server::cDefaultApiPort;
    bool m_connected = false;
    FirmwareCatalogue m_catalogue;
    /// Catalogue requests under way.
    int m_catalogueRequests = 0;
    /// The last catalogue request failed: ask again when the server is back.
    bool m_catalogueMissing = false;
    bool m_stopped = false;
    QTimer m_statusTimer;
    /// Made with the first request; null before it and after stop().
    std::unique_ptr<QNetworkAccessManager> m_network;
};
