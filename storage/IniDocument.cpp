// SPDX-License-Identifier: GPL-3.0-or-later
#include "storage/IniDocument.h"

#include <array>
#include <utility>

namespace {

/// Escape letters and what they stand for, in both directions.
constexpr std::array<std::pair<char, char>, 7> cEscapes{
    {{'a', '\a'}, {'b', '\b'}, {'f', '\f'}, {'n', '\n'}, {'r', '\r'}, {'t', '\t'}, {'v', '\v'}}};
constexpr int cHexadecimal = 16;
constexpr int cEndOfControls = 0x20;

const QByteArray& generalSection()
{
    static const QByteArray name("General");
    return name;
}

bool isHexDigit(char c)
{
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

bool isKeyCharacter(ushort c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' ||
           c == '-' || c == '.';
}

/// A section or key as it is written: letters outside ASCII as "%XX" or "%UXXXX", a slash as a backslash.
QByteArray escapedKey(const QString& key)
{
    QByteArray escaped;
    for (const QChar c : key) {
        const ushort code = c.unicode();
        if (isKeyCharacter(code))
            escaped += char(code);
        else if (code == '/')
            escaped += '\\';
        else if (code <= 0xFF)
            escaped += '%' + QByteArray::number(code, cHexadecimal).rightJustified(2, '0').toUpper();
        else
            escaped += "%U" + QByteArray::number(code, cHexadecimal).rightJustified(4, '0').toUpper();
    }
    return escaped;
}

QString unescapedKey(const QByteArray& text)
{
    QString key;
    for (int i = 0; i < text.size(); ++i) {
        if (text.at(i) == '%') {
            const bool wide = i + 1 < text.size() && text.at(i + 1) == 'U';
            const int digits = wide ? 4 : 2;
            bool ok = false;
            const ushort code = text.mid(i + (wide ? 2 : 1), digits).toUShort(&ok, cHexadecimal);
            if (ok) {
                key += QChar(code);
                i += digits + (wide ? 1 : 0);
                continue;
            }
        }
        key += text.at(i) == '\\' ? QLatin1Char('/') : QLatin1Char(text.at(i));
    }
    return key;
}

/// The character behind a backslash at \a at, or several; moves \a at to the last byte of it.
QString unescaped(const QByteArray& text, int& at)
{
    const char letter = text.at(at);
    for (const auto& [name, character] : cEscapes) {
        if (letter == name)
            return QString(QLatin1Char(character));
    }
    const int base = letter == 'x' ? cHexadecimal : 8;
    const int begin = letter == 'x' ? at + 1 : at;
    int end = begin;
    while (end < text.size() &&
           (base == 8 ? text.at(end) >= '0' && text.at(end) <= '7' : isHexDigit(text.at(end))))
        ++end;
    if (end == begin)
        return QString(QLatin1Char(letter));
    at = end - 1;
    return QString(QChar(ushort(text.mid(begin, end - begin).toUInt(nullptr, base))));
}

/// How many bytes at the front of \a text are the value: a comment and blanks may follow it.
int valueLength(const QByteArray& text)
{
    bool quoted = false;
    int end = 0;
    for (; end < text.size() && (quoted || text.at(end) != ';'); ++end) {
        if (text.at(end) == '\\')
            ++end;
        else if (text.at(end) == '"')
            quoted = !quoted;
    }
    return text.left(end).trimmed().size();
}

QVariant decoded(const QByteArray& text)
{
    QString value;
    QByteArray plain;
    const auto takePlain = [&value, &plain] { value += QString::fromUtf8(std::exchange(plain, {})); };
    for (int i = 0; i < text.size(); ++i) {
        if (text.at(i) == '\\' && i + 1 < text.size()) {
            takePlain();
            value += unescaped(text, ++i);
        } else if (text.at(i) != '"') {
            plain += text.at(i);
        }
    }
    takePlain();
    if (value == QLatin1String("@Invalid()"))
        return {};
    return value.startsWith(QLatin1String("@@")) ? value.mid(1) : value;
}

QByteArray encoded(const QVariant& variant)
{
    if (!variant.isValid())
        return QByteArrayLiteral("@Invalid()");
    QString value = variant.toString();
    if (value.startsWith(QLatin1Char('@')))
        value.prepend(QLatin1Char('@'));
    QByteArray text;
    bool afterNumber = false;
    const QByteArray bytes = value.toUtf8();
    for (const char c : bytes) {
        char escape = c == '"' || c == '\\' ? c : '\0';
        for (const auto& [name, character] : cEscapes)
            escape = c == character ? name : escape;
        // A digit behind a number would be read as a part of it.
        const bool asNumber =
            escape == '\0' && ((c >= 0 && c < cEndOfControls) || (afterNumber && isHexDigit(c)));
        if (asNumber)
            text += "\\x" + QByteArray::number(int(c), cHexadecimal);
        else if (escape != '\0')
            (text += '\\') += escape;
        else
            text += c;
        afterNumber = asNumber;
    }
    const bool needsQuotes = text.contains(';') || text.contains(',') || text.contains('=') ||
                             text.startsWith(' ') || text.endsWith(' ');
    return needsQuotes ? '"' + text + '"' : text;
}

/// The section and the key that \a path stands for, as they are written.
std::pair<QByteArray, QByteArray> placeOf(const QString& path)
{
    const int slash = path.indexOf(QLatin1Char('/'));
    if (slash < 0)
        return {generalSection(), escapedKey(path)};
    QByteArray section = escapedKey(path.left(slash));
    if (section.compare(generalSection(), Qt::CaseInsensitive) == 0)
        section.prepend('%');
    return {section, escapedKey(path.mid(slash + 1))};
}

QString pathOf(const QByteArray& section, const QByteArray& key)
{
    if (section.compare(generalSection(), Qt::CaseInsensitive) == 0)
        return unescapedKey(key);
    const bool namedGeneral = section.compare('%' + generalSection(), Qt::CaseInsensitive) == 0;
    return unescapedKey(namedGeneral ? section.mid(1) : section) + QLatin1Char('/') + unescapedKey(key);
}

} // namespace

IniDocument::IniDocument(const QByteArray& text) : m_text(text)
{
    read();
}

std::optional<QVariant> IniDocument::value(const QString& path) const
{
    const auto entry = m_entries.constFind(path);
    return entry == m_entries.cend() ? std::nullopt : std::make_optional(entry->value);
}

void IniDocument::setValue(const QString& path, const QVariant& value)
{
    const QByteArray text = encoded(value);
    const auto entry = m_entries.constFind(path);
    if (entry != m_entries.cend()) {
        m_text.replace(entry->begin, entry->length, text);
    } else {
        const auto [section, key] = placeOf(path);
        insertLine(section, key + '=' + text);
    }
    read();
}

void IniDocument::addMissing(const IniDocument& other)
{
    for (auto entry = other.m_entries.cbegin(); entry != other.m_entries.cend(); ++entry) {
        if (!m_entries.contains(entry.key()))
            setValue(entry.key(), entry->value);
    }
}

void IniDocument::insertLine(const QByteArray& section, const QByteArray& line)
{
    const QByteArray lineEnd = m_text.contains("\r\n") ? QByteArrayLiteral("\r\n") : QByteArrayLiteral("\n");
    if (!m_text.isEmpty() && !m_text.endsWith('\n')) {
        m_text += lineEnd;
        read();
    }
    const auto end = m_sectionEnds.constFind(section);
    if (end != m_sectionEnds.cend())
        m_text.insert(*end, line + lineEnd);
    else
        m_text +=
            (m_text.isEmpty() ? QByteArray() : lineEnd) + '[' + section + ']' + lineEnd + line + lineEnd;
}

void IniDocument::read()
{
    static const QByteArray byteOrderMark("\xEF\xBB\xBF");
    m_entries.clear();
    m_sectionEnds.clear();
    m_complete = isText() && (m_text.isEmpty() || m_text.endsWith('\n'));
    QByteArray section = generalSection();
    // Comments behind a blank line may belong to the next section.
    bool sectionGoesOn = false;
    int next = 0;
    for (int begin = m_text.startsWith(byteOrderMark) ? byteOrderMark.size() : 0; begin < m_text.size();
         begin = next) {
        const int newline = m_text.indexOf('\n', begin);
        next = newline < 0 ? m_text.size() : newline + 1;
        const QByteArray line = m_text.mid(begin, next - begin).trimmed();
        if (line.isEmpty()) {
            sectionGoesOn = false;
            continue;
        }
        if (line.startsWith(';') || line.startsWith('#')) {
            if (sectionGoesOn)
                m_sectionEnds.insert(section, next);
            continue;
        }
        sectionGoesOn = true;
        if (line.startsWith('[')) {
            const int bracket = line.indexOf(']');
            m_complete = m_complete && bracket >= 0;
            section = line.mid(1, bracket < 0 ? -1 : bracket - 1).trimmed();
        } else {
            readEntry(section, begin, next);
        }
        m_sectionEnds.insert(section, next);
    }
}

void IniDocument::readEntry(const QByteArray& section, int lineBegin, int lineEnd)
{
    const int equals = m_text.indexOf('=', lineBegin);
    const QByteArray key =
        equals < 0 || equals >= lineEnd ? QByteArray() : m_text.mid(lineBegin, equals - lineBegin).trimmed();
    if (key.isEmpty()) {
        m_complete = false;
        return;
    }
    Entry entry;
    entry.begin = equals + 1;
    while (entry.begin < lineEnd && (m_text.at(entry.begin) == ' ' || m_text.at(entry.begin) == '\t'))
        ++entry.begin;
    const QByteArray text = m_text.mid(entry.begin, lineEnd - entry.begin);
    entry.length = valueLength(text);
    entry.value = decoded(text.left(entry.length));
    m_entries.insert(pathOf(section, key), entry);
}
