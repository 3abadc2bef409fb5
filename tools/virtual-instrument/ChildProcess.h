// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QProcess>

/**
 * The program under test, in its own process group, with the output channels of this process. The whole group
 * is ended when the program ends, when end() is called, and when this process is killed.
 */
class ChildProcess : public QProcess
{
    Q_OBJECT

public:
    using QProcess::QProcess;
    ~ChildProcess() override;

    /// Starts \a command, the program and its arguments; false when it cannot be started.
    bool run(const QStringList& command);

    /// Whether the program ended and left processes of its group behind.
    bool leftProcessesBehind() const;

    /// Terminates the group; kills it when it does not end within some seconds.
    void end();

    /// The exit code as in a shell: 128 plus the signal number after a crash.
    int shellExitCode() const;

protected:
    void setupChildProcess() override;

private:
    void endGroup();

    /// Kept because processId() is 0 after the end of the program.
    qint64 m_group = 0;
};
