// SPDX-License-Identifier: GPL-3.0-or-later
#include "instrument/MultimeterHistory.h"

#include "instrument/MultimeterReading.h"
#include "storage/JsonFile.h"
#include "storage/TimeText.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>
#include <QUuid>

namespace {

constexpr jsonfile::Limits cFileLimits{MultimeterHistory::cMaxFileBytes, 1000000, 1000000};

void prependCapped(QVariantList& rows, const QVariantMap& row)
{
    rows.prepend(row);
    while (rows.size() > MultimeterHistory::cMaxRows)
        rows.removeLast();
}

/// A name beside \a path under which nothing exists yet.
QString nameForUnread(const QString& path)
{
    const QFileInfo file(path);
    const QString stem = file.path() + QLatin1Char('/') + file.completeBaseName() +
                         QStringLiteral(".unread-") +
                         timeText(QDateTime::currentDateTime(), QStringLiteral("yyyyMMdd_HHmmsszzz"));
    QString name = stem + QStringLiteral(".json");
    for (int attempt = 1; QFile::exists(name); ++attempt)
        name = QStringLiteral("%1-%2.json").arg(stem).arg(attempt);
    return name;
}

} // namespace

bool MultimeterHistory::record(int mode, const QString& text, const QDateTime& now, bool persistent)
{
    const QString column = MultimeterReading::columnOfMode(mode);
    if (column.isEmpty())
        return false;
    QVariantMap row{{QStringLiteral("id"), QUuid::createUuid().toString(QUuid::WithoutBraces)},
                    {QStringLiteral("dateTime"), timeText(now)},
                    {QStringLiteral("VoltageValue"), QString()},
                    {QStringLiteral("ResistanceValue"), QString()},
                    {QStringLiteral("CapacitanceValue"), QString()},
                    {QStringLiteral("DiodeValue"), QString()}};
    row[column] = text;

    prependCapped(m_currentTable, row);
    prependCapped(m_sessionHistory, row);
    if (persistent) {
        prependCapped(m_persistentHistory, row);
        m_persistentRows.prepend(QJsonObject::fromVariantMap(row));
        while (m_persistentRows.size() > cMaxRows)
            m_persistentRows.removeLast();
    }
    return true;
}

bool MultimeterHistory::removeCurrentRow(int row)
{
    if (row < 0 || row >= m_currentTable.size())
        return false;
    m_currentTable.removeAt(row);
    return true;
}

void MultimeterHistory::clearCurrentTable()
{
    m_currentTable.clear();
}

void MultimeterHistory::clearHistories()
{
    m_sessionHistory.clear();
    m_persistentHistory.clear();
    m_persistentRows = {};
}

void MultimeterHistory::load(const QString& path)
{
    m_persistentHistory.clear();
    m_persistentRows = {};
    const jsonfile::Result result = jsonfile::read(path, cFileLimits);
    m_fileKnown = result.status == jsonfile::Status::Missing || result.document.isArray();
    const QJsonArray elements = result.document.array();
    for (const QJsonValue& element : elements) {
        if (!element.isObject())
            continue;
        m_persistentHistory.append(element.toObject().toVariantMap());
        m_persistentRows.append(element);
    }
}

bool MultimeterHistory::save(const QString& path)
{
    m_saveFailed = !trySave(path);
    return !m_saveFailed;
}

bool MultimeterHistory::trySave(const QString& path)
{
    QSaveFile file(path);
    if (!jsonfile::stage(file, QJsonDocument(m_persistentRows).toJson(QJsonDocument::Indented)))
        return false;
    // Only now that the new text is on the disk may the old file step aside.
    const bool keepUnread = !m_fileKnown && QFile::exists(path);
    const QString unread = keepUnread ? nameForUnread(path) : QString();
    if (keepUnread && !QFile::rename(path, unread))
        return false;
    if (!file.commit()) {
        if (keepUnread)
            QFile::rename(unread, path);
        return false;
    }
    m_fileKnown = true;
    return true;
}
