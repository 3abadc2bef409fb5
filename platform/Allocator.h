// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace platform {

/// Returns freed memory of large blocks (pictures, textures, glyph sheets) to the system at once. Call it
/// once, before anything large is allocated.
void returnLargeBlocksAtOnce();

} // namespace platform
