// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/FileSizeLimit.h"

#include <csignal>
#include <sys/resource.h>

namespace {

/// Changes the limit that the process may raise again; returns the one before.
qint64 setLimit(qint64 bytes)
{
    rlimit limit{};
    getrlimit(RLIMIT_FSIZE, &limit);
    const auto before = qint64(limit.rlim_cur);
    limit.rlim_cur = rlim_t(bytes);
    setrlimit(RLIMIT_FSIZE, &limit);
    return before;
}

} // namespace

namespace test {

bool FileSizeLimit::isSupported()
{
    return true;
}

FileSizeLimit::FileSizeLimit(qint64 bytes)
    : m_limitBefore(setLimit(bytes)), m_signalBefore(std::signal(SIGXFSZ, SIG_IGN))
{}

FileSizeLimit::~FileSizeLimit()
{
    setLimit(m_limitBefore);
    std::signal(SIGXFSZ, m_signalBefore);
}

} // namespace test
