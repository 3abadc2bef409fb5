// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/integration/InstrumentControl.h"

#include <QStringList>
#include <QtTest>

namespace {

constexpr char cControlVariable[] = "VIRTUAL_INSTRUMENT_CONTROL";
constexpr int cTimeoutMs = 60'000;

} // namespace

bool InstrumentControl::connectToInstrument()
{
    m_socket.connectToServer(QString::fromLocal8Bit(qgetenv(cControlVariable)));
    return m_socket.waitForConnected(cTimeoutMs);
}

QString InstrumentControl::ask(const QString& command)
{
    m_socket.write(command.toUtf8() + '\n');
    if (!QTest::qWaitFor([this] { return m_socket.canReadLine(); }, cTimeoutMs))
        return {};
    return QString::fromUtf8(m_socket.readLine()).trimmed();
}

QString InstrumentControl::status(const QString& key)
{
    const QStringList pairs = ask("status").split(QLatin1Char(' '));
    for (const QString& pair : pairs) {
        if (pair.section(QLatin1Char('='), 0, 0) == key)
            return pair.section(QLatin1Char('='), 1);
    }
    return {};
}
