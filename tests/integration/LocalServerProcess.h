// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QProcess>
#include <QString>

/// The local server as a program of its own on free ports, for as long as this object lives.
class LocalServerProcess
{
public:
    LocalServerProcess() = default;
    ~LocalServerProcess();
    Q_DISABLE_COPY(LocalServerProcess)

    /// Starts it with further \a arguments; false when it does not tell its ports in time.
    bool start(const QStringList& arguments = {});
    int apiPort() const { return m_apiPort; }
    int docsPort() const { return m_docsPort; }

    /// Gives one command, for example "fault /download/* stalled"; false when it was not understood.
    bool command(const QString& line);
    /// Ends it as a lost server would: at once.
    void kill();

private:
    /// The next line that it prints; empty when none comes.
    QString nextLine();

    QProcess m_process;
    int m_apiPort = 0;
    int m_docsPort = 0;
};
