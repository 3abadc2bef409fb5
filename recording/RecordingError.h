// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QMetaType>
#include <QString>

namespace recording {

/// Why a recording could not be made, read or changed.
enum class Failure {
    None,
    NotFound,     ///< nothing at the path
    Exists,       ///< a file is there already; it is never overwritten
    NoPermission, ///< this user may not read or write the file, or write in its folder
    ReadOnly,     ///< the medium cannot be written
    NotARecording,
    NewerSchema, ///< written by a newer version of this program
    Damaged,     ///< cut short, or its content is inconsistent
    DiskFull,
    Busy,        ///< another program is recording into the file
    InputOutput, ///< any other failure of the system or the disk
};

/// A failure with what it concerns.
struct Error
{
    Failure failure = Failure::None;
    QString path;
    QString detail; ///< what the system said, in English; may be empty

    explicit operator bool() const { return failure != Failure::None; }
};

/// Returns one sentence for the user in the language of the application, with the path; empty without a
/// failure.
QString errorText(const Error& error);

} // namespace recording
Q_DECLARE_METATYPE(recording::Error)
