// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "instrument/DeviceLog.h"
#include "instrument/InstrumentSupervisor.h"
#include "instrument/MultimeterHistory.h"
#include "instrument/MultimeterReading.h"
#include "instrument/PacketCodec.h"
#include "instrument/ReadingGate.h"
#include "qmlsupport/GenTool.h"
#include "storage/DailyLog.h"

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <QVariant>

#include <functional>
#include <memory>
#include <optional>

class SettingsFile;

/**
 * What the interface sees of the instrument: the last values it sent, its messages, recorded readings and
 * curve files. An InstrumentSupervisor keeps the device open underneath. Lives on the GUI thread; every
 * signal is emitted there.
 *
 * Sources: HidLink.cpp (life cycle), HidLink_protocol.cpp, HidLink_log.cpp, HidLink_multimeter.cpp and
 * HidLink_curves.cpp.
 */
class HidLink : public GenTool
{
    Q_OBJECT
    Q_PROPERTY(bool connected READ connected NOTIFY devicesStatusChanged)
    Q_PROPERTY(QString deviceId READ deviceId NOTIFY deviceInfoChanged)
    Q_PROPERTY(QString deviceVersion READ deviceVersion NOTIFY deviceInfoChanged)
    Q_PROPERTY(float mainInputVoltage READ mainInputVoltage NOTIFY measurementChanged)
    Q_PROPERTY(float mainOutputCurrent READ mainOutputCurrent NOTIFY measurementChanged)
    Q_PROPERTY(float mainPower READ mainPower NOTIFY measurementChanged)
    Q_PROPERTY(float mainMah READ mainMah NOTIFY measurementChanged)
    Q_PROPERTY(float mainTimeSec READ mainTimeSec NOTIFY measurementChanged)
    Q_PROPERTY(float typeCInputVoltage READ typeCInputVoltage NOTIFY measurementChanged)
    Q_PROPERTY(float typeCInputCurrent READ typeCInputCurrent NOTIFY measurementChanged)
    Q_PROPERTY(float typeCInputPower READ typeCInputPower NOTIFY measurementChanged)
    Q_PROPERTY(float typeCDPlusVoltage READ typeCDPlusVoltage NOTIFY measurementChanged)
    Q_PROPERTY(float typeCDMinusVoltage READ typeCDMinusVoltage NOTIFY measurementChanged)
    Q_PROPERTY(float typeCCC1Voltage READ typeCCC1Voltage NOTIFY measurementChanged)
    Q_PROPERTY(float typeCCC2Voltage READ typeCCC2Voltage NOTIFY measurementChanged)
    Q_PROPERTY(float typeCMah READ typeCMah NOTIFY measurementChanged)
    Q_PROPERTY(float typeCTimeSec READ typeCTimeSec NOTIFY measurementChanged)
    Q_PROPERTY(int multimeterMode READ multimeterMode NOTIFY multimeterChanged)
    Q_PROPERTY(QString multimeterValue READ multimeterValue NOTIFY multimeterChanged)
    Q_PROPERTY(QString multimeterNumericValue READ multimeterNumericValue NOTIFY multimeterChanged)
    Q_PROPERTY(QString multimeterUnit READ multimeterUnit NOTIFY multimeterChanged)
    Q_PROPERTY(
        QVariantList multimeterCurrentTable READ multimeterCurrentTable NOTIFY multimeterCurrentTableChanged)
    Q_PROPERTY(QVariantList multimeterSessionHistory READ multimeterSessionHistory NOTIFY
                   multimeterSessionHistoryChanged)
    Q_PROPERTY(QVariantList multimeterHistory READ multimeterHistory NOTIFY multimeterHistoryChanged)
    Q_PROPERTY(QString lastRxPacket READ lastRxPacket NOTIFY packetTraceChanged)
    Q_PROPERTY(QString lastTxPacket READ lastTxPacket NOTIFY packetTraceChanged)
    Q_PROPERTY(QString lastDeviceLog READ lastDeviceLog NOTIFY deviceLogChanged)
    Q_PROPERTY(QVariantList deviceLogs READ deviceLogs NOTIFY deviceLogsChanged)

public:
    /// Without \a settings every switch is off.
    HidLink(GenApplication* app, GenToolbox* toolbox, std::shared_ptr<SettingsFile> settings = {});
    /// Closes the device, which takes 25 ms at most, and saves a history that could not be saved before.
    ~HidLink() override;

    void setToolbox(GenToolbox* toolbox) override;

