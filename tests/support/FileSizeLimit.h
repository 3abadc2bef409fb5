// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGlobal>

namespace test {

/// Makes writes of this process beyond \a bytes of a file fail like on a full disk, during its lifetime.
/// Works for every user, root included.
class FileSizeLimit
{
public:
    /// Returns true when this system can limit a process. Otherwise an object of this class does nothing.
    static bool isSupported();

    explicit FileSizeLimit(qint64 bytes);
    ~FileSizeLimit();
    Q_DISABLE_COPY(FileSizeLimit)

private:
    qint64 m_limitBefore = 0;
    void (*m_signalBefore)(int) = nullptr;
};

} // namespace test
