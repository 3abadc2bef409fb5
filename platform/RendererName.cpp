// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/GraphicsEvidence.h"

#include <QRegularExpression>

namespace platform {

bool isProcessorRenderer(const QString& renderer)
{
    // Mesa; Google's; Windows without a driver, by OpenGL and by Direct3D; its adapters without a driver or
    // far away.
    static const QRegularExpression names(
        QStringLiteral("llvmpipe|lavapipe|softpipe|swrast|Software Rasterizer|SwiftShader|GDI Generic"
                       "|Microsoft Basic (Render|Display)|\\bWARP\\b|Microsoft Remote Display|Hyper-V Video"),
        QRegularExpression::CaseInsensitiveOption);
    return names.match(renderer).hasMatch();
}

} // namespace platform
