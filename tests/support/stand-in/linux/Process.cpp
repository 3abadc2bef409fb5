// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/stand-in/Process.h"

#include <cstdlib>
#include <unistd.h>

std::filesystem::path standin::program()
{
    return std::filesystem::read_symlink("/proc/self/exe");
}

std::vector<std::string> standin::arguments(int argc, char** argv)
{
    return {argv, argv + argc};
}

std::string standin::variable(const char* name)
{
    const char* value = std::getenv(name);
    return value == nullptr ? std::string() : std::string(value);
}

long standin::processId()
{
    return ::getpid();
}

void standin::useBinaryStreams() {}