    /// Sets where the link takes the time of day from: milliseconds since the epoch. For tests.
    void setClock(std::function<qint64()> epochMs) { m_clock = std::move(epochMs); }

    /// Packets that were read and are not handled yet: 0 or a few while the program keeps up.
    size_t waitingPackets() const { return m_supervisor.port().waitingPackets(); }

    /// Whether a device is open.
    bool connected() const { return m_connected; }
    /// Device id and version reported by the instrument; empty until the first device-info packet.
    QString deviceId() const { return m_deviceInfo.deviceId; }
    QString deviceVersion() const { return m_deviceInfo.deviceVersion; }

    /// Where the packets of the instrument arrive; it lives as long as this link.
    InstrumentPort& port() { return m_supervisor.port(); }

    // The last measurement: volts, amperes, watts, mAh and seconds as the instrument sent them; 0 before the
    // first and while no device is open.
    float mainInputVoltage() const { return m_measurement.mainInputVoltage; }
    float mainOutputCurrent() const { return m_measurement.mainOutputCurrent; }
    float mainPower() const { return m_measurement.mainPower; }
    float mainMah() const { return m_measurement.mainMah; }
    float mainTimeSec() const { return m_measurement.mainTimeSec; }
    float typeCInputVoltage() const { return m_measurement.typeCInputVoltage; }
    float typeCInputCurrent() const { return m_measurement.typeCInputCurrent; }
    float typeCInputPower() const { return m_measurement.typeCInputPower; }
    float typeCDPlusVoltage() const { return m_measurement.typeCDPlusVoltage; }
    float typeCDMinusVoltage() const { return m_measurement.typeCDMinusVoltage; }
    float typeCCC1Voltage() const { return m_measurement.typeCCC1Voltage; }
    float typeCCC2Voltage() const { return m_measurement.typeCCC2Voltage; }
    float typeCMah() const { return m_measurement.typeCMah; }
    float typeCTimeSec() const { return m_measurement.typeCTimeSec; }

    /// Mode byte of the last multimeter packet, 0 to 255; 0 before the first.
    int multimeterMode() const { return m_multimeter.mode; }
    /// The last reading with its unit, resistance units with the ohm sign.
    QString multimeterValue() const { return m_multimeter.value; }
    /// The number of the last reading, or the whole reading when it starts with none.
    QString multimeterNumericValue() const { return m_multimeter.numericValue; }
    QString multimeterUnit() const { return m_multimeter.unit; }
    /// Recorded readings, newest first: of this connection, of this run, and kept across runs.
    QVariantList multimeterCurrentTable() const { return m_multimeterRows.currentTable(); }
    QVariantList multimeterSessionHistory() const { return m_multimeterRows.sessionHistory(); }
    QVariantList multimeterHistory() const { return m_multimeterRows.persistentHistory(); }

    /// The last packet received and the last handed over for sending, as text ("len=64 00 01 …"); empty
    /// when there was none since the device was opened.
    QString lastRxPacket() const;
    QString lastTxPacket() const;
    /// The instrument's last log message, "[yyyy-MM-dd HH:mm:ss] message".
    QString lastDeviceLog() const { return m_deviceLog.lastLine(); }
    /// The instrument's log messages, newest first, at most 500: maps of "dateTime" and "message".
    QVariantList deviceLogs() const { return m_deviceLog.entries(); }

    /// Opens the instrument unless it is open. Returns true when it is open afterwards. A device that was not
    /// found is reported by errorOccurred().
    Q_INVOKABLE bool openDevice();
    /// Closes the device and empties the live values. The supervision opens it again about 2.5 s later.
    Q_INVOKABLE void closeDevice();

    /// Asks the instrument to show a screen, or sends any other UI-control packet; each number keeps its
    /// low 8 bits, 255 means not given. Opens a device when none is open. True when it was sent.
    Q_INVOKABLE bool sendUiControlPacket(int layer0, int layer1 = protocol::cLayerNotGiven,
                                         int layer2 = protocol::cLayerNotGiven,
                                         int layer3 = protocol::cLayerNotGiven,
                                         int direction = protocol::HostRequest);
    /// Uploads the values of one curve, at most 3570 (more is refused with errorOccurred); an entry
    /// that is not a number counts as 0. Opens a device when none is open. False when a packet could not be
    /// sent: the ones before it stay sent.
    Q_INVOKABLE bool sendCurveData(const QVariantList& points);
    /// Sets the Type-C charge and time to 0 until the next measurement arrives.
    Q_INVOKABLE void clearTypeCMahandSec();

