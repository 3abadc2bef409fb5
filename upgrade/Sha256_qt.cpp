// SPDX-License-Identifier: GPL-3.0-or-later
#include "upgrade/Sha256.h"

#include <QCryptographicHash>

struct Sha256::State
{
    QCryptographicHash hash{QCryptographicHash::Sha256};
};

Sha256::Sha256() : m_state(std::make_unique<State>()) {}

Sha256::~Sha256() = default;

void Sha256::addData(const char* data, int size)
{
    m_state->hash.addData(data, size);
}

QByteArray Sha256::result()
{
    return m_state->hash.result();
}
