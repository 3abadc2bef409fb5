// SPDX-License-Identifier: GPL-3.0-or-later
#include "qmlsupport/TintedImageProvider.h"

#include <QColor>
#include <QImageReader>
#include <QPainter>
#include <QUrl>

namespace {

QString decoded(const QString& text)
{
    return QUrl::fromPercentEncoding(text.toUtf8());
}

QString filePath(const QUrl& url)
{
    return url.scheme() == QLatin1String("qrc") ? QLatin1Char(':') + url.path() : url.toLocalFile();
}

} // namespace

TintedImageProvider::TintedImageProvider() : QQuickImageProvider(QQuickImageProvider::Image) {}

QImage TintedImageProvider::requestImage(const QString& id, QSize* size, const QSize& requestedSize)
{
    const int separator = id.indexOf(QLatin1Char('/'));
    const QString colorName = decoded(id.left(separator));
    const QString path = filePath(QUrl(decoded(id.mid(separator + 1))));
    if (separator < 0 || path.isEmpty() || !QColor::isValidColor(colorName))
        return {};
    QImageReader reader(path);
    const QSize natural = reader.size();
    if (natural.isEmpty())
        return {};
    if (!requestedSize.isEmpty())
        reader.setScaledSize(natural.scaled(requestedSize, Qt::KeepAspectRatio));
    QImage image = reader.read().convertToFormat(QImage::Format_ARGB32_Premultiplied);
    if (image.isNull())
        return {};
    QPainter painter(&image);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(image.rect(), QColor(colorName));
    painter.end();
    if (size != nullptr)
        *size = natural;
    return image;
}
