// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/FileSizeLimit.h"

namespace test {

bool FileSizeLimit::isSupported()
{
    return false;
}

FileSizeLimit::FileSizeLimit(qint64 bytes)
{
    Q_UNUSED(bytes)
}

FileSizeLimit::~FileSizeLimit() = default;

} // namespace test
