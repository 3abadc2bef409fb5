// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Sha256.h"

#include <openssl/evp.h>

namespace platform {

struct Sha256::State
{
    std::unique_ptr<EVP_MD_CTX, decltype(&EVP_MD_CTX_free)> context{EVP_MD_CTX_new(), EVP_MD_CTX_free};
    bool ok = context != nullptr && EVP_DigestInit_ex(context.get(), EVP_sha256(), nullptr) == 1;
};

Sha256::Sha256() : m_state(std::make_unique<State>()) {}

Sha256::~Sha256() = default;

void Sha256::addData(const char* data, int size)
{
    m_state->ok = m_state->ok && EVP_DigestUpdate(m_state->context.get(), data, std::size_t(size)) == 1;
}

QByteArray Sha256::result()
{
    QByteArray digest(EVP_MD_size(EVP_sha256()), '\0');
    if (!m_state->ok || EVP_DigestFinal_ex(m_state->context.get(),
                                           reinterpret_cast<unsigned char*>(digest.data()), nullptr) != 1)
        return {};
    return digest;
}

} // namespace platform
