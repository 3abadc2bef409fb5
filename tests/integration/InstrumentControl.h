// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLocalSocket>
#include <QString>

/// The control socket of the virtual instrument that this process runs under.
class InstrumentControl
{
public:
    /// Connects to the socket of the virtual instrument. Returns false without one.
    bool connectToInstrument();

    /// Sends one command and handles events until its reply. Returns "ok …" or "error …", or an empty text
    /// without a reply.
    QString ask(const QString& command);

    /// Returns a value of the "status" reply, such as "open" or "screen"; empty for an unknown name.
    QString status(const QString& key);

private:
    QLocalSocket m_socket;
};
