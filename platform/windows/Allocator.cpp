// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Allocator.h"

namespace platform {

// The Windows heap returns large blocks by itself.
void returnLargeBlocksAtOnce() {}

} // namespace platform
