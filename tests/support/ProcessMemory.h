// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGlobal>

#include <optional>

namespace test {

/// Memory of this process, in KiB.
struct ProcessMemory
{
    /// In small blocks of the heap; the large ones are pictures and textures.
    qint64 allocatedKb = 0;
    qint64 residentKb = 0;
};

/// Returns free memory to the system, then measures the rest. Empty when the system does not provide both
/// numbers.
std::optional<ProcessMemory> processMemory();

} // namespace test
