// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <csignal>
#include <sys/resource.h>

namespace test {

/// While it lives, writes of this process beyond \a bytes of a file fail as they do on a full disk. Works for
/// every user, root included.
class FileSizeLimit
{
public:
    explicit FileSizeLimit(rlim_t bytes) : m_signalBefore(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit{bytes, m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }

    ~FileSizeLimit()
    {
        setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_signalBefore);
    }

    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

private:
    rlimit m_before{};
    void (*m_signalBefore)(int);
};

} // namespace test
