// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Allocator.h"

#include <cstdlib>

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace platform {

void returnLargeBlocksAtOnce()
{
#ifdef __GLIBC__
    // By default the limit grows with every large block that is freed, up to 32 MiB. Blocks below the limit
    // stay in the heap. A fixed limit saves about 60 MiB once every page has been shown.
    constexpr int cLargeBlockBytes = 128 * 1024;
    mallopt(M_MMAP_THRESHOLD, cLargeBlockBytes);
#endif
}

} // namespace platform
