// SPDX-License-Identifier: GPL-3.0-or-later
#include "Behaviour.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <map>

namespace {

constexpr int cExitUsage = 64;
const std::string cPrefix = "QUORVEL_FLASH_";

using Values = std::map<std::string, std::string>;

[[noreturn]] void refuse(const std::string& name, const std::string& value)
{
    std::cerr << "flash stand-in: " << cPrefix << name << " cannot be \"" << value << "\"\n";
    std::exit(cExitUsage);
}

Values readValues()
{
    Values values;
    for (const char* name :
         {"IMAGE", "SPEED", "FAULT", "FAIL_AT", "STALL_AT", "VANISH_AT", "CRASH_AT", "ADDRESS"}) {
        const char* value = std::getenv((cPrefix + name).c_str());
        if (value != nullptr && *value != '\0')
            values[name] = value;
    }
    const char* controlPath = std::getenv((cPrefix + "CONTROL").c_str());
    if (controlPath == nullptr)
        return values;
    std::ifstream control(controlPath);
    for (std::string line; std::getline(control, line);) {
        const auto equals = line.find('=');
        if (equals == std::string::npos || line.compare(0, cPrefix.size(), cPrefix) != 0)
            continue;
        values[line.substr(cPrefix.size(), equals - cPrefix.size())] = line.substr(equals + 1);
    }
    return values;
}

std::optional<double> number(const Values& values, const std::string& name)
{
    const auto found = values.find(name);
    if (found == values.end() || found->second.empty())
        return {};
    char* end = nullptr;
    const double value = std::strtod(found->second.c_str(), &end);
    if (*end != '\0' || value < 0)
        refuse(name, found->second);
    return value;
}

Behaviour::Fault faultNamed(const std::string& name)
{
    static const std::map<std::string, Behaviour::Fault> faults{
        {"", Behaviour::Fault::None},
        {"none", Behaviour::Fault::None},
        {"no-device", Behaviour::Fault::NoDevice},
        {"no-permission", Behaviour::Fault::NoPermission},
        {"unsupported-spi", Behaviour::Fault::UnsupportedSpi}};
    const auto found = faults.find(name);
    if (found == faults.end())
        refuse("FAULT", name);
    return found->second;
}

} // namespace

Behaviour Behaviour::read()
{
    Values values = readValues();
    Behaviour behaviour;
    behaviour.imagePath = values["IMAGE"];
    if (behaviour.imagePath.empty())
        behaviour.imagePath = (std::filesystem::temp_directory_path() / "quorvel-flash.img").string();
    behaviour.kiloBytesPerSecond = number(values, "SPEED").value_or(behaviour.kiloBytesPerSecond);
    behaviour.fault = faultNamed(values["FAULT"]);
    behaviour.failAtPercent = number(values, "FAIL_AT");
    behaviour.stallAtPercent = number(values, "STALL_AT");
    behaviour.vanishAtPercent = number(values, "VANISH_AT");
    behaviour.crashAtPercent = number(values, "CRASH_AT");
    const std::string address = values["ADDRESS"];
    if (!address.empty()) {
        char* end = nullptr;
        behaviour.onlyAddress = std::strtoull(address.c_str(), &end, 0);
        if (*end != '\0')
            refuse("ADDRESS", address);
    }
    return behaviour;
}
