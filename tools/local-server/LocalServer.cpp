// SPDX-License-Identifier: GPL-3.0-or-later
#include "LocalServer.h"

#include "TestContent.h"

#include <QFile>

#include <httplib.h>

#include <algorithm>
#include <chrono>
#include <iostream>

namespace {

constexpr int cWorkerThreads = 64;
constexpr int cBlockBytes = 64 * 1024;
constexpr int cSlowBytesPerSecond = 16 * 1024;
/// Pieces per second of a slow answer.
constexpr int cSlowPiecesPerSecond = 10;
/// Interval at which a hanging answer checks that its client is still connected.
constexpr int cHangCheckMs = 500;
/// End of a hanging answer. A client that waits this long has no time limit of its own.
constexpr int cLongestHangMs = 120000;
constexpr int cGarbageBytes = 4096;
constexpr std::uint64_t cGarbageSeed = 4711;
/// Target of redirects: the content under this prefix equals the content without it.
const QString cMovedPrefix = QStringLiteral("/moved");
const QString cCataloguePath = QStringLiteral("/api/mcu/firmware_list");
const QString cCheckPath = QStringLiteral("/api/check_version");
const QString cControlPath = QStringLiteral("/control");

/// SO_REUSEPORT, which the library sets by default, would let a second server bind the same port unnoticed.
void reuseAddressOnly(socket_t socket)
{
    const int yes = 1;
    setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, reinterpret_cast<const char*>(&yes), sizeof yes);
}

/// Sends \a body at \a bytesPerSecond, at full speed when that is 0.
bool sendPaced(httplib::DataSink& sink, const QByteArray& body, int end, int bytesPerSecond,
               const FaultTable& faults)
{
    const int piece = bytesPerSecond > 0 ? std::max(1, bytesPerSecond / cSlowPiecesPerSecond) : cBlockBytes;
    for (int at = 0; at < end;) {
        const int count = std::min(piece, end - at);
        if (faults.isStopped() || !sink.write(body.constData() + at, std::size_t(count)))
            return false;
        at += count;
        if (bytesPerSecond > 0)
            faults.waitForChange(1000 / cSlowPiecesPerSecond);
    }
    return true;
}

