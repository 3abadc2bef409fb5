// SPDX-License-Identifier: GPL-3.0-or-later
#include "hid/HidLink.h"
#include "storage/DataFolders.h"
#include "storage/SettingsFile.h"

#include <QDebug>

void HidLink::handleMultimeterPacket(int mode, const QString& text)
{
    m_multimeter = MultimeterReading::fromText(mode, text);
    if (usbDebugEnabled())
        qDebug().noquote() << "[HID][04][Multimeter]"
                           << "mode=" << m_multimeter.mode << "value=" << m_multimeter.value;
    considerMultimeterReading(m_multimeter.mode, m_multimeter.value);
    Q_EMIT multimeterChanged();
}

void HidLink::considerMultimeterReading(int mode, const QString& value)
{
    if (m_readingGate.consider(mode, value, std::chrono::steady_clock::now()))
        addMultimeterReading(mode, value.trimmed());
}

void HidLink::addMultimeterReading(int mode, const QString& text)
{
    const bool persistent = isHistoryPersistenceEnabled();
    if (!m_multimeterRows.record(mode, text, wallTime(), persistent))
        return;
    Q_EMIT multimeterCurrentTableChanged();
    Q_EMIT multimeterSessionHistoryChanged();
    // Read again: whoever listens to the signals above may have turned it off.
    if (isHistoryPersistenceEnabled()) {
        saveMultimeterHistory();
        Q_EMIT multimeterHistoryChanged();
    }
}

bool HidLink::isHistoryPersistenceEnabled() const
{
    return m_settings != nullptr && m_settings->value(setting::saveMultimeterHistoryToFile);
}

QString HidLink::multimeterHistoryFilePath()
{
    return folders::database() + QStringLiteral("/multimeter_history.json");
}

void HidLink::loadMultimeterHistory()
{
    m_multimeterRows.load(multimeterHistoryFilePath());
}

void HidLink::saveMultimeterHistory()
{
    // The rows of a failed write stay here: the next recording, or the end of the program, writes them again.
    if (isHistoryPersistenceEnabled() && !m_multimeterRows.save(multimeterHistoryFilePath()))
        logLine(QStringLiteral("Failed to write the multimeter history."));
}

void HidLink::resetMultimeter()
{
    m_multimeter = {};
    m_multimeterRows.clearCurrentTable();
    m_readingGate.reset();
    m_readingGate.forgetRecentReadings();
}

void HidLink::clearMultimeterCurrentTable()
{
    m_multimeterRows.clearCurrentTable();
    m_readingGate.forgetRecentReadings();
    Q_EMIT multimeterCurrentTableChanged();
}

void HidLink::removeMultimeterCurrentTableRow(int row)
{
    if (m_multimeterRows.removeCurrentRow(row))
        Q_EMIT multimeterCurrentTableChanged();
}

void HidLink::clearMultimeterHistory()
{
    m_multimeterRows.clearHistories();
    m_readingGate.reset();
    m_readingGate.forgetRecentReadings();
    saveMultimeterHistory();
    Q_EMIT multimeterSessionHistoryChanged();
    Q_EMIT multimeterHistoryChanged();
}
