// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLocalServer>
#include <QObject>

class InstrumentPlayer;

/// Commands from outside over a UNIX socket: a line each, answered by a line. Lives on the main thread.
class ControlChannel : public QObject
{
    Q_OBJECT

public:
    /// The player must outlive the channel.
    explicit ControlChannel(InstrumentPlayer* player, QObject* parent = nullptr);

    /// Listens on \a path, an absolute file name; why that fails, or empty.
    QString listen(const QString& path);

private:
    void accept();

    InstrumentPlayer* m_player;
    QLocalServer m_server;
};
