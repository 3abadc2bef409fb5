// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Sha256.h"

#include <windows.h>

#include <bcrypt.h>

namespace platform {

namespace {

constexpr int cDigestBytes = 32;

/// bcrypt.h has BCRYPT_SUCCESS only in some versions.
bool succeeded(NTSTATUS status)
{
    return status >= 0;
}

} // namespace

struct Sha256::State
{
    State()
    {
        ok = succeeded(::BCryptOpenAlgorithmProvider(&algorithm, BCRYPT_SHA256_ALGORITHM, nullptr, 0)) &&
             succeeded(::BCryptCreateHash(algorithm, &hash, nullptr, 0, nullptr, 0, 0));
    }
    ~State()
    {
        if (hash != nullptr)
            ::BCryptDestroyHash(hash);
        if (algorithm != nullptr)
            ::BCryptCloseAlgorithmProvider(algorithm, 0);
    }
    Q_DISABLE_COPY(State)

    BCRYPT_ALG_HANDLE algorithm = nullptr;
    BCRYPT_HASH_HANDLE hash = nullptr;
    bool ok = false;
};

Sha256::Sha256() : m_state(std::make_unique<State>()) {}

Sha256::~Sha256() = default;

void Sha256::addData(const char* data, int size)
{
    // The function takes a pointer to mutable bytes, but only reads them.
    auto* bytes = reinterpret_cast<PUCHAR>(const_cast<char*>(data));
    m_state->ok = m_state->ok && succeeded(::BCryptHashData(m_state->hash, bytes, ULONG(size), 0));
}

QByteArray Sha256::result()
{
    QByteArray digest(cDigestBytes, '\0');
    if (!m_state->ok || !succeeded(::BCryptFinishHash(m_state->hash, reinterpret_cast<PUCHAR>(digest.data()),
                                                      cDigestBytes, 0)))
        return {};
    return digest;
}

} // namespace platform
