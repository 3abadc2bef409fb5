// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDateTime>
#include <QJsonArray>
#include <QString>
#include <QVariantList>

/**
 * The recorded multimeter readings: the table of the current connection, the history of this session and
 * the persistent history, which a JSON file mirrors. Every list holds rows (QVariantMap of six strings),
 * newest first.
 */
class MultimeterHistory
{
public:
    /// Rows that recording leaves in a list at most.
    static constexpr int cMaxRows = 1000;
    /// Size of the largest history file that is read, in bytes: some 35,000 rows.
    static constexpr qint64 cMaxFileBytes = 8 * 1024 * 1024;

    const QVariantList& currentTable() const { return m_currentTable; }
    const QVariantList& sessionHistory() const { return m_sessionHistory; }
    const QVariantList& persistentHistory() const { return m_persistentHistory; }

    /**
     * Adds a row with a new id to the current table and the session history, and with \a persistent to the
     * persistent history too; each list then drops its oldest rows beyond cMaxRows.
     *
     * \a mode is the instrument's function, \a text the reading, \a now the local time of recording.
     * False, with nothing recorded, for a function without a column.
     */
    bool record(int mode, const QString& text, const QDateTime& now, bool persistent);

    /// Removes a row of the current table, 0 being the newest. False when there is no such row.
    bool removeCurrentRow(int row);
    void clearCurrentTable();
    /// Empties the session history and the persistent history; the file stays until save().
    void clearHistories();

    /**
     * Replaces the persistent history by the objects of the JSON array in the file at \a path.
     *
     * A file that is missing, unreadable, malformed or larger than cMaxFileBytes gives an empty history.
     */
    void load(const QString& path);

    /**
     * Writes the persistent history to \a path, atomically: a crash or a full disk leaves the old file or
     * the new one. False when it could not be written.
     *
     * A file that was never read into this history (written before the history was kept in this session,
     * malformed, too large) is not lost: the first save renames it to
     * "<name>.unread-<date and time>.json" beside the new one.
     */
    bool save(const QString& path);
    /// Returns true when the last save() failed: the file lacks changes, so save() should be called again.
    bool saveFailed() const { return m_saveFailed; }

private:
    bool trySave(const QString& path);

    QVariantList m_currentTable;
    QVariantList m_sessionHistory;
    QVariantList m_persistentHistory;
    /// The persistent history as JSON: recording a row then costs no conversion of the other rows.
    QJsonArray m_persistentRows;
    /// Whether the rows of the file, if there is one, are in the persistent history.
    bool m_fileKnown = false;
    bool m_saveFailed = false;
};