    Q_INVOKABLE void clearMultimeterCurrentTable();
    /// Removes one row, 0 being the newest; any other number changes nothing.
    Q_INVOKABLE void removeMultimeterCurrentTableRow(int row);
    /// Empties the session history and the persistent history, the file included while it is kept.
    Q_INVOKABLE void clearMultimeterHistory();

    /// Stores a curve (volts and amperes, one sample every \a sampleIntervalSec seconds) as JSON and CSV.
    /// The path of the JSON file; empty after a failure, which errorOccurred explains.
    Q_INVOKABLE QString archiveCurrentCurve(const QVariantList& voltageSamples,
                                            const QVariantList& currentSamples, double sampleIntervalSec);
    /// Reads an archive back: "filePath", "createdAt", "deviceId", "deviceVersion", "sampleIntervalSec",
    /// "voltageSamples", "currentSamples". Empty after a failure, which errorOccurred explains.
    Q_INVOKABLE QVariantMap loadCurveArchive(const QString& filePath);
    /// Shows a file in the system's file manager. False when it does not exist (errorOccurred says so,
    /// unless the path is empty) or the file manager did not start.
    Q_INVOKABLE bool revealPath(const QString& filePath);

Q_SIGNALS:
    void devicesStatusChanged();
    /// Something failed; the text is meant for the user.
    void errorOccurred(const QString& message);
    void measurementChanged();
    void deviceInfoChanged();
    /// A UI-control packet arrived; every number 0 to 255.
    void uiControlRequested(int direction, int layer0, int layer1, int layer2, int layer3);
    void multimeterChanged();
    void multimeterCurrentTableChanged();
    void multimeterSessionHistoryChanged();
    void multimeterHistoryChanged();
    void curveArchived(const QString& filePath);
    void curveArchiveLoaded(const QString& filePath);
    void packetTraceChanged();
    void deviceLogChanged();
    void deviceLogsChanged();

private Q_SLOTS:
    void pollDevice();
    void handleIncomingPacket(const QByteArray& packet);
    /// Reports a failure of the device and shows the link as closed.
    void handleReadError(const QString& message);

private:
    void onPortStateChanged(InstrumentPort::State state);
    void onPacketReceived(const InstrumentPacket& packet);
    void showClosed();
    bool writePacket(const QByteArray& packet);
    QDateTime wallTime() const { return QDateTime::fromMSecsSinceEpoch(m_clock()); }

    // HidLink_protocol.cpp
    void dispatchPacket(const QByteArray& packet);
    void handleMeasurementPacket(const QByteArray& packet);
    void handleDeviceInfoPacket(const QByteArray& packet);
    void handleMultimeterPacket(const QByteArray& packet);
    void handleDeviceLogPacket(const QByteArray& packet);
    void handleUiControlPacket(const QByteArray& packet);

    // HidLink_log.cpp
    bool usbDebugEnabled() const;
    void logLine(const QString& message) const;
    void traceReceived(const QByteArray& packet);
    void traceSent(const QByteArray& packet);
    void appendDeviceLog(const QString& message);

    // HidLink_multimeter.cpp
    void handleMultimeterPacket(int mode, const QString& text);
    void considerMultimeterReading(int mode, const QString& value);
    void addMultimeterReading(int mode, const QString& text);
    bool isHistoryPersistenceEnabled() const;
    static QString multimeterHistoryFilePath();
    void loadMultimeterHistory();
    void saveMultimeterHistory();
    /// Empties the last reading, the current table and the recording gate, without signals.
    void resetMultimeter();

    /// Null without a store: every switch is then off.
    const std::shared_ptr<SettingsFile> m_settings;
    std::function<qint64()> m_clock;
    bool m_connected = false;
    protocol::DeviceInfo m_deviceInfo;
    protocol::Measurement m_measurement;
    MultimeterReading m_multimeter;
    MultimeterHistory m_multimeterRows;
    ReadingGate m_readingGate;
    DeviceLog m_deviceLog;
    /// As bytes: most packets are never looked at as text.
    std::optional<QByteArray> m_lastRxPacket;
    std::optional<QByteArray> m_lastTxPacket;
    const DailyLog m_linkLog{QStringLiteral("hid_link_%1.log")};
    /// What the packets of one batch share.
    struct Batch
    {
        explicit Batch(bool debugEnabled) : usbDebugEnabled(debugEnabled) {}

        const bool usbDebugEnabled;
        /// Their lines are written together.
        const DailyLog::Pause pause;
    };
    /// Exists while a batch of several packets is handled.
    std::optional<Batch> m_batch;
    InstrumentSupervisor m_supervisor;
};
