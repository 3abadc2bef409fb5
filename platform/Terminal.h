// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdio>

namespace platform {

/// Returns true when \a stream is shown on a terminal.
bool isTerminal(std::FILE* stream);
/// Makes \a stream carry bytes as they are, without a translation of line ends.
void makeBinary(std::FILE* stream);

} // namespace platform
