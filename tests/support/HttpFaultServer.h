// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QHash>
#include <QObject>
#include <QTcpServer>
#include <QVector>

#include <functional>

class QTcpSocket;

/**
 * A small HTTP server on a free loopback port. Each path has the answer, correct or not, that a test sets.
 *
 * Lives on the thread of the test and answers from its event loop. Every connection serves one request.
 */
class HttpFaultServer : public QObject
{
    Q_OBJECT

public:
    struct Request
    {
        QByteArray method;
        /// With the query, as the client wrote it.
        QByteArray path;
        /// By lower-case name.
        QHash<QByteArray, QByteArray> headers;
        QByteArray body;
    };

    struct Reply
    {
        enum Length : qint64 {
            ActualLength = -2, ///< Content-Length is correct.
            NoLength = -1      ///< No Content-Length: the end of the connection ends the body.
        };
        enum class After {
            Close, ///< The connection ends.
            Stall  ///< The connection stays, and nothing more comes.
        };

        int status = 200;
        QByteArray body;
        /// Additional complete header lines, each with its line end.
        QByteArray headers;
        /// A Length, or the number of bytes to announce, correct or not.
        qint64 length = ActualLength;
        /// Number of body bytes to send; all when negative.
        qint64 sendBytes = -1;
        After after = After::Close;
        /// Accepts the request and never answers.
        bool mute = false;
        /// Sent unchanged instead of everything above, for answers that are not HTTP.
        QByteArray raw;
        /// Size of the pieces in which the answer is sent, with this pause before each; 0 sends all at once.
        int pieceBytes = 0;
        int pauseMs = 0;

        /// Returns an answer with this \a body, after \a change has modified it.
        template <typename Change>
        static Reply of(const QByteArray& body, Change change)
        {
            Reply reply;
            reply.body = body;
            change(reply);
            return reply;
        }
        static Reply of(const QByteArray& body)
        {
            return of(body, [](Reply&) {});
        }
    };

    using Handler = std::function<Reply(const Request&)>;

    /// Starts listening on \a port; 0 takes any free one. isListening() returns whether that worked.
    explicit HttpFaultServer(QObject* parent = nullptr, quint16 port = 0);
    ~HttpFaultServer() override;

    bool isListening() const { return m_server.isListening(); }
    quint16 port() const { return m_server.serverPort(); }
    /// Returns "http://127.0.0.1:<port>" + \a path.
    QString url(const QString& path) const;

    /// Answers requests for \a path (without a query) with \a reply; any other path gets a 404.
    void setReply(const QByteArray& path, const Reply& reply);
    void setHandler(const QByteArray& path, const Handler& handler);
    /// Ends every open connection, the stalled ones included.
    void dropConnections();
    /// Stops listening: new connections are refused.
    void close();

    const QVector<Request>& requests() const { return m_requests; }
    /// Returns the number of requests for \a path.
    int requestCount(const QByteArray& path) const;

Q_SIGNALS:
    /// A complete request has arrived; its answer begins now.
    void requested(const QByteArray& path);

private:
    void onConnection();
    void onData(QTcpSocket* socket);
    void answer(QTcpSocket* socket, const Reply& reply);

    QTcpServer m_server;
    QHash<QByteArray, Handler> m_handlers;
    QHash<QTcpSocket*, QByteArray> m_received;
    QVector<Request> m_requests;
};

Q_DECLARE_METATYPE(HttpFaultServer::Reply)
