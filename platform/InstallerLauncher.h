// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

namespace platform {

/// A program of the desktop with its arguments.
struct ShellCommand
{
    QString program;
    QStringList arguments;
};

/// What opens the file \a path on Windows: the shell's explorer with a file URL. The path is one argument,
/// so a user name with blanks in it does not split it.
inline ShellCommand explorerCommand(const QString& path)
{
    return {QStringLiteral("explorer"), {QStringLiteral("file:///") + path}};
}

/// What opens the file \a path on a Linux desktop.
inline ShellCommand xdgOpenCommand(const QString& path)
{
    return {QStringLiteral("xdg-open"), {path}};
}

/// Opens the downloaded installer \a path (absolute) with the desktop's own means and does not wait.
/// False when the program that opens it cannot be started.
bool openInstaller(const QString& path);

} // namespace platform