QByteArray pageWithoutManual()
{
    QFile file(QStringLiteral(":/site/not-built.html"));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

LocalServer::LocalServer(const Options& options)
    : m_options(options)
    , m_updates(options.installerBytes)
    , m_manual(options.manualFolder)
    , m_api(std::make_unique<httplib::Server>())
    , m_docs(std::make_unique<httplib::Server>())
{}

LocalServer::~LocalServer()
{
    m_faults.stop();
    m_api->stop();
    m_docs->stop();
    if (m_apiThread.joinable())
        m_apiThread.join();
    if (m_docsThread.joinable())
        m_docsThread.join();
}

bool LocalServer::bind(httplib::Server& server, int& port, const char* what)
{
    server.new_task_queue = [] { return new httplib::ThreadPool(cWorkerThreads); };
    server.set_socket_options(reuseAddressOnly);
    // One request per connection, so that each fault affects one request only.
    server.set_keep_alive_max_count(1);
    const bool docs = &server == m_docs.get();
    const auto handler = [this, docs](const httplib::Request& request, httplib::Response& response) {
        serve(request, response, docs);
    };
    server.Get(".*", handler);
    server.Post(".*", handler);
    const std::string host = m_options.host.toStdString();
    if (port == 0) {
        port = server.bind_to_any_port(host);
        if (port > 0)
            return true;
    } else if (server.bind_to_port(host, port)) {
        return true;
    }
    m_errorText = QStringLiteral("port %1 for the %2 cannot be used on %3")
                      .arg(port)
                      .arg(QLatin1String(what), m_options.host);
    return false;
}

bool LocalServer::start()
{
    if (!bind(*m_api, m_options.apiPort, "API") || !bind(*m_docs, m_options.docsPort, "manual"))
        return false;
    m_apiThread = std::thread([this] { m_api->listen_after_bind(); });
    m_docsThread = std::thread([this] { m_docs->listen_after_bind(); });
    return true;
}

QString LocalServer::command(const QString& line)
{
    const QStringList words = line.simplified().split(QLatin1Char(' '));
    const QString& verb = words.constFirst();
    if (verb == QLatin1String("fault") && words.size() == 3) {
        const std::optional<Fault> fault = Fault::fromText(words.at(2));
        if (!fault)
            return QStringLiteral("error: no such fault: ") + words.at(2);
        m_faults.set(words.at(1), *fault);
    } else if (verb == QLatin1String("clear") && words.size() <= 2) {
        m_faults.clear(words.value(1));
    } else if (verb == QLatin1String("update") && words.size() == 2) {
        const std::optional<UpdateService::Mode> mode = UpdateService::modeFromText(words.at(1));
        if (!mode)
            return QStringLiteral("error: no such answer: ") + words.at(1);
        m_updates.setMode(*mode);
    } else if (verb != QLatin1String("list") || words.size() != 1) {
        return QStringLiteral("error: not understood: ") + line;
    }
    QStringList state{QStringLiteral("update ") + UpdateService::modeNames().at(int(m_updates.mode()))};
    const QStringList faults = m_faults.describe();
    for (const QString& fault : faults)
        state.append(QStringLiteral("fault ") + fault);
    return state.join(QLatin1Char('\n'));
}

void LocalServer::serve(const httplib::Request& request, httplib::Response& response, bool docs)
{
    const QString path = QString::fromStdString(request.path);
    if (!docs && path == cControlPath) {
        const QString line = QString::fromStdString(request.method == "POST" ? request.body : "list");
        const QString result = command(line);
        response.status = result.startsWith(QLatin1String("error")) ? 400 : 200;
        response.set_content(result.toStdString() + '\n', "text/plain; charset=utf-8");
        return;
    }
    if (m_options.logRequests)
        std::cout << request.method << ' ' << request.path << std::endl;
    if (docs && m_manual.needsSlash(path)) {
        response.set_redirect(request.path + '/');
        return;
    }
    const bool moved = path.startsWith(cMovedPrefix + QLatin1Char('/'));
    const QString contentPath = moved ? path.mid(cMovedPrefix.size()) : path;
    const Content content = docs ? docsContent(contentPath) : apiContent(request, contentPath);
    respond(response, content, faultFor(path), path);
}

LocalServer::Content LocalServer::apiContent(const httplib::Request& request, const QString& path)
{
    const std::string host = request.get_header_value("Host");
    const QString baseUrl = host.empty()
                                ? QStringLiteral("http://%1:%2").arg(m_options.host).arg(m_options.apiPort)
                                : QStringLiteral("http://") + QString::fromStdString(host);
    if (path == cCataloguePath)
        return {200, m_firmware.catalogue(baseUrl), "application/json"};
    if (path == cCheckPath) {
        if (request.method != "POST")
            return {405, QByteArrayLiteral("{\"code\": 405}"), "application/json"};
        const QByteArray answer = m_updates.answer(QByteArray::fromStdString(request.body), baseUrl);
        return answer.isEmpty() ? Content{400, QByteArrayLiteral("{\"code\": 400}"), "application/json"}
                                : Content{200, answer, "application/json"};
    }
    if (path == UpdateService::installerPath())
        return {200, m_updates.installer()};
    const QByteArray image = m_firmware.image(path);
    return image.isNull() ? Content{404, QByteArrayLiteral("not found\n"), "text/plain"}
                          : Content{200, image};
}

LocalServer::Content LocalServer::docsContent(const QString& path) const
{
    const ManualSite::File file = m_manual.file(path);
    if (file.found)
        return {200, file.body, file.type};
    if (!m_manual.isBuilt())
        return {503, pageWithoutManual(), "text/html; charset=utf-8"};
    return {404, QByteArrayLiteral("not found\n"), "text/plain"};
}

Fault LocalServer::faultFor(const QString& path) const
{
    const Fault fault = m_faults.find(path);
    if (fault.kind != Fault::Kind::None || path != UpdateService::installerPath())
        return fault;
    if (m_updates.mode() == UpdateService::Mode::MissingLength)
        return {Fault::Kind::NoLength, 0};
    if (m_updates.mode() == UpdateService::Mode::Truncated)
        return {Fault::Kind::Truncated, 0};
    return fault;
}

void LocalServer::waitWhileFaulty(const QString& path, Fault::Kind kind) const
{
    if (!m_faults.isStopped() && faultFor(path).kind == kind)
        m_faults.waitForChange(cHangCheckMs);
}

void LocalServer::respond(httplib::Response& response, const Content& content, const Fault& fault,
                          const QString& path)
{
    const QByteArray body = content.body;
    const auto size = std::size_t(body.size());
    response.status = content.status;
    switch (fault.kind) {
    case Fault::Kind::None:
        response.set_content_provider(
            size, content.type, [body](std::size_t offset, std::size_t length, httplib::DataSink& sink) {
                return sink.write(body.constData() + offset, std::min(length, std::size_t(cBlockBytes)));
            });
        return;
    case Fault::Kind::Slow:
        response.set_content_provider(
            size, content.type,
            [this, body, speed = fault.value > 0 ? fault.value : cSlowBytesPerSecond](
                std::size_t, std::size_t, httplib::DataSink& sink) {
                return sendPaced(sink, body, body.size(), speed, m_faults);
            });
        return;
    case Fault::Kind::Truncated:
        response.set_content_provider(size, content.type,
                                      [this, body](std::size_t, std::size_t, httplib::DataSink& sink) {
                                          sendPaced(sink, body, body.size() / 2, 0, m_faults);
                                          return false;
                                      });
        return;
    case Fault::Kind::Stalled:
        response.set_content_provider(
            size, content.type, [this, body, path](std::size_t, std::size_t, httplib::DataSink& sink) {
                sendPaced(sink, body, body.size() / 2, 0, m_faults);
                for (int waited = 0; waited < cLongestHangMs && sink.is_writable() && !m_faults.isStopped() &&
                                     faultFor(path).kind == Fault::Kind::Stalled;
                     waited += cHangCheckMs)
                    waitWhileFaulty(path, Fault::Kind::Stalled);
                return false;
            });
        return;
    case Fault::Kind::NoLength:
        response.set_content_provider(content.type, [this, body](std::size_t, httplib::DataSink& sink) {
            if (!sendPaced(sink, body, body.size(), 0, m_faults))
                return false;
            sink.done();
            return true;
        });
        return;
    case Fault::Kind::Status:
        response.status = fault.value > 0 ? fault.value : 500;
        response.set_content("status " + std::to_string(response.status) + "\n", "text/plain");
        return;
    case Fault::Kind::Redirect:
        response.set_redirect(QString(cMovedPrefix + path).toStdString());
        return;
    case Fault::Kind::Loop:
        response.set_redirect(path.toStdString());
        return;
    case Fault::Kind::Garbage: {
        const QByteArray garbage = deterministicBytes(cGarbageSeed, cGarbageBytes);
        response.set_content(garbage.toStdString(), content.type);
        return;
    }
    case Fault::Kind::Huge:
        response.set_content_provider(
            content.type, [this, block = QByteArray(cBlockBytes, ' ')](std::size_t, httplib::DataSink& sink) {
                return !m_faults.isStopped() && sink.write(block.constData(), std::size_t(block.size()));
            });
        return;
    case Fault::Kind::Never:
        for (int waited = 0;
             waited < cLongestHangMs && !m_faults.isStopped() && faultFor(path).kind == Fault::Kind::Never;
             waited += cHangCheckMs)
            waitWhileFaulty(path, Fault::Kind::Never);
        response.status = 503;
        return;
    }
}
