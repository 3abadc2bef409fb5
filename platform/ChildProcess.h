// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QProcess>

#include <memory>

namespace platform {

/**
 * A QProcess that survives a system which refuses it a process.
 *
 * For a plain QProcess Qt 5.15 on Linux uses a system call of its own and takes that one's failure for a
 * child with the process id -1: ending it, which the destructor does too, would kill every process of the
 * user. For a derived class, whatever it adds, Qt uses fork(), and a failure is told by
 * errorOccurred(FailedToStart).
 *
 * On Windows Qt starts it with CREATE_NO_WINDOW: a console program shows no window.
 */
class ChildProcess : public QProcess
{
    Q_OBJECT

public:
    using QProcess::QProcess;
};

/**
 * Deletes a child process without waiting for it; on the thread of the process object.
 *
 * QProcess's destructor waits up to 30 s for a program that does not end, for example one that hangs in the
 * kernel. Here a program that still runs is killed, and its object goes to the application's thread, which
 * deletes it when the program has ended.
 */
struct ChildProcessDeleter
{
    void operator()(ChildProcess* process) const;
};

using ChildProcessPointer = std::unique_ptr<ChildProcess, ChildProcessDeleter>;

} // namespace platform
