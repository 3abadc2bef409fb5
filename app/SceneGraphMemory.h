// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDateTime>
#include <QString>

#include <optional>

/**
 * What earlier starts learnt about OpenGL on this computer. It belongs to the computer, not to the user's
 * documents, which may be shared between computers: it is kept in a file in the cache folder.
 */
struct SceneGraphMemory
{
    enum class State {
        /// A graphics processor renders OpenGL, and a window has shown a frame with it.
        Works,
        /// OpenGL was about to show its first frame. Read at a start, it means that the frame never came.
        Trying,
        /// OpenGL failed, or the main processor renders it.
        Unusable,
    };

    /// How long Unusable holds for the same graphics: a driver may have been repaired without a trace.
    static constexpr int cUnusableDays = 7;

    State state = State::Trying;
    /// Display, adapters, drivers and Qt version for which the state holds.
    QString fingerprint;
    /// OpenGL's name for what renders, and the version of its driver; empty when they are not known.
    QString renderer;
    QString driver;
    /// When the state was written, UTC.
    QDateTime written;

    /// What is remembered for \a fingerprint at the time \a now. Empty when nothing is, when it is about
    /// other graphics, or too old.
    static std::optional<SceneGraphMemory> read(const QString& fingerprint, const QDateTime& now);
    /// Replaces what is remembered. Returns false when the file cannot be written; the next start then probes
    /// again.
    bool write() const;
    /// Path of the file.
    static QString path();
};
