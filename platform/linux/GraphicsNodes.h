// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/GraphicsEvidence.h"

#include <QProcessEnvironment>

namespace platform {

/// The evidence of a system with this environment, whose device nodes are below \a devices ("/dev") and whose
/// device tree is below \a tree ("/sys").
GraphicsEvidence graphicsEvidence(const QProcessEnvironment& environment, const QString& devices,
                                  const QString& tree);

} // namespace platform
