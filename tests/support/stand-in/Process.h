// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <string>
#include <vector>

/// What a process knows of itself; the texts are UTF-8 on every system.
namespace standin {

/// Path of the program's file.
std::filesystem::path program();
/// All arguments; the first one names the program.
std::vector<std::string> arguments(int argc, char** argv);
/// An environment variable; empty when it is not set.
std::string variable(const char* name);
long processId();
/// Standard output and error then carry every byte as it is.
void useBinaryStreams();

} // namespace standin
