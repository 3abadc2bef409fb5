// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/PowerShell.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <QtEndian>

#include <algorithm>

namespace platform::powershell {

namespace {

/// Maximum number of characters of an answer in the log.
constexpr int cLoggedAnswerLength = 500;

/// Returns \a path for a parameter that accepts wildcards, with its brackets escaped.
QString wildcardLiteral(QString path)
{
    static const QRegularExpression special(QStringLiteral("([\\[\\]`])"));
    return path.replace(special, QStringLiteral("`\\1"));
}

/// Returns the number of entries in the zip file \a path; 0 when the file is not a zip file. A zip file ends
/// with a record of 22 bytes that begins with "PK", 5, 6. The number is at offset 10, 16 bits, little-endian;
/// 65,535 means that or more.
int entriesIn(const QString& path)
{
    constexpr int cRecordLength = 22;
    constexpr int cEntriesOffset = 10;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || !file.seek(file.size() - cRecordLength))
        return 0;
    const QByteArray record = file.read(cRecordLength);
    return record.size() == cRecordLength && record.startsWith("PK\5\6")
               ? qFromLittleEndian<quint16>(record.constData() + cEntriesOffset)
               : 0;
}

int filesBelow(const QString& folder)
{
    int count = 0;
    for (QDirIterator files(folder, QDir::Files, QDirIterator::Subdirectories); files.hasNext(); files.next())
        ++count;
    return count;
}

} // namespace

QStringList arguments(const QString& command)
{
    return {QStringLiteral("-NoProfile"), QStringLiteral("-ExecutionPolicy"), QStringLiteral("Bypass"),
            QStringLiteral("-Command"), command};
}

QString quoted(QString text)
{
    // PowerShell also accepts the typographic apostrophes U+2018 to U+201B.
    static const QRegularExpression apostrophe(QStringLiteral("(['\\x{2018}-\\x{201B}])"));
    return text.replace(apostrophe, QStringLiteral("\\1\\1"));
}

QString pnpKey(const QString& vid, const QString& pid)
{
    return QStringLiteral("VID_%1&PID_%2").arg(vid, pid).toUpper();
}

QString deviceQuery(const QString& key)
{
    return QStringLiteral(
               "$ids = Get-CimInstance Win32_PnPEntity | Select-Object -ExpandProperty PNPDeviceID; "
               "$ids | Where-Object { $_ -like '*%1*' }")
        .arg(quoted(key));
}

QString compressCommand(const QString& folder, const QString& archive)
{
    return QStringLiteral("Compress-Archive -Path '") + quoted(wildcardLiteral(folder)) +
           QStringLiteral("\\*' -DestinationPath '") + quoted(archive) + QStringLiteral("' -Force");
}

UsbQuery queryPnpDevice(const QString& vid, const QString& pid, const ProcessRun& run)
{
    const QString key = pnpKey(vid, pid);
    QString output;
    QString errors;
    int exitCode = -1;
    const bool ok = run(program(), arguments(deviceQuery(key)), &output, &errors, &exitCode, cQueryTimeoutMs);
    UsbQuery query;
    query.found = ok && output.contains(key, Qt::CaseInsensitive);
    // An empty list is not an answer: the shell also prints one when the query fails.
    query.answered = query.found;
    query.failed = !ok;
    query.detail = QStringLiteral("ok=%1 exitCode=%2 key=%3 stdout=%4 stderr=%5")
                       .arg(QString::number(int(ok)), QString::number(exitCode), key,
                            output.left(cLoggedAnswerLength).simplified(), errors.simplified());
    return query;
}

ArchiveOutcome archiveFolder(const QString& folder, const QString& archive, const ProcessRun& run, int)
{
    const QString command =
        compressCommand(QDir::toNativeSeparators(folder), QDir::toNativeSeparators(archive));
    ArchiveOutcome outcome;
    outcome.ran = run(program(), arguments(command), &outcome.standardOutput, &outcome.standardError,
                      &outcome.exitCode, cQueryTimeoutMs);
    constexpr int cMoreEntries = 0xFFFF;
    const int packed = std::min(entriesIn(archive), cMoreEntries);
    outcome.complete = packed >= std::min(filesBelow(folder), cMoreEntries);
    if (outcome.ran && outcome.exitCode == 0 && !outcome.complete)
        outcome.standardError += QStringLiteral(" %1 files are packed, not all.").arg(packed);
    return outcome;
}

} // namespace platform::powershell
