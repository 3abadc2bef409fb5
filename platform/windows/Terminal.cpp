// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Terminal.h"

#include <fcntl.h>
#include <io.h>

namespace platform {

bool isTerminal(std::FILE* stream)
{
    return ::_isatty(::_fileno(stream)) != 0;
}

void makeBinary(std::FILE* stream)
{
    ::_setmode(::_fileno(stream), _O_BINARY);
}

} // namespace platform
