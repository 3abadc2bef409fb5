// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace platform {

/// What the system says about its graphics before OpenGL is loaded.
struct GraphicsEvidence
{
    /// Why no graphics processor can render OpenGL, untranslated; empty when one may.
    QString noProcessor;
    /// Names the display, its adapters and their drivers. It changes when one of them does.
    QString fingerprint;
};

/// Reads the environment and the lists of devices, which takes less than a millisecond. Needs no application
/// object.
GraphicsEvidence graphicsEvidence();

/// Whether \a renderer, an adapter's name or OpenGL's GL_RENDERER, paints with the main processor.
bool isProcessorRenderer(const QString& renderer);

} // namespace platform
