// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

#include <optional>

/// Arguments and output of the flash tool.
namespace flash {

// Stages of an upgrade.
constexpr int cIdle = 0;
constexpr int cBoot = 1;
constexpr int cLogo = 2;
constexpr int cExec = 3;

/// Arguments that write the image \a path at \a address of the flash, printing progress.
QStringList writeArguments(const QString& address, const QString& path);

/// Arguments that read \a size bytes at \a address of the flash into the file \a path, printing progress.
QStringList readArguments(const QString& address, qint64 size, const QString& path);

/// The first percentage in a piece of the tool's output, limited to 0 to 100; nothing without one.
std::optional<int> percentIn(const QString& output);

/// The upgrade's progress, 0 to 100, when a stage has written \a percent of its image; 0 for no stage.
int overallProgress(int stage, int percent);

/// The upgrade's progress, 0 to 30, with \a received of \a total bytes (at least 1) of file \a index of
/// \a count files.
int downloadProgress(int index, int count, qint64 received, qint64 total);

/// Percent of a file, 0 to 100; \a total is at least 1.
int downloadPercent(qint64 received, qint64 total);

/// Whether \a output, the end of what the tool printed, says that the image is written: its last percentage
/// is 100. The tool also ends with exit code 0 when it cannot write this flash, and after an image without a
/// byte.
bool reportsWritten(const QString& output);

} // namespace flash
