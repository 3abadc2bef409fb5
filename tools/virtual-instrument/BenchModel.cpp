// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/virtual-instrument/BenchModel.h"

#include <algorithm>
#include <utility>

namespace {

QString phaseText(ChargerModel::Phase phase)
{
    switch (phase) {
    case ChargerModel::Phase::Attached:
        return QStringLiteral("Type-C: charger attached, 5 V");
    case ChargerModel::Phase::Handshake:
        return QStringLiteral("Type-C: asking for 9 V");
    case ChargerModel::Phase::FastCharge:
        return QStringLiteral("Type-C: 9 V granted");
    case ChargerModel::Phase::Trickle:
        return QStringLiteral("Type-C: back to 5 V");
    case ChargerModel::Phase::Detached:
        return QStringLiteral("Type-C: charger removed");
    }
    return {};
}

} // namespace

void BenchModel::advance(double seconds)
{
    m_supply.advance(seconds);
    const ChargerModel::Phase before = m_charger.phase();
    m_charger.advance(seconds);
    if (m_charger.phase() != before)
        m_logLines.append(phaseText(m_charger.phase()));
    m_multimeter.advance(seconds);
}

protocol::Measurement BenchModel::measurement() const
{
    protocol::Measurement values;
    values.mainInputVoltage = static_cast<float>(m_supply.voltage());
    values.mainOutputCurrent = static_cast<float>(m_supply.current());
    values.mainPower = static_cast<float>(m_supply.voltage() * m_supply.current());
    values.mainMah = static_cast<float>(m_supply.chargeMah());
    values.mainTimeSec = static_cast<float>(m_supply.timeSec());
    values.typeCInputVoltage = static_cast<float>(m_charger.voltage());
    values.typeCInputCurrent = static_cast<float>(m_charger.current());
    values.typeCInputPower = static_cast<float>(m_charger.voltage() * m_charger.current());
    values.typeCDPlusVoltage = static_cast<float>(m_charger.dPlus());
    values.typeCDMinusVoltage = static_cast<float>(m_charger.dMinus());
    values.typeCCC1Voltage = static_cast<float>(m_charger.cc1());
    values.typeCCC2Voltage = static_cast<float>(m_charger.cc2());
    values.typeCMah = static_cast<float>(m_charger.chargeMah());
    values.typeCTimeSec = static_cast<float>(m_charger.timeSec());
    for (const auto& [field, value] : m_held)
        values.*field = value;
    return values;
}

void BenchModel::hold(MeasurementField field, float value)
{
    release(field);
    m_held.emplace_back(field, value);
}

void BenchModel::release(MeasurementField field)
{
    const auto matches = [field](const auto& held) { return field == nullptr || held.first == field; };
    m_held.erase(std::remove_if(m_held.begin(), m_held.end(), matches), m_held.end());
}

bool BenchModel::followHost(const protocol::UiControl& request)
{
    if (request.direction != protocol::HostRequest || request.layer0 < protocol::MainSupplyScreen ||
        request.layer0 > protocol::MultimeterScreen)
        return false;
    m_screen = static_cast<protocol::Screen>(request.layer0);
    m_logLines.append(QStringLiteral("Screen %1 for the host").arg(request.layer0));
    if (m_screen == protocol::MultimeterScreen && request.layer1 <= protocol::BuzzerFunction)
        m_multimeter.setFunction(static_cast<protocol::MultimeterFunction>(request.layer1));
    return true;
}

QStringList BenchModel::takeLogLines()
{
    return std::exchange(m_logLines, {});
}
