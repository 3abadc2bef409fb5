// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>

#include <cstdint>

/// \a size bytes that look random and are the same for the same \a seed, on every machine.
QByteArray deterministicBytes(std::uint64_t seed, int size);
