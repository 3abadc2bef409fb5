// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>

#include <memory>

/**
 * A SHA-256 over data that comes piece by piece. With OpenSSL, which uses the processor's own instructions
 * for it and is several times faster, where the build has it; else with Qt's.
 */
class Sha256
{
public:
    Sha256();
    ~Sha256();
    Q_DISABLE_COPY(Sha256)

    void addData(const char* data, int size);
    /// The 32 bytes of the digest, and the end of this object's use; empty when the library has failed.
    QByteArray result();

private:
    struct State;
    std::unique_ptr<State> m_state;
};
