// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FaultTable.h"
#include "FirmwareLibrary.h"
#include "ManualSite.h"
#include "UpdateService.h"

#include <QString>

#include <memory>
#include <thread>

namespace httplib {
class Server;
struct Request;
struct Response;
} // namespace httplib

/**
 * The server with its two ports: catalogue, firmware, version check and installer on one, the manual on the
 * other. It answers on its own threads from start() until its destruction.
 */
class LocalServer
{
public:
    struct Options
    {
        QString host = QStringLiteral("127.0.0.1");
        int apiPort = 8078;
        int docsPort = 8000;
        int installerBytes = 24 << 20;
        /// Folder of the built manual; it may be missing or come later.
        QString manualFolder;
        /// Print one line per request.
        bool logRequests = false;
    };

    explicit LocalServer(const Options& options);
    ~LocalServer();

    /// Binds both ports; 0 selects a free port. Returns false when a port is taken; errorText() names it.
    bool start();
    QString errorText() const { return m_errorText; }
    int apiPort() const { return m_options.apiPort; }
    int docsPort() const { return m_options.docsPort; }

    FaultTable& faults() { return m_faults; }
    UpdateService& updates() { return m_updates; }

    /// Runs a command from a terminal or the control address: "fault PATH KIND[:VALUE]", "clear [PATH]",
    /// "update MODE", "list". Returns the reply; it begins with "error" when the command is invalid.
    QString command(const QString& line);

private:
    /// Returns the answer without faults.
    struct Content
    {
        int status = 200;
        QByteArray body;
        const char* type = "application/octet-stream";
    };

    bool bind(httplib::Server& server, int& port, const char* what);
    void serve(const httplib::Request& request, httplib::Response& response, bool docs);
    Content apiContent(const httplib::Request& request, const QString& path);
    Content docsContent(const QString& path) const;
    Fault faultFor(const QString& path) const;
    void respond(httplib::Response& response, const Content& content, const Fault& fault,
                 const QString& path);
    /// Waits for a limited time until \a path no longer has the fault \a kind.
    void waitWhileFaulty(const QString& path, Fault::Kind kind) const;

    Options m_options;
    QString m_errorText;
    FaultTable m_faults;
    const FirmwareLibrary m_firmware;
    UpdateService m_updates;
    const ManualSite m_manual;
    std::unique_ptr<httplib::Server> m_api;
    std::unique_ptr<httplib::Server> m_docs;
    std::thread m_apiThread;
    std::thread m_docsThread;
};
