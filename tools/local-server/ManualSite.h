// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>

/// The manual as files below one folder, read at each request: a manual that is built later is there at once.
/// Immutable, so any thread may use it.
class ManualSite
{
public:
    struct File
    {
        /// False when the site has no such file; the rest is then empty.
        bool found = false;
        QByteArray body;
        const char* type = "";
    };

    /// \a folder has "index.html" once the manual is built.
    explicit ManualSite(const QString& folder);

    bool isBuilt() const;
    /// Returns the file at the decoded URL path \a path, or the index page of a folder whose path ends with
    /// "/". Nothing outside the site's folder is ever returned.
    File file(const QString& path) const;
    /// True for a folder of the site whose \a path lacks the "/" that relative links need.
    bool needsSlash(const QString& path) const;

private:
    /// Returns the canonical path below the site's folder, or an empty text.
    QString inside(const QString& path) const;

    QString m_folder;
};
