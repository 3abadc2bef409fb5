// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "hid/HidLink.h"
#include "instrument/PacketCodec.h"
#include "tests/fakes/FakeHidApi.h"
#include "tests/support/TestCase.h"

#include <QtTest>

/// Base of the tests that run a link on the scripted hidapi: an empty bus before each test; afterwards
/// nothing may be left open and nothing may have been misused.
class LinkTestCase : public TestCase
{
    Q_OBJECT

protected:
    static constexpr const char* cPath = "/dev/hidraw0";

    static void poll(HidLink& link, int ticks)
    {
        for (int tick = 0; tick < ticks; ++tick)
            QVERIFY(QMetaObject::invokeMethod(&link, "pollDevice"));
    }
    static void receive(HidLink& link, const QByteArray& packet)
    {
        QVERIFY(QMetaObject::invokeMethod(&link, "handleIncomingPacket", Q_ARG(QByteArray, packet)));
    }
    static void plugInInstrument()
    {
        FakeHidApi::Device device;
        device.path = cPath;
        FakeHidApi::plugIn(device);
    }
    /// A link to the only instrument on the bus.
    class OpenLink : public HidLink
    {
    public:
        OpenLink() : HidLink(nullptr, nullptr)
        {
            plugInInstrument();
            if (!openDevice())
                qFatal("the link does not open");
        }
    };
    /// A measurement that carries \a number as the first of its values.
    static QByteArray measurement(float number)
    {
        PacketCodec::Measurement values;
        values.mainInputVoltage = number;
        return PacketCodec::encode(values);
    }

protected Q_SLOTS:
    void init()
    {
        TestCase::init();
        FakeHidApi::reset();
    }
    void cleanup()
    {
        TestCase::cleanup();
        QCOMPARE(FakeHidApi::misuses(), QStringList());
        QCOMPARE(FakeHidApi::openHandles(), 0);
        QCOMPARE(FakeHidApi::openEnumerations(), 0);
    }
};
