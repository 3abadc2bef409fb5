// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>

/**
 * The controller firmware that the server offers: generated, the same in every run, and large enough that
 * writing it can be watched. Does not change after its construction.
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
    /// The catalogue as JSON; \a baseUrl stands in front of the paths of its files.
    QByteArray catalogue(const QString& baseUrl) const;
    /// The image at \a path, for example "/firmware/F1C100s-V1/boot.bin"; null when there is none.
    QByteArray image(const QString& path) const;

private:
    QVector<Type> m_types;
};
