// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>

#include <cstdint>

/// Returns \a size pseudo-random bytes; equal seeds give equal bytes on every machine.
QByteArray deterministicBytes(std::uint64_t seed, int size);
