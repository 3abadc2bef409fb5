// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/virtual-instrument/ControlChannel.h"

#include "tools/virtual-instrument/InstrumentPlayer.h"

#include <QLocalSocket>
#include <QPointer>

ControlChannel::ControlChannel(InstrumentPlayer* player, QObject* parent) : QObject(parent), m_player(player)
{
    connect(&m_server, &QLocalServer::newConnection, this, &ControlChannel::accept);
}

QString ControlChannel::listen(const QString& path)
{
    QLocalServer::removeServer(path);
    return m_server.listen(path) ? QString() : m_server.errorString();
}

void ControlChannel::accept()
{
    QLocalSocket* socket = m_server.nextPendingConnection();
    connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
    connect(socket, &QLocalSocket::readyRead, this, [this, socket] {
        while (socket->canReadLine()) {
            const QPointer<QLocalSocket> asker(socket);
            const auto reply = [asker](const QString& answer) {
                if (!asker.isNull())
                    asker->write(answer.toUtf8() + '\n');
            };
            const ParsedCommand parsed = parseCommand(QString::fromUtf8(socket->readLine()));
            if (parsed.error.isEmpty())
                m_player->execute(parsed.command, reply);
            else
                reply(QStringLiteral("error ") + parsed.error);
        }
    });
}
