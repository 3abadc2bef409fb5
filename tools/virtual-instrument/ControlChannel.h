// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLocalServer>
#include <QObject>

class InstrumentPlayer;

/// Takes commands over a UNIX socket; each line is answered by a line. Lives on the main thread.
class ControlChannel : public QObject
{
    Q_OBJECT

public:
    /// The player must outlive the channel.
    explicit ControlChannel(InstrumentPlayer* player, QObject* parent = nullptr);

    /// Listens on \a path, an absolute file name. Returns the error, or an empty text.
    QString listen(const QString& path);

private:
    void accept();

    InstrumentPlayer* m_player;
    QLocalServer m_server;
};
