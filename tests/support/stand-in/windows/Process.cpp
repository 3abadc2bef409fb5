// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/stand-in/Process.h"

#include <cstdio>
#include <fcntl.h>
#include <io.h>
#include <windows.h>
// The shell's header needs the one before it.
#include <shellapi.h>

namespace {

/// Longer than any path in a test.
constexpr DWORD cMaximumLength = 32767;

} // namespace

std::filesystem::path standin::program()
{
    std::wstring path(cMaximumLength, L'\0');
    path.resize(::GetModuleFileNameW(nullptr, path.data(), cMaximumLength));
    return path;
}

std::vector<std::string> standin::arguments(int, char**)
{
    int count = 0;
    wchar_t** list = ::CommandLineToArgvW(::GetCommandLineW(), &count);
    std::vector<std::string> arguments;
    for (int i = 0; i < count; ++i)
        arguments.push_back(std::filesystem::path(list[i]).u8string());
    ::LocalFree(list);
    return arguments;
}

std::string standin::variable(const char* name)
{
    const std::wstring wideName = std::filesystem::u8path(name).wstring();
    std::wstring value(cMaximumLength, L'\0');
    value.resize(::GetEnvironmentVariableW(wideName.c_str(), value.data(), cMaximumLength));
    return std::filesystem::path(value).u8string();
}

long standin::processId()
{
    return long(::GetCurrentProcessId());
}

void standin::useBinaryStreams()
{
    for (std::FILE* stream : {stdin, stdout, stderr})
        ::_setmode(::_fileno(stream), _O_BINARY);
}
