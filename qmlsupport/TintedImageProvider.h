// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QQuickImageProvider>

/**
 * Paints single-colour pictures in any colour, at the size at which they are shown: the image provider
 * "tint". Works without OpenGL. Called on the GUI thread or on the engine's image loader thread. Has no
 * state.
 *
 * The address is "image://tint/" + colour + "/" + picture, both percent-encoded; the colour is any text
 * that QColor understands, the picture a qrc or file URL.
 */
class TintedImageProvider : public QQuickImageProvider
{
public:
    TintedImageProvider();

    /// Returns the picture with every pixel's colour replaced and its alpha unchanged. The picture is as
    /// large as possible within \a requestedSize, in pixels; an empty size means its natural size. Returns a
    /// null image when the colour is invalid or the picture cannot be read.
    QImage requestImage(const QString& id, QSize* size, const QSize& requestedSize) override;
};
