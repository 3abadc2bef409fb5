// SPDX-License-Identifier: GPL-3.0-or-later
#include "FaultTable.h"

#include <array>
#include <chrono>
#include <utility>

namespace {

struct KindName
{
    Fault::Kind kind;
    const char* name;
};

constexpr std::array<KindName, 11> cKinds{{{Fault::Kind::None, "none"},
                                           {Fault::Kind::Slow, "slow"},
                                           {Fault::Kind::Stalled, "stalled"},
                                           {Fault::Kind::Truncated, "truncated"},
                                           {Fault::Kind::NoLength, "no-length"},
                                           {Fault::Kind::Status, "status"},
                                           {Fault::Kind::Redirect, "redirect"},
                                           {Fault::Kind::Loop, "loop"},
                                           {Fault::Kind::Garbage, "garbage"},
                                           {Fault::Kind::Huge, "huge"},
                                           {Fault::Kind::Never, "never"}}};

} // namespace

std::optional<Fault> Fault::fromText(const QString& text)
{
    const QString name = text.section(QLatin1Char(':'), 0, 0);
    const QString value = text.section(QLatin1Char(':'), 1);
    bool isNumber = true;
    const int number = value.isEmpty() ? 0 : value.toInt(&isNumber);
    if (!isNumber || number < 0)
        return {};
    for (const KindName& entry : cKinds) {
        if (name == QLatin1String(entry.name))
            return Fault{entry.kind, number};
    }
    return {};
}

QStringList Fault::names()
{
    QStringList names;
    for (const KindName& entry : cKinds)
        names.append(QLatin1String(entry.name));
    return names;
}

QString Fault::toText() const
{
    const QString name = names().value(int(kind));
    return value == 0 ? name : name + QLatin1Char(':') + QString::number(value);
}

void FaultTable::set(const QString& path, const Fault& fault)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (fault.kind == Fault::Kind::None)
        m_faults.erase(path);
    else
        m_faults[path] = fault;
    ++m_generation;
    m_changed.notify_all();
}

void FaultTable::clear(const QString& path)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (path.isEmpty())
        m_faults.clear();
    else
        m_faults.erase(path);
    ++m_generation;
    m_changed.notify_all();
}

Fault FaultTable::find(const QString& path) const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    Fault best;
    int bestLength = -1;
    for (const auto& [pattern, fault] : m_faults) {
        const bool matches = pattern.endsWith(QLatin1Char('*'))
                                 ? path.startsWith(pattern.left(pattern.size() - 1))
                                 : path == pattern;
        if (matches && pattern.size() > bestLength) {
            best = fault;
            bestLength = pattern.size();
        }
    }
    return best;
}

QStringList FaultTable::describe() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    QStringList lines;
    for (const auto& [pattern, fault] : m_faults)
        lines.append(pattern + QLatin1Char(' ') + fault.toText());
    return lines;
}

void FaultTable::waitForChange(int timeoutMs) const
{
    std::unique_lock<std::mutex> lock(m_mutex);
    m_changed.wait_for(lock, std::chrono::milliseconds(timeoutMs),
                       [this, seen = m_generation] { return m_stopped || m_generation != seen; });
}

void FaultTable::stop()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_stopped = true;
    m_changed.notify_all();
}

bool FaultTable::isStopped() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_stopped;
}
