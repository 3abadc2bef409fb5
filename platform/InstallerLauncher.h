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
    /// Windows only: the end of the command line. It is passed on unchanged.
    QString nativeArguments = {};
};

/// Returns the Windows command that opens the file \a path: Explorer with a file URL. Explorer splits its
/// command line at blanks and commas outside of quotes.
inline ShellCommand explorerCommand(const QString& path)
{
    return {QStringLiteral("explorer"), {}, QStringLiteral("\"file:///%1\"").arg(path)};
}

/// Returns the command that opens the file \a path on a Linux desktop.
inline ShellCommand xdgOpenCommand(const QString& path)
{
    return {QStringLiteral("xdg-open"), {path}};
}

/// Opens the downloaded installer \a path (absolute) with the desktop's program for it. Does not wait.
/// Returns false when that program cannot be started.
bool openInstaller(const QString& path);

} // namespace platform
