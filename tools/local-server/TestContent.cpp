// SPDX-License-Identifier: GPL-3.0-or-later
#include "TestContent.h"

QByteArray deterministicBytes(std::uint64_t seed, int size)
{
    QByteArray bytes(size, Qt::Uninitialized);
    char* const out = bytes.data();
    // splitmix64: the number of a block of eight bytes determines its content.
    std::uint64_t state = seed * 0x9E3779B97F4A7C15u;
    for (int at = 0; at < size; at += 8) {
        state += 0x9E3779B97F4A7C15u;
        std::uint64_t block = state;
        block = (block ^ (block >> 30)) * 0xBF58476D1CE4E5B9u;
        block = (block ^ (block >> 27)) * 0x94D049BB133111EBu;
        block ^= block >> 31;
        for (int i = 0; i < 8 && at + i < size; ++i)
            out[at + i] = char(block >> (8 * i));
    }
    return bytes;
}
