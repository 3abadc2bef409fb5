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
        const test::Table<QByteArray, unsigned, quint64, bool> table("eventType", "message", "wParam",
                                                                     "accepted");
        const QByteArray generic("windows_generic_MSG");
        table.row("nodes changed", generic, 0x0219U, quint64(0x0007), true);
        table.row("arrival", generic, 0x0219U, quint64(0x8000), true);
        table.row("removal, dispatcher", "windows_dispatcher_MSG", 0x0219U, quint64(0x8004), true);
        table.row("configuration changed", generic, 0x0219U, quint64(0x0018), false);
        table.row("another message", generic, 0x0218U, quint64(0x8000), false);
        table.row("X event", "xcb_generic_event_t", 0x0219U, quint64(0x8000), false);
        table.row("no type", {}, 0x0219U, quint64(0x8000), false);
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
        // The buffer has one byte: the address sanitizer reports a read of a whole message.
        const std::unique_ptr<char> foreign(new char(1));
        QVERIFY(!platform::deviceChangeCode("xcb_generic_event_t", foreign.get()));
        QVERIFY(!platform::deviceChangeCode("windows_generic_MSG", nullptr));
    }
};

QUORVEL_TEST_MAIN(DeviceChangeMessageTest, QCoreApplication)
#include "tst_DeviceChangeMessage.moc"
