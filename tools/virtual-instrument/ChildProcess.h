// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QProcess>

/**
 * The program under test, in a process group of its own with this process's output channels. The whole group
 * goes when the program ends, when end() is called, and when this process is killed.
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

    /// Asks the group to end, and ends it by force when it does not within some seconds.
    void end();

    /// The exit code as a shell gives it: 128 and the signal's number after a crash.
    int shellExitCode() const;

protected:
    void setupChildProcess() override;

private:
    void endGroup();

    /// Kept because processId() is 0 once the program has ended.
    qint64 m_group = 0;
};
