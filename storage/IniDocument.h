// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QVariant>

#include <optional>

/**
 * The text of an INI file in the format of QSettings, UTF-8. A change replaces the text of one value or adds
 * one line; comments, order and lines without meaning stay as they are.
 *
 * QSettings itself would drop comments and damaged lines with the first write, and take everything behind an
 * unclosed quotation mark for a part of the value. Values are text, numbers and switches; other types of
 * QSettings ("@Variant(...)", lists) are read as the text that is in the file.
 *
 * Paths are "group/key"; a key of the section [General] has no group.
 */
class IniDocument
{
public:
    IniDocument() = default;
    /// Reads any text. Lines that are no section, entry, comment or blank one have no meaning.
    explicit IniDocument(const QByteArray& text);

    const QByteArray& text() const { return m_text; }
    /// False when the text ends within a line, has a line without meaning or holds binary data: it may be
    /// half written or damaged.
    bool isComplete() const { return m_complete; }
    /// False when the text holds binary data, so that nothing can be added to it.
    bool isText() const { return m_text.indexOf('\0') < 0; }
    /// The value at \a path: a string, or an invalid one where "@Invalid()" is stored; nothing when the
    /// document has no such entry. Of several entries the last one counts.
    std::optional<QVariant> value(const QString& path) const;
    /// Stores what QVariant::toString() makes of \a value, and an invalid one as "@Invalid()".
    void setValue(const QString& path, const QVariant& value);
    /// Adds the entries of \a other that this document lacks.
    void addMissing(const IniDocument& other);

private:
    struct Entry
    {
        QVariant value;
        /// Where the value's text is, in bytes from the start.
        int begin = 0;
        int length = 0;
    };

    void read();
    void readEntry(const QByteArray& section, int lineBegin, int lineEnd);
    void insertLine(const QByteArray& section, const QByteArray& line);

    QByteArray m_text;
    bool m_complete = true;
    QHash<QString, Entry> m_entries;
    /// Section name, as written, to the place where another entry goes: behind its last entry and the comments
    /// that follow without a blank line.
    QHash<QByteArray, int> m_sectionEnds;
};
