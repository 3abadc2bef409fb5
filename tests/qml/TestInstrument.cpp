// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/qml/TestInstrument.h"

#include "hid/HidLink.h"
#include "instrument/PacketCodec.h"
#include "tests/fakes/FakeHidApi.h"

namespace {

const QByteArray cPath = QByteArrayLiteral("/dev/hidraw-test");

} // namespace

bool TestInstrument::plugIn()
{
    if (m_link.connected())
        return true;
    fakehid::reset();
    fakehid::Device device;
    device.path = cPath;
    fakehid::plugIn(device);
    if (!m_link.openDevice())
        return false;
    // A device that sends nothing in its first ten seconds is opened again, and the current table becomes
    // empty. This packet prevents that. Its type is unknown, so it changes no value.
    fakehid::send(cPath, QByteArray(protocol::cPacketSize, '\x7f'));
    return true;
}

bool TestInstrument::unplug()
{
    fakehid::unplug(cPath);
    m_link.closeDevice();
    return m_link.connected();
}

void TestInstrument::measure(const QVariantMap& values)
{
    protocol::Measurement measurement;
    const auto take = [&values](const char* name, float& field) {
        field = values.value(QLatin1String(name)).toFloat();
    };
    take("mainInputVoltage", measurement.mainInputVoltage);
    take("mainOutputCurrent", measurement.mainOutputCurrent);
    take("mainMah", measurement.mainMah);
    take("mainTimeSec", measurement.mainTimeSec);
    take("typeCInputVoltage", measurement.typeCInputVoltage);
    take("typeCInputCurrent", measurement.typeCInputCurrent);
    take("typeCInputPower", measurement.typeCInputPower);
    take("typeCDPlusVoltage", measurement.typeCDPlusVoltage);
    take("typeCDMinusVoltage", measurement.typeCDMinusVoltage);
    take("typeCCC1Voltage", measurement.typeCCC1Voltage);
    take("typeCCC2Voltage", measurement.typeCCC2Voltage);
    take("typeCMah", measurement.typeCMah);
    take("typeCTimeSec", measurement.typeCTimeSec);
    receive(protocol::encode(measurement));
}

void TestInstrument::read(int mode, const QString& text, int times)
{
    for (int i = 0; i < times; ++i)
        receive(protocol::encode(protocol::MultimeterReading{mode, text}));
}

void TestInstrument::choose(int layer0, int layer1)
{
    protocol::UiControl control;
    control.direction = protocol::InstrumentReport;
    control.layer0 = layer0;
    control.layer1 = layer1;
    receive(protocol::encode(control));
}

QVariantList TestInstrument::lastRequest() const
{
    const QList<QByteArray> written = fakehid::written(cPath);
    if (written.isEmpty())
        return {};
    // The report id comes first.
    const QByteArray packet = written.constLast().mid(1);
    QVariantList bytes{int(quint8(packet.at(protocol::cTypeOffset)))};
    for (int i = 0; i < 5; ++i)
        bytes.append(int(quint8(packet.at(protocol::cPayloadOffset + i))));
    return bytes;
}

void TestInstrument::receive(const QByteArray& packet)
{
    QMetaObject::invokeMethod(&m_link, "handleIncomingPacket", Qt::DirectConnection,
                              Q_ARG(QByteArray, packet));
}
