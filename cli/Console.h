// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "cli/ExitCode.h"
#include "recording/RecordingError.h"

#include <QByteArray>
#include <QJsonObject>
#include <QString>

/// Results go to the standard output, messages and progress to the standard error.
namespace cli::console {

/// Writes bytes as they are. Returns false when nobody reads them any more, or the disk is full.
bool write(const QByteArray& bytes);
/// Writes a line of text.
bool writeLine(const QString& line);
/// Writes \a object as one line.
bool writeJson(const QJsonObject& object);
/// Hands what was written to the system. Returns false on failure.
bool flush();

/// Says what is wrong: "quorvel-cli: <text>", in red on a terminal unless NO_COLOR is set. Returns \a code.
int fail(ExitCode code, const QString& text);
int fail(const recording::Error& error);
/// Writes a message that is no failure.
void note(const QString& text);

/// Replaces the progress line, only on a terminal.
void showProgress(const QString& line);
/// Ends the progress line, if there is one.
void endProgress();

} // namespace cli::console
