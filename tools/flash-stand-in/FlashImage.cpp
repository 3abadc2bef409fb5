// SPDX-License-Identifier: GPL-3.0-or-later
#include "FlashImage.h"

#include <algorithm>
#include <vector>

namespace {

constexpr char cErased = '\xFF';

bool fits(std::uint64_t address, std::uint64_t size)
{
    return address <= FlashImage::cSizeBytes && size <= FlashImage::cSizeBytes - address;
}

/// A file of erased flash at \a path, whatever was there.
void makeFresh(const std::string& path)
{
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    const std::vector<char> sector(FlashImage::cSectorBytes, cErased);
    for (std::uint64_t at = 0; at < FlashImage::cSizeBytes && file; at += FlashImage::cSectorBytes)
        file.write(sector.data(), std::streamsize(sector.size()));
}

} // namespace

FlashImage::FlashImage(const std::string& path)
{
    constexpr auto cMode = std::ios::binary | std::ios::in | std::ios::out;
    m_file.open(path, cMode | std::ios::ate);
    if (!m_file.is_open() || std::uint64_t(m_file.tellp()) != cSizeBytes) {
        m_file.close();
        makeFresh(path);
        m_file.open(path, cMode);
    }
}

bool FlashImage::erase(std::uint64_t address, std::uint64_t size)
{
    if (!fits(address, size))
        return false;
    const std::uint64_t first = address / cSectorBytes * cSectorBytes;
    const std::uint64_t end = (address + size + cSectorBytes - 1) / cSectorBytes * cSectorBytes;
    const std::vector<char> erased(std::size_t(end - first), cErased);
    m_file.seekp(std::streamoff(first));
    m_file.write(erased.data(), std::streamsize(erased.size()));
    return bool(m_file.flush());
}

bool FlashImage::write(std::uint64_t address, const char* data, std::size_t size)
{
    if (!fits(address, size))
        return false;
    m_file.seekp(std::streamoff(address));
    m_file.write(data, std::streamsize(size));
    return bool(m_file.flush());
}

bool FlashImage::read(std::uint64_t address, char* data, std::size_t size)
{
    if (!fits(address, size))
        return false;
    m_file.seekg(std::streamoff(address));
    return bool(m_file.read(data, std::streamsize(size)));
}
