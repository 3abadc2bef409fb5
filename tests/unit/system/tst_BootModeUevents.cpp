// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/DeviceChangeMessage.h"
#include "platform/DeviceNotice.h"
#include "tests/unit/system/ManagerFixture.h"

#include <umockdev.h>

#include <QApplication>
#include <QStandardPaths>
#include <QtTest>

namespace {

const QByteArray cBootMode("1f3a efe8");
const QByteArray cInstrument("0483 5750");

} // namespace

/// The real udev code on a mock device tree: this program runs under umockdev's wrapper.
class BootModeUeventsTest : public ManagerTestCase
{
    Q_OBJECT

private:
    UMockdevTestbed* m_testbed = nullptr;
    QList<QByteArray> m_plugged;

    void plug(const QByteArray& name, const QByteArray& device)
    {
        const QList<QByteArray> ids = device.split(' ');
        const QByteArray text = "P: /devices/usb1/" + name + "\nE: SUBSYSTEM=usb\nE: DEVTYPE=usb_device\n" +
                                "A: idVendor=" + ids.at(0) + "\\n\nA: idProduct=" + ids.at(1) + "\\n\n\n";
        GError* error = nullptr;
        if (!umockdev_testbed_add_from_string(m_testbed, text.constData(), &error))
            qFatal("umockdev: %s", error->message);
        umockdev_testbed_uevent(m_testbed, ("/sys/devices/usb1/" + name).constData(), "add");
        m_plugged.append(name);
    }

    void unplug(const QByteArray& name)
    {
        const QByteArray path = "/sys/devices/usb1/" + name;
        umockdev_testbed_uevent(m_testbed, path.constData(), "remove");
        umockdev_testbed_remove_device(m_testbed, path.constData());
        m_plugged.removeOne(name);
    }

    /// A manager with this platform's own services, past its start-up.
    SystemManager& start()
    {
        m_fixture->services.findUsbDevice = platform::findUsbDevice;
        SystemManager& manager = m_fixture->start();
        [this] { QTRY_VERIFY(m_fixture->logHas("Native event filter installed.")); }();
        return manager;
    }

private Q_SLOTS:
    void initTestCase()
    {
        m_testbed = umockdev_testbed_new();
        if (!umockdev_in_mock_environment())
            QSKIP("Run this under umockdev-wrapper.");
    }

    void cleanupTestCase() { g_object_unref(m_testbed); }

    void init()
    {
        ManagerTestCase::init();
        m_fixture->server.close();
        m_fixture->scripts.addRecorder("sunxi-fel", "echo AWUSBFEX");
    }

    void cleanup()
    {
        ManagerTestCase::cleanup();
        const QList<QByteArray> plugged = m_plugged;
        for (const QByteArray& name : plugged)
            unplug(name);
    }

    void plugAndUnplug()
    {
        SystemManager& manager = start();
        for (int round = 0; round < 3; ++round) {
            plug("1-2", cBootMode);
            QTRY_VERIFY(manager.usbConnected());
            QTRY_VERIFY(manager.felReady());
            unplug("1-2");
            QTRY_VERIFY(!manager.felReady());
            QVERIFY(!manager.usbConnected());
        }
    }

    void anotherDeviceIsNotMistaken()
    {
        SystemManager& manager = start();
        const QSignalSpy changes(&manager, &SystemManager::usbConnectedChanged);
        plug("1-1", cInstrument);
        QTRY_VERIFY(m_fixture->logHas("requestConnectionStateRefresh completed: usbConnected=0 felReady=0"));
        QCOMPARE(changes.count(), 0);
        QVERIFY(m_fixture->scripts.calls("sunxi-fel").isEmpty());
    }

    /// A bad contact: whatever the burst looked like, the state at its end is the true one.
    void burst_data()
    {
        const test::Table<bool> table("pluggedAtTheEnd");
        table.row("ends plugged in", true);
        table.row("ends unplugged", false);
    }

    void burst()
    {
        QFETCH(bool, pluggedAtTheEnd);
        SystemManager& manager = start();
        for (int i = 0; i < 50; ++i) {
            plug("1-2", cBootMode);
            if (i % 3 == 0)
                QCoreApplication::processEvents();
            unplug("1-2");
        }
        if (pluggedAtTheEnd)
            plug("1-2", cBootMode);
        QTRY_COMPARE(manager.usbConnected(), pluggedAtTheEnd);
        QTRY_COMPARE(manager.felReady(), pluggedAtTheEnd);
        QVERIFY(m_fixture->log().filter("WM_DEVICECHANGE received").size() <= 50);
    }

    void noticeTellsArrivalAndRemoval()
    {
        QList<quint64> codes;
        const platform::DeviceNotice notice([&codes](quint64 code) { codes.append(code); });
        QVERIFY(notice.isActive());
        plug("1-2", cBootMode);
        QTRY_COMPARE(codes, QList<quint64>{platform::cDeviceArrival});
        unplug("1-2");
        QTRY_COMPARE(codes, (QList<quint64>{platform::cDeviceArrival, platform::cDeviceRemoveComplete}));
    }

    /// The real tool on a bus where it cannot reach a controller.
    void realToolWithoutController()
    {
        const QString tool = QStandardPaths::findExecutable("sunxi-fel", {"/usr/bin"});
        if (tool.isEmpty())
            QSKIP("sunxi-fel is not installed.");
        m_fixture->services.flashToolPath = [tool] { return tool; };
        SystemManager& manager = start();
        plug("1-2", cBootMode);
        QTRY_VERIFY(manager.usbConnected());
        QVERIFY(!manager.felReady());
        const QStringList lines = m_fixture->log().filter(QStringLiteral("checkFelDevice: program=") + tool);
        QVERIFY2(!lines.isEmpty() && !lines.first().contains(QStringLiteral("exitCode=0")),
                 qPrintable(lines.join('\n')));
    }
};

QUORVEL_TEST_MAIN(BootModeUeventsTest, QApplication)
#include "tst_BootModeUevents.moc"
