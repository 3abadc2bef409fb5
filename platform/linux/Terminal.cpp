// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Terminal.h"

#include <unistd.h>

namespace platform {

bool isTerminal(std::FILE* stream)
{
    return ::isatty(::fileno(stream)) != 0;
}

void makeBinary(std::FILE* /*stream*/) {}

} // namespace platform
