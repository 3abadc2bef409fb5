// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace platform {

/// Makes memory of large blocks (pictures, textures, glyph sheets) go back to the system as soon as it is
/// freed. Call it once, before anything large is allocated.
void returnLargeBlocksAtOnce();

} // namespace platform
