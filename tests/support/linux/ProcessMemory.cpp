// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/ProcessMemory.h"

#include "tests/support/TestCase.h"

#include <malloc.h>

std::optional<test::ProcessMemory> test::processMemory()
{
    malloc_trim(0);
    const QByteArray status = contentOf("/proc/self/status");
    return ProcessMemory{
        qint64(mallinfo2().uordblks / 1024),
        status.mid(status.indexOf("VmRSS:") + 6).simplified().split(' ').first().toLongLong()};
}
