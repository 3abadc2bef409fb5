// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <fstream>
#include <string>

/**
 * A NOR flash of 16 MiB kept in a file. Fresh flash holds 0xFF, and what is written first erases the 4 KiB
 * sectors that it touches, as the chip's own commands do.
 */
class FlashImage
{
public:
    static constexpr std::uint64_t cSizeBytes = 16u << 20;
    static constexpr std::uint64_t cSectorBytes = 4096;

    /// Opens the image at \a path, making a fresh one when there is none. isOpen() tells the result.
    explicit FlashImage(const std::string& path);

    bool isOpen() const { return m_file.is_open(); }
    /// Erases the sectors of \a size bytes from \a address. False beyond the end or when the file fails.
    bool erase(std::uint64_t address, std::uint64_t size);
    /// Puts \a size bytes at \a address. False beyond the end or when the file fails.
    bool write(std::uint64_t address, const char* data, std::size_t size);
    /// Takes \a size bytes from \a address. False beyond the end or when the file fails.
    bool read(std::uint64_t address, char* data, std::size_t size);

private:
    std::fstream m_file;
};
