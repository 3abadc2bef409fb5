// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/DeviceChangeMessage.h"
#include "tests/support/TestCase.h"

#include <QtTest>

class DeviceChangeMessageTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void codes_data()
    {
        QTest::addColumn<QByteArray>("eventType");
        QTest::addColumn<unsigned>("message");
        QTest::addColumn<quint64>("wParam");
        QTest::addColumn<bool>("accepted");
        const QByteArray generic("windows_generic_MSG");
        QTest::newRow("nodes changed") << generic << 0x0219U << quint64(0x0007) << true;
        QTest::newRow("arrival") << generic << 0x0219U << quint64(0x8000) << true;
        QTest::newRow("removal, dispatcher")
            << QByteArray("windows_dispatcher_MSG") << 0x0219U << quint64(0x8004) << true;
        QTest::newRow("configuration changed") << generic << 0x0219U << quint64(0x0018) << false;
        QTest::newRow("another message") << generic << 0x0218U << quint64(0x8000) << false;
        QTest::newRow("X event") << QByteArray("xcb_generic_event_t") << 0x0219U << quint64(0x8000) << false;
        QTest::newRow("no type") << QByteArray() << 0x0219U << quint64(0x8000) << false;
    }

    void codes()
    {
        QFETCH(QByteArray, eventType);
        QFETCH(unsigned, message);
        QFETCH(quint64, wParam);
        QFETCH(bool, accepted);
        const platform::WindowsMessage native{nullptr, message, std::uintptr_t(wParam), 0};
        const std::optional<quint64> code = platform::deviceChangeCode(eventType, &native);
        QCOMPARE(code.has_value(), accepted);
        if (accepted)
            QCOMPARE(*code, wParam);
    }

    void foreignEventsAreNotRead()
    {
        // One byte: reading a message from here is an error that the address sanitizer reports.
        const std::unique_ptr<char> foreign(new char(1));
        QVERIFY(!platform::deviceChangeCode("xcb_generic_event_t", foreign.get()));
        QVERIFY(!platform::deviceChangeCode("windows_generic_MSG", nullptr));
    }
};

QUORVEL_TEST_MAIN(DeviceChangeMessageTest, QCoreApplication)
#include "tst_DeviceChangeMessage.moc"
