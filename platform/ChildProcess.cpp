// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ChildProcess.h"

#include <QCoreApplication>

void platform::ChildProcessDeleter::operator()(ChildProcess* process) const
{
    if (process->state() == QProcess::NotRunning) {
        delete process;
        return;
    }
    process->disconnect();
    process->setParent(nullptr);
    QObject::connect(process, &QProcess::stateChanged, process, [process](QProcess::ProcessState state) {
        if (state == QProcess::NotRunning)
            process->deleteLater();
    });
    process->kill();
    // Without an application nothing would notice the end. The memory is freed when this process exits.
    if (const QCoreApplication* application = QCoreApplication::instance())
        process->moveToThread(application->thread());
}
