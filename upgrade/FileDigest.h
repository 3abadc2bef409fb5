// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/**
 * SHA-256 of the file at \a path as lower-case hexadecimal text.
 *
 * The file is read in blocks of 8192 bytes, so its size does not matter to memory. The text is empty when
 * the file cannot be opened or not be read to its end.
 */
QString sha256OfFile(const QString& path);
