// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QMap>
#include <QString>
#include <QStringList>

/// What the server offers: firmware types in its order, and the catalogue entry of each.
struct FirmwareCatalogue
{
    QStringList types;
    QMap<QString, QJsonObject> byType;

    /// Reads a catalogue document. Anything that is not one gives an empty catalogue; a type listed twice
    /// stays twice in \a types and keeps its last entry.
    static FirmwareCatalogue fromJson(const QByteArray& json);
};

/// The files of one firmware type, in download order.
struct FirmwareFiles
{
    QStringList urls;
    /// Name of the boot image: the last file whose name contains "boot"; empty when there is none.
    QString bootFileName;

    static FirmwareFiles fromEntry(const QJsonObject& entry);
};

namespace firmware {

/// Whether \a name is a plain file name on every platform: it cannot leave the folder it is joined to.
bool isPlainFileName(const QString& name);

/// The file name part of the path of \a url; "boot.bin" for "http://host/f1/boot.bin". It may be
/// anything: check it with isPlainFileName() before use.
QString fileNameOf(const QString& url);

} // namespace firmware
