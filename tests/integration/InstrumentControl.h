// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLocalSocket>
#include <QString>

/// The control socket of the virtual instrument that this process runs under.
class InstrumentControl
{
public:
    /// Connects to the socket that the virtual instrument named; false when there is none.
    bool connectToInstrument();

    /// Does one command while events are handled; the reply, "ok …" or "error …", or empty without one.
    QString ask(const QString& command);

    /// A value of the "status" reply, such as "open" or "screen"; empty when there is no such value.
    QString status(const QString& key);

private:
    QLocalSocket m_socket;
};
