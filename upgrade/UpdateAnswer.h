// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>

/**
 * What the update server answered to a version check.
 *
 * The texts are taken over as they are and are empty for members that are missing or no strings; nothing
 * in them may be trusted before it was checked at its use.
 */
struct UpdateAnswer
{
    /// The body is a JSON object; false means that everything below is empty.
    bool isValid = false;
    /// The server offers an update: "need_update" is the boolean true.
    bool needUpdate = false;
    QString url;
    QString latestVersion;
    /// Hexadecimal SHA-256 of the installer, in either case.
    QString sha256;
    QString description;

    /// Reads the answer's \a body. Never fails: what cannot be read is left at its default.
    static UpdateAnswer fromJson(const QByteArray& body);
};

/// The body of a version check for \a version: indented JSON text with the members "version" and "platform".
QByteArray versionCheckBody(const QString& version);
