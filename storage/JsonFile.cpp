// SPDX-License-Identifier: GPL-3.0-or-later
#include "storage/JsonFile.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace jsonfile {

QJsonDocument parse(const QByteArray& text, const Limits& limits)
{
    if (text.size() > limits.bytes)
        return {};
    // In one pass: a large text comes from memory each time.
    int commas = 0;
    int colons = 0;
    for (const char character : text) {
        commas += character == ',' ? 1 : 0;
        colons += character == ':' ? 1 : 0;
    }
    if (commas > limits.elements || colons > limits.members)
        return {};
    return QJsonDocument::fromJson(text);
}

Result read(const QString& path, const Limits& limits)
{
    const QFileInfo info(path);
    if (!info.exists())
        return {Status::Missing, {}};
    QFile file(path);
    if (!info.isFile() || !file.open(QIODevice::ReadOnly))
        return {Status::Unreadable, {}};
    if (file.size() > limits.bytes)
        return {Status::Invalid, {}};
    // No more than this: the file may be growing. It then ends in the middle, which is no JSON.
    const QByteArray text = file.read(file.size());
    if (file.error() != QFileDevice::NoError)
        return {Status::Unreadable, {}};
    const QJsonDocument document = parse(text, limits);
    return {document.isNull() ? Status::Invalid : Status::Read, document};
}

bool stage(QSaveFile& file, const QByteArray& text, QIODevice::OpenMode mode)
{
    return file.open(mode) && file.write(text) == text.size() && file.flush();
}

} // namespace jsonfile
