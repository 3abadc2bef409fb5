// SPDX-License-Identifier: GPL-3.0-or-later
#include "storage/LogExport.h"

#include "platform/UserFolders.h"
#include "storage/DataFolders.h"
#include "storage/DebugLog.h"

#include <QDir>
#include <QFile>

QString exportLogs(const DebugLog& log, const platform::FolderArchiver& archiver)
{
    const QString sourceDir = folders::logsPath();
    if (!QDir(sourceDir).exists()) {
        log.write(QStringLiteral("exportLogsArchive aborted: sourceDir missing. path=%1").arg(sourceDir));
        return {};
    }
    const QString desktop = platform::userFolder(platform::UserFolder::Desktop);
    QDir().mkpath(desktop);
    const QString archive = desktop + QStringLiteral("/Quorvel_logs.zip");
    QFile::remove(archive);

    const platform::ArchiveOutcome outcome = [&] {
        const DailyLog::Pause pause;
        return archiver(sourceDir, archive, platform::processRunner(nullptr), platform::cArchiveTimeLimitMs);
    }();
    log.write(QStringLiteral("exportLogsArchive finished. ok=%1 exitCode=%2 archive=%3 stdout=%4 stderr=%5")
                  .arg(QString::number(int(outcome.ran)), QString::number(outcome.exitCode), archive,
                       outcome.standardOutput.simplified(), outcome.standardError.simplified()));
    if (outcome.ran && outcome.exitCode == 0 && outcome.complete && QFile::exists(archive))
        return archive;
    // An archiver that was ended in the middle leaves half a file.
    QFile::remove(archive);
    return {};
}
