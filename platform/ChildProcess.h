// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QProcess>

#include <memory>

namespace platform {

/**
 * A QProcess that is safe when the system refuses a new process.
 *
 * For a plain QProcess, Qt 5.15 on Linux uses a system call of its own and takes its failure for a child with
 * the process id -1. Ending that child, which the destructor does too, would kill every process of the user.
 * For a derived class Qt uses fork(), and a failure emits errorOccurred(FailedToStart).
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
 * Deletes a child process without waiting for it. Call it on the thread of the process object.
 *
 * The destructor of QProcess waits up to 30 s for a program that does not end, for example one that hangs in
 * the kernel. This deleter kills a running program and moves its object to the application's thread. The
 * object is deleted there when the program has ended.
 */
struct ChildProcessDeleter
{
    void operator()(ChildProcess* process) const;
};

using ChildProcessPointer = std::unique_ptr<ChildProcess, ChildProcessDeleter>;

} // namespace platform
