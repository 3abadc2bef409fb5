// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <string>

/**
 * How the stand-in behaves in this run: read from variables of the environment and, over them, from the
 * lines "NAME=value" of the file that QUORVEL_FLASH_CONTROL names, which may change between two runs.
 *
 *     QUORVEL_FLASH_IMAGE     file that is the flash; "quorvel-flash.img" in the temporary folder by default
 *     QUORVEL_FLASH_SPEED     bytes per second / 1000, 256 by default; 0 writes without any pause
 *     QUORVEL_FLASH_FAULT     no-device, no-permission or unsupported-spi, for the whole run
 *     QUORVEL_FLASH_FAIL_AT   percentage of a write at which the transfer fails
 *     QUORVEL_FLASH_STALL_AT  percentage at which it hangs for ever
 *     QUORVEL_FLASH_VANISH_AT percentage at which the device is unplugged
 *     QUORVEL_FLASH_CRASH_AT  percentage at which the tool itself is killed
 *     QUORVEL_FLASH_ADDRESS   only writes to this address go wrong; all of them by default
 */
struct Behaviour
{
    enum class Fault { None, NoDevice, NoPermission, UnsupportedSpi };

    std::string imagePath;
    double kiloBytesPerSecond = 256.0;
    Fault fault = Fault::None;
    std::optional<double> failAtPercent;
    std::optional<double> stallAtPercent;
    std::optional<double> vanishAtPercent;
    std::optional<double> crashAtPercent;
    std::optional<std::uint64_t> onlyAddress;

    /// The present behaviour. A value that cannot be understood ends the process with exit code 64: a test
    /// that misspells its fault must not see a good run.
    static Behaviour read();
};
