// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/HttpFaultServer.h"

#include <QHostAddress>
#include <QTcpSocket>
#include <QTimer>

#include <algorithm>
#include <memory>

namespace {

/// Reads the request in \a data. Returns false while it is incomplete.
bool parseRequest(const QByteArray& data, HttpFaultServer::Request& request)
{
    const int headEnd = data.indexOf("\r\n\r\n");
    if (headEnd < 0)
        return false;
    const QList<QByteArray> lines = data.left(headEnd).split('\n');
    const QList<QByteArray> words = lines.constFirst().trimmed().split(' ');
    request.method = words.value(0);
    request.path = words.value(1);
    request.headers.clear();
    for (int i = 1; i < lines.size(); ++i) {
        const QByteArray line = lines.at(i).trimmed();
        const int colon = line.indexOf(':');
        request.headers.insert(line.left(colon).toLower(), line.mid(colon + 1).trimmed());
    }
    request.body = data.mid(headEnd + 4);
    return request.body.size() >= request.headers.value("content-length").toInt();
}

QByteArray wireBytes(const HttpFaultServer::Reply& reply)
{
    using Reply = HttpFaultServer::Reply;
    if (!reply.raw.isEmpty())
        return reply.raw;
    QByteArray bytes = "HTTP/1.1 " + QByteArray::number(reply.status) + " Test\r\nConnection: close\r\n";
    if (reply.length != Reply::NoLength) {
        const qint64 length = reply.length == Reply::ActualLength ? reply.body.size() : reply.length;
        bytes += "Content-Length: " + QByteArray::number(length) + "\r\n";
    }
    bytes += reply.headers + "\r\n";
    return bytes + (reply.sendBytes < 0 ? reply.body : reply.body.left(int(reply.sendBytes)));
}

} // namespace

HttpFaultServer::HttpFaultServer(QObject* parent, quint16 port) : QObject(parent)
{
    connect(&m_server, &QTcpServer::newConnection, this, &HttpFaultServer::onConnection);
    m_server.listen(QHostAddress::LocalHost, port);
}

HttpFaultServer::~HttpFaultServer()
{
    // The sockets are deleted with m_server. Their signal handlers would use the deleted m_received.
    const QList<QTcpSocket*> sockets = m_server.findChildren<QTcpSocket*>();
    for (QTcpSocket* socket : sockets)
        socket->disconnect(this);
}

QString HttpFaultServer::url(const QString& path) const
{
    return QStringLiteral("http://127.0.0.1:%1%2").arg(port()).arg(path);
}

void HttpFaultServer::setReply(const QByteArray& path, const Reply& reply)
{
    m_handlers.insert(path, [reply](const Request&) { return reply; });
}

void HttpFaultServer::setHandler(const QByteArray& path, const Handler& handler)
{
    m_handlers.insert(path, handler);
}

void HttpFaultServer::dropConnections()
{
    const QList<QTcpSocket*> sockets = m_server.findChildren<QTcpSocket*>();
    for (QTcpSocket* socket : sockets)
        socket->abort();
}

void HttpFaultServer::close()
{
    m_server.close();
}

int HttpFaultServer::requestCount(const QByteArray& path) const
{
    return int(std::count_if(m_requests.cbegin(), m_requests.cend(),
                             [&path](const Request& request) { return request.path == path; }));
}

void HttpFaultServer::onConnection()
{
    while (QTcpSocket* socket = m_server.nextPendingConnection()) {
        connect(socket, &QTcpSocket::readyRead, this, [this, socket] { onData(socket); });
        connect(socket, &QTcpSocket::disconnected, this, [this, socket] {
            m_received.remove(socket);
            socket->deleteLater();
        });
    }
}

void HttpFaultServer::onData(QTcpSocket* socket)
{
    QByteArray& received = m_received[socket];
    received += socket->readAll();
    Request request;
    if (!parseRequest(received, request))
        return;
    disconnect(socket, &QTcpSocket::readyRead, this, nullptr);
    m_requests.append(request);
    const QByteArray path = request.path.split('?').constFirst();
    Q_EMIT requested(path);
    Reply notFound;
    notFound.status = 404;
    const Handler handler = m_handlers.value(path);
    answer(socket, handler ? handler(request) : notFound);
}

void HttpFaultServer::answer(QTcpSocket* socket, const Reply& reply)
{
    if (reply.mute)
        return;
    const QByteArray bytes = wireBytes(reply);
    const bool closes = reply.after == Reply::After::Close;
    if (reply.pieceBytes <= 0) {
        socket->write(bytes);
        if (closes)
            socket->disconnectFromHost();
        return;
    }
    // The timer is a child of the socket and ends with the connection, whichever side closes it.
    auto* timer = new QTimer(socket);
    auto sent = std::make_shared<int>(0);
    connect(timer, &QTimer::timeout, socket, [socket, timer, bytes, sent, closes, piece = reply.pieceBytes] {
        const int count = qMin(piece, bytes.size() - *sent);
        socket->write(bytes.constData() + *sent, count);
        *sent += count;
        if (*sent < bytes.size())
            return;
        timer->stop();
        if (closes)
            socket->disconnectFromHost();
    });
    timer->start(reply.pauseMs);
}
