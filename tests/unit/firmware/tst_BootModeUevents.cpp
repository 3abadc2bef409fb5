// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/DeviceChangeMessage.h"
#include "platform/DeviceNotice.h"
#include "tests/unit/firmware/FirmwareFixture.h"

#include <umockdev.h>

#include <QStandardPaths>
#include <QtTest>

namespace {

const QByteArray cBootMode("1f3a efe8");
const QByteArray cInstrument("0483 5750");

} // namespace

/// Tests the real udev code on a mock device tree. This program runs under umockdev's wrapper.
class BootModeUeventsTest : public FirmwareTestCase
{
    Q_OBJECT

private:
    UMockdevTestbed* m_testbed = nullptr;
    QList<QByteArray> m_plugged;

    void plug(const QByteArray& name, const QByteArray& device)
    {
        const QList<QByteArray> ids = device.split(' ');
        // The kernel writes the numbers without leading zeros.
        const auto hex = [](const QByteArray& id) { return QByteArray::number(id.toInt(nullptr, 16), 16); };
        const QByteArray text = "P: /devices/usb1/" + name + "\nE: SUBSYSTEM=usb\nE: DEVTYPE=usb_device\n" +
                                "E: PRODUCT=" + hex(ids.at(0)) + '/' + hex(ids.at(1)) + "/2b3\n" +
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

    std::unique_ptr<BootModeWatch> m_watch;

    /// A watch with this platform's own search on the bus.
    BootModeWatch& start()
    {
        m_fixture->bootMode.findUsbDevice = platform::findUsbDevice;
        m_watch = std::make_unique<BootModeWatch>(m_fixture->bootMode, BootModeTimings{3600 * 1000, 50},
                                                  m_fixture->log);
        m_watch->start();
        return *m_watch;
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
        FirmwareTestCase::init();
        m_fixture->addFlashTool();
    }

    void cleanup()
    {
        m_watch.reset();
        FirmwareTestCase::cleanup();
        const QList<QByteArray> plugged = m_plugged;
        for (const QByteArray& name : plugged)
            unplug(name);
    }

    /// A bad contact causes a burst of changes. The state after it is correct.
    void burst_data()
    {
        const test::Table<bool> table("pluggedAtTheEnd");
        table.row("ends plugged in", true);
        table.row("ends unplugged", false);
    }

    void burst()
    {
        QFETCH(bool, pluggedAtTheEnd);
        BootModeWatch& watch = start();
        plug("1-1", cInstrument);
        for (int i = 0; i < 50; ++i) {
            plug("1-2", cBootMode);
            if (i % 3 == 0)
                QCoreApplication::processEvents();
            unplug("1-2");
        }
        if (pluggedAtTheEnd)
            plug("1-2", cBootMode);
        QTRY_COMPARE(watch.usbConnected(), pluggedAtTheEnd);
        QTRY_COMPARE(watch.felReady(), pluggedAtTheEnd);
        QVERIFY(m_fixture->logLines().filter("WM_DEVICECHANGE received").size() <= 50);
    }

    void noticeNamesTheDevice()
    {
        QStringList changes;
        const platform::DeviceNotice notice([&changes](const std::vector<platform::DeviceChange>& burst) {
            for (const platform::DeviceChange& change : burst)
                changes.append(QString::number(change.code, 16) + ' ' + change.vid + ' ' + change.pid);
            changes.removeDuplicates();
        });
        QVERIFY(notice.isActive());
        plug("1-1", cInstrument);
        QTRY_COMPARE(changes, QStringList{"8000 0483 5750"});
        plug("1-2", cBootMode);
        // The kernel reports the removal before the device is removed from the tree.
        umockdev_testbed_uevent(m_testbed, "/sys/devices/usb1/1-2", "remove");
        QTRY_COMPARE(changes.mid(1), (QStringList{"8000 1F3A EFE8", "8004 1F3A EFE8"}));
    }

    /// The real tool on a bus where it cannot reach a controller.
    void realToolWithoutController()
    {
        const QString tool = QStandardPaths::findExecutable("sunxi-fel", {"/usr/bin"});
        if (tool.isEmpty())
            QSKIP("sunxi-fel is not installed.");
        m_fixture->bootMode.flashToolPath = [tool] { return tool; };
        BootModeWatch& watch = start();
        plug("1-2", cBootMode);
        QTRY_VERIFY(watch.usbConnected());
        QVERIFY(!watch.felReady());
        const QStringList lines =
            m_fixture->logLines().filter(QStringLiteral("checkFelDevice: program=") + tool);
        QVERIFY2(!lines.isEmpty() && !lines.first().contains(QStringLiteral("exitCode=0")),
                 qPrintable(lines.join('\n')));
    }
};

QUORVEL_TEST_MAIN(BootModeUeventsTest, QCoreApplication)
#include "tst_BootModeUevents.moc"
