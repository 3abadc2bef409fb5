// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/virtual-instrument/MultimeterModel.h"

#include "tools/virtual-instrument/Waveform.h"

#include <cmath>
#include <vector>

namespace {

// Times within one contact, in seconds: the probe touches, the reading has settled, the probe is lifted.
constexpr double cOpenEnd = 1.4;
constexpr double cSettledAt = 2.6;
constexpr double cLiftedAt = 7.5;

constexpr double cSettlingSec = 0.3;
constexpr double cSettlingNoise = 0.01;
constexpr int cDiodeMode = 4;

struct Specimen
{
    double value;
    const char* unit;
    int digits;
};

struct FunctionRule
{
    /// Display text while the probe is lifted.
    const char* open;
    std::vector<Specimen> specimens;
};

const FunctionRule& ruleOf(MultimeterModel::Function function)
{
    static const FunctionRule rules[] = {
        {"0.000V", {{5.013, "V", 3}, {3.302, "V", 3}, {1.234, "V", 3}, {125.4, "mV", 1}, {-0.517, "V", 3}}},
        {"OL", {{220.3, "Ohm", 1}, {4.702, "kOhm", 3}, {1.203, "MOhm", 3}, {12.31, "mOhm", 2}}},
        {"0.00nF", {{100.4, "nF", 1}, {4.721, "uF", 3}, {22.13, "pF", 2}}},
        {"OL", {{0.612, "V", 3}, {0.287, "V", 3}, {1.842, "V", 3}}},
        {"OL", {{0.004, "V", 3}, {0.031, "V", 3}}},
    };
    return rules[function];
}

} // namespace

void MultimeterModel::advance(double seconds)
{
    m_contactSec += seconds;
    if (m_contactSec < cLiftedAt)
        return;
    m_contactSec = 0;
    m_specimen = (m_specimen + 1) % static_cast<int>(ruleOf(m_function).specimens.size());
}

void MultimeterModel::setFunction(Function function)
{
    if (function == m_function)
        return;
    m_function = function;
    m_contactSec = 0;
    m_specimen = 0;
}

MultimeterModel::Contact MultimeterModel::contact() const
{
    if (m_contactSec < cOpenEnd)
        return Contact::Open;
    return m_contactSec < cSettledAt ? Contact::Settling : Contact::Steady;
}

protocol::MultimeterReading MultimeterModel::reading()
{
    const int mode = m_function == protocol::BuzzerFunction ? cDiodeMode : m_function + 1;
    return {mode, readingText()};
}

QString MultimeterModel::readingText()
{
    if (!m_heldReading.isEmpty())
        return m_heldReading;
    const FunctionRule& rule = ruleOf(m_function);
    if (contact() == Contact::Open)
        return QLatin1String(rule.open);
    const Specimen& specimen = rule.specimens[static_cast<std::size_t>(m_specimen)];
    double value = specimen.value;
    if (contact() == Contact::Settling)
        value *= 1 - std::exp(-(m_contactSec - cOpenEnd) / cSettlingSec) + noise(m_random, cSettlingNoise);
    return QString::number(value, 'f', specimen.digits) + QLatin1String(specimen.unit);
}
