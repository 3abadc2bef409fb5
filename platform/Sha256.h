// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>

#include <memory>

namespace platform {

/**
 * A SHA-256 over data that arrives in pieces, computed by the system's cryptography library. That library
 * uses the processor's SHA instructions. The hash of Qt does not, and the window would wait several times as
 * long for the check of an update.
 */
class Sha256
{
public:
    Sha256();
    ~Sha256();
    Q_DISABLE_COPY(Sha256)

    void addData(const char* data, int size);
    /// Returns the 32 bytes of the digest; empty when the library has failed. Call it once, at the end.
    QByteArray result();

private:
    struct State;
    std::unique_ptr<State> m_state;
};

} // namespace platform
