// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>

/**
 * The controller firmware that the server offers. The images are generated, equal in every run, and large
 * enough for visible progress. Immutable after construction.
 */
class FirmwareLibrary
{
public:
    struct Image
    {
        QString name;
        QByteArray bytes;
    };

    struct Type
    {
        QString name;
        /// In download order: the boot image, "logo.bin", "f1c100s.bin".
        QVector<Image> images;
    };

    FirmwareLibrary();

    const QVector<Type>& types() const { return m_types; }
    /// Returns the catalogue as JSON; file addresses begin with \a baseUrl.
    QByteArray catalogue(const QString& baseUrl) const;
    /// Returns the image at \a path, for example "/firmware/F1C100s-V1/boot.bin", or null.
    QByteArray image(const QString& path) const;

private:
    QVector<Type> m_types;
};
