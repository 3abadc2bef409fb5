// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "instrument/PacketCodec.h"
#include "tests/fakes/FakeHidApi.h"
#include "tests/support/TestCase.h"

#include <QDir>
#include <QtTest>

/// Base of the tests on the scripted hidapi. The bus is empty before each test. After it, no handle may be
/// open, no thread may run, and no function may have been misused.
class FakeBusTest : public TestCase
{
    Q_OBJECT

protected:
    static constexpr const char* cPath = "/dev/hidraw0";

    static void plugIn(const QByteArray& path = cPath)
    {
        fakehid::Device device;
        device.path = path;
        fakehid::plugIn(device);
    }
    /// Returns a measurement with \a number as its first value.
    static QByteArray measurement(float number)
    {
        protocol::Measurement values;
        values.mainInputVoltage = number;
        return protocol::encode(values);
    }
    /// Passes \a packet to \a link as if its reader had read it.
    static void receive(QObject& link, const QByteArray& packet)
    {
        QVERIFY(QMetaObject::invokeMethod(&link, "handleIncomingPacket", Q_ARG(QByteArray, packet)));
    }
    static int threadCount()
    {
        return QDir(QStringLiteral("/proc/self/task")).entryList(QDir::Dirs | QDir::NoDotAndDotDot).size();
    }
    /// Waits, without an event loop, until the readers that were started since init() have ended.
    bool waitForReaders() const
    {
        const QDeadlineTimer deadline(5000);
        while (threadCount() > m_threads && !deadline.hasExpired())
            QThread::msleep(1);
        return threadCount() <= m_threads;
    }

protected Q_SLOTS:
    void init()
    {
        TestCase::init();
        fakehid::reset();
        m_threads = threadCount();
    }
    void cleanup()
    {
        TestCase::cleanup();
        QCOMPARE(fakehid::record().misuses, QStringList());
        QCOMPARE(fakehid::record().openHandles, 0);
        QCOMPARE(fakehid::record().openEnumerations, 0);
        QCOMPARE(threadCount(), m_threads);
    }

private:
    int m_threads = 0;
};
