// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QProcess>
#include <QString>

/// The local server in a process of its own, on free ports, during the lifetime of this object.
class LocalServerProcess
{
public:
    LocalServerProcess() = default;
    ~LocalServerProcess();
    Q_DISABLE_COPY(LocalServerProcess)

    /// Starts the server with additional \a arguments. Returns false when it does not print its ports in
    /// time.
    bool start(const QStringList& arguments = {});
    int apiPort() const { return m_apiPort; }
    int docsPort() const { return m_docsPort; }

    /// Sends one command, for example "fault /download/* stalled". Returns false when the server refuses it.
    bool command(const QString& line);
    /// Kills the server.
    void kill();

private:
    /// Returns the next line that the server prints; empty when none comes.
    QString nextLine();

    QProcess m_process;
    int m_apiPort = 0;
    int m_docsPort = 0;
};
